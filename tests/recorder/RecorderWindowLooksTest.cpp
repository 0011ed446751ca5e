#include "WindowLooks.h"
#include "recorder/RecorderWindowTest.h"
#include "recorder/WindowBarMeters.h"
#include "support/IconTheme.h"
#include "support/controls/LevelBar.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QScopeGuard>
#include <QScreen>
#include <QTest>
#include <QToolButton>

using ::testing::_;
using ::testing::Invoke;
using ::testing::ReturnRef;

namespace {

struct CommandRow
{
    const char* button;
    const char* caption;
    const char* toolTip;
};

class EachCommandOfTheRecorder : public RecorderWindow, public ::testing::WithParamInterface<CommandRow>
{
};

TEST_P(EachCommandOfTheRecorder, HasItsCaptionItsToolTipAPictureAndAName)
{
    const IconTheme icons;
    const auto& button = control<QToolButton>(*window, GetParam().button);
    EXPECT_EQ(button.text(), GetParam().caption);
    EXPECT_EQ(button.toolTip(), GetParam().toolTip);
    EXPECT_NE(button.accessibleName(), "");
    EXPECT_FALSE(button.icon().isNull());
    EXPECT_TRUE(button.isEnabled());
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, EachCommandOfTheRecorder,
    ::testing::Values(CommandRow{"cmdRecord", "Record", "Start recording"}, CommandRow{"cmdStop", "Stop", "Stop"},
                      CommandRow{"cmdPlay", "Play", "Play"},
                      CommandRow{"cmdSaveAs", "Save As", "Change default filename and location for recorded music"},
                      CommandRow{"cmdBrowseRecordOutput", "Change path",
                                 "Change default location for recorded music"},
                      CommandRow{"cmdExpand", "", "Expand additional options"},
                      CommandRow{"cmdColapse", "", "Colapse options"}),
    [](const auto& info) { return std::string(info.param.button); });

TEST_F(RecorderWindow, NamesAllItsControlsForScreenReaders)
{
    window->show();
    click(*window, "cmdExpand");
    EXPECT_GE(controlsNamedForScreenReaders(*window), 20);
}

TEST_F(RecorderWindow, StandsUnderTheMainWindowAndKeepsItsLeftEdge)
{
    mainWindow.setGeometry(40, 60, 500, 300);
    mainWindow.show();
    window->winId();
    window->move(90, 5);
    load();
    EXPECT_EQ(window->y(), mainWindow.frameGeometry().bottom() + 1);
    EXPECT_EQ(window->x(), 90);
}

TEST_F(RecorderWindow, HasTheLeftEdgeOfTheMainWindowWhereItHasNotBeenMoved)
{
    mainWindow.setGeometry(40, 60, 500, 300);
    const frmRecording another(std::make_unique<StrictRecorder>(),
                               RecorderSurroundings{dialog, folderDialog, msgBox, settings}, mainWindow);
    EXPECT_EQ(another.x(), mainWindow.x());
}

TEST_F(RecorderWindow, StaysOnTheScreenWhereTheMainWindowReachesToItsEnd)
{
    const QRect screen = mainWindow.screen()->availableGeometry();
    mainWindow.setGeometry(screen);
    mainWindow.show();
    load();
    window->show();
    EXPECT_EQ(window->frameGeometry().bottom(), screen.bottom());
}

TEST_F(RecorderWindow, BeginsCollapsed)
{
    load();
    window->show();
    EXPECT_EQ(window->height(), 147);
    EXPECT_TRUE(control<QWidget>(*window, "cmdExpand").isVisible());
    for (const char* hidden : {"cmdColapse", "Frame1", "Frame2", "Frame5"})
        EXPECT_FALSE(control<QWidget>(*window, hidden).isVisible()) << hidden;
}

TEST_F(RecorderWindow, ExpandsAndCollapses)
{
    window->show();
    window->move(10, 20);
    click(*window, "cmdExpand");
    EXPECT_EQ(window->height(), 327);
    EXPECT_EQ(window->pos(), QPoint(10, 20));
    for (const char* visible : {"cmdColapse", "Frame1", "Frame2", "Frame5"})
        EXPECT_TRUE(control<QWidget>(*window, visible).isVisible()) << visible;
    EXPECT_FALSE(control<QWidget>(*window, "cmdExpand").isVisible());
    window->resize(window->width(), 400);
    click(*window, "cmdExpand");  // expanded already
    EXPECT_EQ(window->height(), 400);

    click(*window, "cmdColapse");
    EXPECT_EQ(window->height(), 147);
    EXPECT_TRUE(control<QWidget>(*window, "cmdExpand").isVisible());
    for (const char* hidden : {"cmdColapse", "Frame1", "Frame2", "Frame5"})
        EXPECT_FALSE(control<QWidget>(*window, hidden).isVisible()) << hidden;
    window->resize(window->width(), 200);
    click(*window, "cmdColapse");
    EXPECT_EQ(window->height(), 200);
}

TEST_F(RecorderWindow, MovesUpWhereItWouldLeaveTheScreenAndDoesNotMoveBack)
{
    window->show();
    const QRect screen = window->screen()->availableGeometry();
    window->move(30, screen.bottom() - 200);
    click(*window, "cmdExpand");
    EXPECT_EQ(window->frameGeometry().bottom(), screen.bottom());
    EXPECT_EQ(window->x(), 30);
    const int top = window->y();
    click(*window, "cmdColapse");
    EXPECT_EQ(window->pos(), QPoint(30, top));
}

TEST_F(RecorderWindow, HandsTheKeyboardFromOneOfTheTwoButtonsToTheOther)
{
    window->show();
    QApplication::setActiveWindow(window.get());
    auto& expand = control<QWidget>(*window, "cmdExpand");
    auto& collapse = control<QWidget>(*window, "cmdColapse");
    expand.setFocus();
    QTest::keyClick(&expand, Qt::Key_Space);
    EXPECT_EQ(QApplication::focusWidget(), &collapse);
    QTest::keyClick(&collapse, Qt::Key_Space);
    EXPECT_EQ(QApplication::focusWidget(), &expand);
    click(*window, "cmdExpand");
    control<QWidget>(*window, "ComboBitrate").setFocus();
    click(*window, "cmdColapse");
    EXPECT_EQ(QApplication::focusWidget(), &expand);
}

TEST_F(RecorderWindow, IsWalkedByTheTabKeyAsTheEyeGoes)
{
    load();
    window->show();
    QApplication::setActiveWindow(window.get());
    click(*window, "cmdExpand");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdRecord");
    QStringList walked;
    do {
        walked << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget()->objectName() != "cmdRecord" && walked.size() < 50);
    EXPECT_EQ(walked.join(' ').toStdString(),
              "cmdRecord cmdStop cmdPlay cmdSaveAs cmdBrowseRecordOutput cmdColapse ComboCodec ComboBitrate "
              "ComboSamplerate ComboChannel ComboRecordingDevices ComboRecordingInput SliderRecordingInputVolume "
              "chkAutoGain chkSilenceActions cmdDetect sldDetectionLevel");
}

TEST_F(RecorderWindow, IsHigherWhereItsLettersAreLarger)
{
    const QFont usual = QApplication::font();
    const auto back = qScopeGuard([&] { QApplication::setFont(usual); });
    QFont large = usual;
    large.setPointSize(32);
    QApplication::setFont(large);
    frmRecording another(std::make_unique<StrictRecorder>(),
                         RecorderSurroundings{dialog, folderDialog, msgBox, settings}, mainWindow);
    another.show();
    click(another, "cmdExpand");
    EXPECT_GT(another.height(), 327);
    EXPECT_EQ(another.height(), another.minimumSizeHint().height());
}

TEST_F(RecorderWindow, HasRoomForCaptionsHalfAsLongAgain)
{
    const auto longer = [](const QString& text) { return text + QString(text.size() / 2, u'n'); };
    for (QLabel* label : window->findChildren<QLabel*>())
        label->setText(longer(label->text()));
    for (QAbstractButton* button : window->findChildren<QAbstractButton*>())
        button->setText(button->text().isEmpty() ? QString() : longer(button->text()));
    window->show();
    click(*window, "cmdExpand");
    EXPECT_LE(window->minimumSizeHint().width(), 1280);
    for (const QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
        EXPECT_TRUE(button->isHidden() || button->width() >= button->minimumSizeHint().width())
            << qPrintable(button->objectName());
    }
    for (const QLabel* label : window->findChildren<QLabel*>())
        EXPECT_GE(label->width(), label->minimumSizeHint().width()) << qPrintable(label->text());
    EXPECT_EQ(window->height(), 327);
}

/// The window with real bars in it.
class BarsOfTheRecorder : public RecorderWindow
{
protected:
    void SetUp() override
    {
        EXPECT_CALL(*Recorder, BarMeters).WillRepeatedly(ReturnRef(bars));
        {
            const ::testing::InSequence order;
            Recorder->expectMp3();
            expectSoundCard();
            EXPECT_CALL(Recorder->meter, StartVuMeter(0));
            EXPECT_CALL(*Recorder, EnableAntiClipping(1));
        }
        window->Load();
        window->show();
        QApplication::processEvents();
    }

