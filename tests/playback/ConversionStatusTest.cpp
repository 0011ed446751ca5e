#include "playback/ConversionStatus.h"

#include "playback/PanelTest.h"

using ::testing::Return;
using ::testing::StrictMock;

namespace {

class Conversion : public ::testing::Test
{
protected:
    StrictMock<MockPlayerEngine> engine;
    StrictMock<MockMsgBox> msgBox;
    QLabel lblWavExportStatus;
    ConversionStatus status{engine, lblWavExportStatus, msgBox};
};

TEST_F(Conversion, TellsHowFarItIs)
{
    emit engine.ConversionPercent(0, 0);
    EXPECT_EQ(lblWavExportStatus.text(), "Exporting audio : 0 %");
    emit engine.ConversionPercent(0, 100);
    EXPECT_EQ(lblWavExportStatus.text(), "Exporting audio : 100 %");
}

TEST_F(Conversion, EmptiesItsLabelWhenItIsDone)
{
    emit engine.ConversionPercent(0, 42);
    emit engine.ConversionDone(0, -1);
    EXPECT_EQ(lblWavExportStatus.text(), "");
}

TEST_F(Conversion, ThatFailsIsToldWithTheReasonAndKeepsItsLabel)
{
    emit engine.ConversionPercent(0, 42);
    EXPECT_CALL(engine, LastError()).WillOnce(Return(-8));
    EXPECT_CALL(
        msgBox,
        show(QString("Sound export failed.\nA file creation failed (probably attempting to save a playlist file)"),
             MsgBox::Look::Critical, QString()));
    emit engine.ConversionDone(0, 0);
    EXPECT_EQ(lblWavExportStatus.text(), "Exporting audio : 42 %");
}

}  // namespace
