#include "app/MainWindowTest.h"
#include "support/controls/ComboBox.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <algorithm>

namespace {

/// The windows that the main window opens.
class ToolWindows : public MainWindow
{
protected:
    void SetUp() override { start(); }

    /// Runs what opens a window that blocks, and meanwhile @p look, once that window is there; then closes it.
    template <typename Open, typename Look>
    void blocked(Open open, Look look)
    {
        bool seen = false;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            if (!modal)
                return;
            poll.stop();
            seen = true;
            look(*modal);
            modal->close();
        });
        poll.start(0);
        open();
        EXPECT_TRUE(seen);
    }

    template <typename Open>
    QString nameOfBlocking(Open open)
    {
        QString name;
        blocked(open, [&name](const QWidget& modal) { name = modal.objectName(); });
        return name;
    }

    static QWidget* openOne(const char* name) { return openWindows(name).value(0); }
};

TEST_F(ToolWindows, OpenTheTransposeCalculatorBlockingFromFourPlaces)
{
    for (const char* button : {"tlbCmdKeyCalc", "cmdKeyCalc"})
        EXPECT_EQ(nameOfBlocking([&] { click(*window, button); }), "frmKeyCalc") << button;
    EXPECT_EQ(nameOfBlocking([&] { trigger("mnuTranspose"); }), "frmKeyCalc");
    EXPECT_EQ(nameOfBlocking([&] { QTest::mouseClick(&control<QLabel>(*window, "Label2"), Qt::LeftButton); }),
              "frmKeyCalc");
}

TEST_F(ToolWindows, OpenTheBpmCalculatorWithoutBlockingAndOnlyOnce)
{
    for (const char* button : {"tlbCmdBPMCalc", "cmdBPMCalc"})
        click(*window, button);
    trigger("mnuBpm");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    int open = 0;
    for (const QWidget* top : QApplication::topLevelWidgets())
        open += top->objectName() == "frmBPMCalculator" && top->isVisible() ? 1 : 0;
    EXPECT_EQ(open, 1);
}

TEST_F(ToolWindows, TransposeTheMainWindowsPitch)
{
    EXPECT_CALL(*player, ChangePitchSemitones(0, 2));
    blocked([this] { trigger("mnuTranspose"); },
            [](QWidget& modal) {
                control<ComboBox>(modal, "cboInitKey").setListIndex(0);
                control<ComboBox>(modal, "cboDestKey").setListIndex(2);
                control<QAbstractButton>(modal, "cmdTransposeUp").click();
            });
    EXPECT_EQ(valueOf(*window, "sldPitchSemi"), 2);
}

TEST_F(ToolWindows, OpenTheAboutWindowBlocking)
{
    EXPECT_EQ(nameOfBlocking([this] { trigger("mnuAbout"); }), "frmAbout");
}

TEST_F(ToolWindows, CloseWithTheMainWindow)
{
    trigger("mnuBpm");
    ASSERT_NE(openOne("frmBPMCalculator"), nullptr);
    window->close();
    EXPECT_EQ(openOne("frmBPMCalculator"), nullptr);
}

TEST_F(ToolWindows, CloseOnlyWhenThePlaylistIsWritten)
{
    trigger("mnuBpm");
    folder.remove();  // each file that can't be written is told of
    EXPECT_CALL(msgBox, show).Times(2).WillRepeatedly([this] {
        EXPECT_NE(openOne("frmBPMCalculator"), nullptr);
        EXPECT_TRUE(window->isVisible());
    });
    window->close();
    EXPECT_EQ(openOne("frmBPMCalculator"), nullptr);
}

TEST_F(ToolWindows, ThatBlockCloseWithTheMainWindowToo)
{
    blocked([this] { trigger("mnuTranspose"); }, [this](const QWidget&) { window->close(); });
    EXPECT_FALSE(window->isVisible());
}

TEST_F(ToolWindows, ShowATipASecondAfterTheStartAndSwitchItsTimerOffBehindIt)
{
    auto& timer = control<QTimer>(*window, "tmrTip");
    EXPECT_TRUE(timer.isActive());
    EXPECT_EQ(timer.interval(), 1000);
    blocked([this] { fire(*window, "tmrTip"); },
            [&](const QWidget& modal) {
                EXPECT_EQ(modal.objectName(), "TipOfDay");
                EXPECT_TRUE(timer.isActive());
                fire(*window, "tmrTip");  // a tick meanwhile shows no second one
                EXPECT_EQ(QApplication::activeModalWidget(), &modal);
            });
    EXPECT_FALSE(timer.isActive());
}

TEST_F(ToolWindows, ShowNoTipWhereTheUserWantsNone)
{
    settings.SaveSetting("Options", "Show Tips at Startup", "0");
    fire(*window, "tmrTip");
    EXPECT_FALSE(control<QTimer>(*window, "tmrTip").isActive());
}

TEST_F(MainWindow, CoversItsLoadWithTheSplash)
{
    const auto splash = [] {
        const QWidgetList tops = QApplication::topLevelWidgets();
        return std::ranges::any_of(
            tops, [](const QWidget* top) { return top->objectName() == "frmSplash" && top->isVisible(); });
    };
    writeLists("", "");
    make();
    bool coveredAtFirst = false;
    bool coveredAtLast = false;
    EXPECT_CALL(*player, InitPlayers).WillOnce([&] { coveredAtFirst = splash(); });
    EXPECT_CALL(meter, SetVuMeterMode);
    EXPECT_CALL(meter, EnableVuMeter);
    EXPECT_CALL(*editor, InitEditor);
    expectMixer();
    EXPECT_CALL(*player, ResetEqualizer(0));
    EXPECT_CALL(*player, GetEqualizerBandCount(0)).WillOnce(::testing::Return(0));
    EXPECT_CALL(*player, EnableEqualizer(true));
    EXPECT_CALL(*player, AddEqualizerBand).WillRepeatedly([&] { coveredAtLast = splash(); });
    window->Load();
    EXPECT_TRUE(coveredAtFirst);
    EXPECT_TRUE(coveredAtLast);
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(splash());
}

}  // namespace