    void expectBarsAtTheirPlaces() const
    {
        for (const char* name : {"PictureVuMeterLeft", "PictureVuMeterRight"}) {
            const QWidget& picture = control<QWidget>(*window, name);
            ASSERT_EQ(picture.findChildren<LevelBar*>().size(), 1) << name;
            const LevelBar& bar = *picture.findChild<LevelBar*>();
            EXPECT_TRUE(bar.isVisible());
            EXPECT_EQ(bar.geometry(), picture.rect()) << name;
            EXPECT_GE(bar.width(), 120);
            EXPECT_GE(bar.height(), 12);
        }
    }

    WindowBarMeters bars;
};

TEST_F(BarsOfTheRecorder, LieOnTheirPlacesWhateverBecomesOfTheWindow)
{
    expectBarsAtTheirPlaces();
    click(*window, "cmdExpand");
    QApplication::processEvents();
    expectBarsAtTheirPlaces();
    window->resize(1300, 600);
    QApplication::processEvents();
    expectBarsAtTheirPlaces();
    QFont large = window->font();
    large.setPointSize(18);
    window->setFont(large);
    QApplication::processEvents();
    expectBarsAtTheirPlaces();
    click(*window, "cmdColapse");
    QApplication::processEvents();
    expectBarsAtTheirPlaces();
}

TEST_F(BarsOfTheRecorder, ShowThePeaksOfTheirSides)
{
    emit Recorder->RecordingPeaks(1000, 32767);
    EXPECT_EQ(control<QWidget>(*window, "PictureVuMeterLeft").findChild<LevelBar*>()->value(), 1000);
    EXPECT_EQ(control<QWidget>(*window, "PictureVuMeterRight").findChild<LevelBar*>()->value(), 32767);
}

TEST_F(BarsOfTheRecorder, AreNamedForScreenReaders)
{
    EXPECT_EQ(control<QWidget>(*window, "PictureVuMeterLeft").findChild<LevelBar*>()->accessibleName(),
              "Input level left");
    EXPECT_EQ(control<QWidget>(*window, "PictureVuMeterRight").findChild<LevelBar*>()->accessibleName(),
              "Input level right");
}

}  // namespace
