#include "export/SaveAsTest.h"

namespace {

class SaveAsStatus : public SaveAsTest
{
};

TEST_F(SaveAsStatus, IsEmptyAtFirst)
{
    EXPECT_EQ(lblWavExportStatus.text(), "");
}

TEST_F(SaveAsStatus, TellsHowFarTheLoadIs)
{
    emit editor.LoadPercent(0);
    EXPECT_EQ(lblWavExportStatus.text(), "Loading audio, please wait...0%");
    emit editor.LoadPercent(100);
    EXPECT_EQ(lblWavExportStatus.text(), "Loading audio, please wait...100%");
    emit editor.LoadDone(0);
    EXPECT_EQ(lblWavExportStatus.text(), "");
}

TEST_F(SaveAsStatus, NamesTheEffectThatIsApplied)
{
    emit editor.EffectPercent(10, 7);
    EXPECT_EQ(lblWavExportStatus.text(), "Applying tempo...7%");
    emit editor.EffectPercent(11, 50);
    EXPECT_EQ(lblWavExportStatus.text(), "Applying speed...50%");
    emit editor.EffectPercent(12, 99);
    EXPECT_EQ(lblWavExportStatus.text(), "Applying pitch...99%");
    emit editor.EffectDone(12, 0);
    EXPECT_EQ(lblWavExportStatus.text(), "");
}

TEST_F(SaveAsStatus, PassesOverOtherEffects)
{
    emit editor.EffectPercent(12, 99);
    for (const short effect : {0, 9, 13, -1})
        emit editor.EffectPercent(effect, 5);
    EXPECT_EQ(lblWavExportStatus.text(), "Applying pitch...99%");
}

TEST_F(SaveAsStatus, TellsHowFarTheExportIs)
{
    emit editor.ExportPercent(42);
    EXPECT_EQ(lblWavExportStatus.text(), "Exporting audio, please wait...42%");
    expectSuccess();
    emit editor.ExportDone(0);
    EXPECT_EQ(lblWavExportStatus.text(), "");
}

}  // namespace
