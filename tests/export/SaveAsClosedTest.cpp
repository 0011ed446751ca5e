#include "export/SaveAsTest.h"

#include <QCoreApplication>

using ::testing::InSequence;

namespace {

enum Wait
{
    Load,
    Tempo,
    Pitch,
    Rate,
    Export,
};

struct WaitRow
{
    const char* name;
    Wait wait;
};

/// The program closed while the editor works. The job has no done event any more: it ends with the editor.
class SaveAsClosed : public SaveAsTest, public ::testing::WithParamInterface<WaitRow>
{
protected:
    static int closeMeanwhile()
    {
        QTimer::singleShot(0, [] { QCoreApplication::quit(); });
        return 0;
    }

    void expectClosedIn(Wait wait)
    {
        switch (wait) {
        case Load:
            EXPECT_CALL(editor, LoadSound).WillOnce(closeMeanwhile);
            break;
        case Tempo:
            EXPECT_CALL(effects, ApplyTempo).WillOnce(closeMeanwhile);
            break;
        case Pitch:
            EXPECT_CALL(effects, ApplyPitch).WillOnce(closeMeanwhile);
            break;
        case Rate:
            EXPECT_CALL(effects, ApplyRate).WillOnce(closeMeanwhile);
            break;
        case Export:
            EXPECT_CALL(editor, ExportToFile).WillOnce(closeMeanwhile);
            break;
        }
    }

    void expectWhole(Wait wait)
    {
        switch (wait) {
        case Load:
            return expectLoad();
        case Tempo:
            return expectTempo(0);
        case Pitch:
            return expectPitch(0);
        case Rate:
            return expectRate(0);
        case Export:
            return expectExport("/out/take.mp3");
        }
    }
};

TEST_P(SaveAsClosed, GivesUpAllThatIsStillToCome)
{
    const InSequence order;
    expectDialog("/out/take.mp3");
    expectMp3();
    for (int wait = Load; wait < GetParam().wait; ++wait)
        expectWhole(static_cast<Wait>(wait));
    expectClosedIn(GetParam().wait);

    bool returned = false;
    QTimer::singleShot(0, [&] {
        saveAs.RecordSoundTouch();
        returned = true;
    });
    QCoreApplication::exec();
    EXPECT_TRUE(returned);
}

INSTANTIATE_TEST_SUITE_P(Waits, SaveAsClosed,
                         ::testing::Values(WaitRow{"Load", Load}, WaitRow{"Tempo", Tempo}, WaitRow{"Pitch", Pitch},
                                           WaitRow{"Rate", Rate}, WaitRow{"Export", Export}),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
