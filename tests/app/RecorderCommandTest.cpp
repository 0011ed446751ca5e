#include "app/MainWindowTest.h"
#include "engines/MockRecorderEngine.h"

#include <QApplication>
#include <QTest>

using ::testing::ByMove;
using ::testing::NiceMock;
using ::testing::Return;
using ::testing::ReturnRef;

namespace {

/// A recorder without a device, which is not looked at.
class QuietRecorder : public NiceMock<MockRecorderEngine>
{
public:
    QuietRecorder()
    {
        ON_CALL(*this, EncodeFormats).WillByDefault(ReturnRef(formats));
        ON_CALL(*this, BarMeters).WillByDefault(ReturnRef(bars));
        ON_CALL(*this, VuMeter).WillByDefault(ReturnRef(meter));
        ON_CALL(formats, Mp3Settings).WillByDefault(ReturnRef(mp3));
    }

    NiceMock<MockRecorderEncodeFormats> formats;
    NiceMock<MockRecorderMp3Settings> mp3;
    NiceMock<MockRecorderBarMeters> bars;
    NiceMock<MockRecorderVuMeter> meter;
};

/// The command that opens the recorder.
class RecorderCommand : public MainWindow
{
protected:
    void SetUp() override { start(); }

    QuietRecorder& expectRecorder()
    {
        auto owned = std::make_unique<QuietRecorder>();
        QuietRecorder& recorder = *owned;
        EXPECT_CALL(recorder, InitRecorder).Times(1);
        EXPECT_CALL(engines, createRecorder).WillOnce(Return(ByMove(std::move(owned)))).RetiresOnSaturation();
        return recorder;
    }

    static QWidget* openOne(const char* name) { return openWindows(name).value(0); }

    static void close(const char* name)
    {
        openOne(name)->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void wantNoTip() { settings.SaveSetting("Options", "Show RecordingTip", "0"); }
};

TEST_F(RecorderCommand, ShowsTheTipAndTheRecorderBehindIt)
{
    expectRecorder();
    click(*window, "tlbCmdRecord");
    ASSERT_NE(openOne("frmRecordingTip"), nullptr);
    EXPECT_EQ(openOne("frmRecording"), nullptr);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    control<QAbstractButton>(*openOne("frmRecordingTip"), "cmdClose").click();
    EXPECT_EQ(openOne("frmRecordingTip"), nullptr);
    ASSERT_NE(openOne("frmRecording"), nullptr);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(RecorderCommand, HasAMenuEntryAndAKey)
{
    wantNoTip();
    for (const bool byKey : {false, true}) {
        expectRecorder();
        QApplication::setActiveWindow(window.get());
        if (byKey)
            QTest::keyClick(window.get(), Qt::Key_R, Qt::ControlModifier);
        else
            trigger("mnuRecordResult");
        ASSERT_NE(openOne("frmRecording"), nullptr) << byKey;
        close("frmRecording");
    }
}

TEST_F(RecorderCommand, ShowsTheRecorderAtOnceWhereNoTipIsWanted)
{
    wantNoTip();
    expectRecorder();
    struct : QObject
    {
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            tips += event->type() == QEvent::Show && watched->objectName() == "frmRecordingTip" ? 1 : 0;
            return false;
        }
        int tips = 0;
    } watcher;
    qApp->installEventFilter(&watcher);
    click(*window, "tlbCmdRecord");
    EXPECT_EQ(watcher.tips, 0);
    EXPECT_NE(openOne("frmRecording"), nullptr);
}

TEST_F(RecorderCommand, PlacesTheRecorderUnderTheMainWindow)
{
    wantNoTip();
    window->move(20, 30);
    expectRecorder();
    click(*window, "tlbCmdRecord");
    EXPECT_EQ(openOne("frmRecording")->x(), window->x());
    EXPECT_EQ(openOne("frmRecording")->y(), window->frameGeometry().bottom() + 1);
}

TEST_F(RecorderCommand, ShowsTheTipAgainAndBringsTheRecorderThatIsThereToView)
{
    expectRecorder();
    click(*window, "tlbCmdRecord");
    close("frmRecordingTip");
    QWidget* recorder = openOne("frmRecording");
    ASSERT_NE(recorder, nullptr);
    recorder->showMinimized();
    click(*window, "tlbCmdRecord");
    ASSERT_NE(openOne("frmRecordingTip"), nullptr);
    close("frmRecordingTip");
    EXPECT_EQ(openOne("frmRecording"), recorder);
    EXPECT_FALSE(recorder->isMinimized());
}

TEST_F(RecorderCommand, ShowsOneTipHoweverOftenItIsGiven)
{
    expectRecorder();
    click(*window, "tlbCmdRecord");
    click(*window, "tlbCmdRecord");
    int tips = 0;
    for (const QWidget* top : QApplication::topLevelWidgets())
        tips += top->objectName() == "frmRecordingTip" && top->isVisible() ? 1 : 0;
    EXPECT_EQ(tips, 1);
    close("frmRecordingTip");
}

TEST_F(RecorderCommand, SkipsTheTipOnceItsBoxIsUnchecked)
{
    expectRecorder();
    click(*window, "tlbCmdRecord");
    control<QAbstractButton>(*openOne("frmRecordingTip"), "chkLoadTipsAtStartup").click();
    close("frmRecordingTip");
    close("frmRecording");
    expectRecorder();
    click(*window, "tlbCmdRecord");
    EXPECT_EQ(openOne("frmRecordingTip"), nullptr);
    EXPECT_NE(openOne("frmRecording"), nullptr);
}

TEST_F(RecorderCommand, LoadsAnotherRecorderWithAnotherEngineAfterItWasClosed)
{
    wantNoTip();
    expectRecorder();
    click(*window, "tlbCmdRecord");
    close("frmRecording");
    expectRecorder();
    click(*window, "tlbCmdRecord");
    EXPECT_NE(openOne("frmRecording"), nullptr);
}

TEST_F(RecorderCommand, LoadsAnotherRecorderWhereTheOneIsClosedWhileTheTipIsSeen)
{
    expectRecorder();
    click(*window, "tlbCmdRecord");
    close("frmRecordingTip");
    click(*window, "tlbCmdRecord");
    close("frmRecording");
    expectRecorder();
    close("frmRecordingTip");
    EXPECT_NE(openOne("frmRecording"), nullptr);
}

TEST_F(RecorderCommand, DoesNothingInABuildWithoutARecorder)
{
    EXPECT_CALL(engines, createRecorder).WillOnce(Return(ByMove(nullptr)));
    click(*window, "tlbCmdRecord");
    EXPECT_EQ(openOne("frmRecordingTip"), nullptr);
    EXPECT_EQ(openOne("frmRecording"), nullptr);
}

TEST_F(RecorderCommand, LeavesNoRecorderBehindWhenTheTipClosesWithTheMainWindow)
{
    auto owned = std::make_unique<QuietRecorder>();
    EXPECT_CALL(*owned, InitRecorder).Times(0);
    EXPECT_CALL(engines, createRecorder).WillOnce(Return(ByMove(std::move(owned))));
    click(*window, "tlbCmdRecord");
    window->close();
    EXPECT_EQ(openOne("frmRecordingTip"), nullptr);
    EXPECT_EQ(openOne("frmRecording"), nullptr);
}

TEST_F(RecorderCommand, ClosesTheRecorderWithTheMainWindow)
{
    wantNoTip();
    expectRecorder();
    click(*window, "tlbCmdRecord");
    window->close();
    EXPECT_EQ(openOne("frmRecording"), nullptr);
}

}  // namespace
