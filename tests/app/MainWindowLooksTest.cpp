#include "app/MainWindowTest.h"
#include "support/IconTheme.h"
#include "support/controls/LevelBar.h"

#include <QApplication>
#include <QCheckBox>
#include <QMenuBar>
#include <QScopeGuard>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QToolBar>

using ::testing::_;
using ::testing::InSequence;
using ::testing::Return;

namespace {

struct ToolTipRow
{
    const char* button;
    const char* toolTip;
};

class EachButtonOfTheWindow : public MainWindow, public ::testing::WithParamInterface<ToolTipRow>
{
};

TEST_P(EachButtonOfTheWindow, HasItsToolTipAndANameForScreenReaders)
{
    make();
    const auto& button = control<QToolButton>(*window, GetParam().button);
    EXPECT_EQ(button.toolTip(), GetParam().toolTip);
    EXPECT_NE(button.accessibleName(), "");
    EXPECT_TRUE(button.isEnabled());
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, EachButtonOfTheWindow,
    ::testing::Values(
        ToolTipRow{"tlbCmdOpen", "Open audio file"}, ToolTipRow{"tlbCmdClear", "Remove selected item"},
        ToolTipRow{"tlbCmdSaveAs", "Save modified audio"}, ToolTipRow{"tlbCmdRewind", "5 seconds back"},
        ToolTipRow{"tlbCmdFForward", "5 seconds forward"}, ToolTipRow{"tlbCmdPlay", ""},
        ToolTipRow{"tlbCmdPlayLoop", "Play loop"}, ToolTipRow{"tlbCmdPause", "Pause"}, ToolTipRow{"tlbCmdStop", ""},
        ToolTipRow{"tlbCmdLoopWinBack", "loop window 1 second back"},
        ToolTipRow{"tlbCmdLoopWinForward", "loop window 1 second forward"},
        ToolTipRow{"tlbCmdRecord", "Start recording modified audio"},
        ToolTipRow{"tlbCmdMP3", "Encode recording to MP3"},
        ToolTipRow{"tlbCmdBPMCalc", "Beats per minute calculator"},
        ToolTipRow{"tlbCmdKeyCalc", "Transpose calculator"}, ToolTipRow{"tlbCmdCDBurn", "Burn Audio CD"},
        ToolTipRow{"tlbCmdVocalRemover", "Remove vocals"}, ToolTipRow{"tlbCmdHelp", ""},
        ToolTipRow{"cmdOrvenda", "Visit Orvenda web site"}, ToolTipRow{"cmdExpand", "Expand sound options"},
        ToolTipRow{"cmdColapse", "Colapse sound options"}),
    [](const auto& info) { return std::string(info.param.button); });

/// Every control that the user can reach, so that a screen reader says what it is.
TEST_F(MainWindow, NamesAllItsControlsForScreenReaders)
{
    make();
    window->show();
    for (const QWidget* widget : window->findChildren<QWidget*>()) {
        const bool isControl = widget->focusPolicy() & Qt::TabFocus;
        const QByteArray name = widget->objectName().toUtf8();
        if (!isControl || name.startsWith("qt_") || !widget->isVisible())
            continue;
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        const bool captioned = button && !button->text().isEmpty();
        EXPECT_TRUE(captioned || !widget->accessibleName().isEmpty()) << name.constData();
        EXPECT_FALSE(name.isEmpty()) << widget->metaObject()->className();
    }
}

TEST_F(MainWindow, GivesEachOfItsButtonsAPicture)
{
    const IconTheme icons;
    make();
    for (const QToolButton* button : window->findChildren<QToolButton*>()) {
        if (button->objectName().startsWith("qt_"))
            continue;
        EXPECT_FALSE(button->icon().isNull()) << qPrintable(button->objectName());
    }
}

TEST_F(MainWindow, IsWalkedByTheTabKeyAsTheEyeGoes)
{
    make();
    window->show();
    QApplication::setActiveWindow(window.get());
    list().setFocus();
    QStringList walked;
    do {
        walked << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != &list() && walked.size() < 100);
    EXPECT_EQ(walked.join(' ').toStdString(),
              "lstAudio cmdOpen cmdAddMark sldAudioPosition sldBeginLoop txtBeginLoop cmdBeginLoopDown "
              "cmdBeginLoopUp sldEndLoop txtEndLoop cmdEndLoopDown cmdEndLoopUp cmdRewind cmdPlay cmdPlayLoop "
              "cmdPause cmdStop cmdFForward cmdTempo10Down cmdTempo1Down sldTempo cmdTempo1Up cmdTempo10Up "
              "cmdTempoReset cmdPitch12DownSemi cmdPitch1DownSemi sldPitchSemi cmdPitch1UpSemi cmdPitch12UpSemi "
              "cmdPitchResetSemi cmdPitch10DownGrad cmdPitch1DownGrad sldPitchGrad cmdPitch1UpGrad "
              "cmdPitch10UpGrad cmdPitchResetGrad cmdRate10Down cmdRate1Down sldSpeed cmdRate1Up cmdRate10Up "
              "cmdRateReset chkApplySettings cmdBPMCalc cmdKeyCalc cmdResetAll cmdGainDown sldGain MyButton6 "
              "cmdBalanceLeft sldBalance cmdBalanceRight cmdBalanceReset cmdOrvenda tlbCmdOpen tlbCmdSaveAs "
              "tlbCmdClear tlbCmdRewind tlbCmdPlay tlbCmdPlayLoop tlbCmdPause tlbCmdStop tlbCmdFForward "
              "tlbCmdLoopWinBack tlbCmdLoopWinForward tlbCmdRecord tlbCmdMP3 tlbCmdCDBurn tlbCmdBPMCalc "
              "tlbCmdKeyCalc tlbCmdVocalRemover tlbCmdHelp");
}

TEST_F(MainWindow, IsWalkedThroughItsEqualizerToTheStatusRowAndTheToolbar)
{
    writeLists("", "");
    make();
    load();
    window->show();
    QApplication::setActiveWindow(window.get());
    click(*window, "cmdExpand");
    control<QWidget>(*window, "cmdFadeOut").setFocus();
    QStringList walked;
    do {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        walked << QApplication::focusWidget()->objectName();
    } while (walked.last() != "tlbCmdOpen" && walked.size() < 100);
    EXPECT_EQ(walked.join(' ').toStdString(),
              "Slider80Hz Slider170Hz Slider310Hz Slider600Hz Slider1000Hz Slider3000Hz "
              "Slider6000Hz Slider12000Hz Slider14000Hz Slider16000Hz cmbEQPresets cmdResetEQ cmdLoadEQPreset "
              "cmdSaveEQPreset cmdOrvenda cmdColapse tlbCmdOpen");
}

TEST_F(MainWindow, KeepsItsSlidersAndItsListUsableHoweverSmallItIsMade)
{
    make();
    window->resize(100, 100);
    window->show();
    for (const Slider* slider : window->findChildren<Slider*>())
        EXPECT_GE(std::max(slider->width(), slider->height()), slider->orientation() == Qt::Horizontal ? 120 : 60)
            << qPrintable(slider->objectName());
    EXPECT_GE(list().width(), 160);
}

TEST_F(MainWindow, IsHigherFromTheStartWhereItsLettersAreLarger)
{
    const QFont usual = QApplication::font();
    const auto back = qScopeGuard([&] { QApplication::setFont(usual); });
    QFont large = usual;
    large.setPointSize(13);
    QApplication::setFont(large);
    writeLists("", "");
    make();
    load();
    window->show();
    const QWidget& content = *control<QScrollArea>(*window, "centralwidget").widget();
    const int bars = window->menuBar()->height() + control<QToolBar>(*window, "toolBar").height();
    EXPECT_GT(window->menuBar()->height(), 0);
    EXPECT_EQ(window->height(), content.minimumSizeHint().height() + bars);
    EXPECT_GT(window->height(), 534);
}

TEST_F(MainWindow, ScrollsWhereItIsMadeTooLowForItsContent)
{
    make();
    window->resize(1024, 400);
    window->show();
    EXPECT_EQ(window->height(), 400);
    EXPECT_TRUE(control<QScrollArea>(*window, "centralwidget").verticalScrollBar()->isVisible());
}

TEST_F(MainWindow, FitsOnASmallScreenWithCaptionsHalfAsLongAgain)
{
    make();
    for (QLabel* label : window->findChildren<QLabel*>())
        label->setText(label->text() + QString(label->text().size() / 2, u'n'));
    auto& box = control<QCheckBox>(*window, "chkApplySettings");
    box.setText(box.text() + QString(box.text().size() / 2, u'n'));
    window->show();
    window->resize(1024, 534);
    const auto& scroll = control<QScrollArea>(*window, "centralwidget");
    EXPECT_LE(scroll.widget()->minimumSizeHint().width(), 1024);
    EXPECT_EQ(window->height(), 534);
    EXPECT_FALSE(scroll.verticalScrollBar()->isVisible());
    click(*window, "cmdExpand");
    EXPECT_EQ(window->height(), 692);
    EXPECT_FALSE(scroll.verticalScrollBar()->isVisible());
}

}  // namespace
