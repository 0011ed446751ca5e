#include "WindowLooks.h"
#include "encoding/EncoderWindowTest.h"
#include "support/IconTheme.h"

#include <QApplication>
#include <QGroupBox>
#include <QScopeGuard>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>

namespace {

/// The window as the user finds it.
class LooksOfTheEncoder : public EncoderWindow
{
protected:
    void show() const
    {
        window->show();
        QApplication::setActiveWindow(window.get());
        QApplication::processEvents();
    }

    void expand() const
    {
        click("cmdOptions");
        QApplication::processEvents();
    }

    static QWidget& content(const QWidget& of) { return control<QWidget>(of, "optionsContent"); }

    /// All options are there to be read, none cut off and none scrolled away.
    static void expectAllOptionsInSight(const QWidget& of)
    {
        const auto& options = control<QScrollArea>(of, "options");
        EXPECT_EQ(options.verticalScrollBar()->maximum(), 0);
        EXPECT_EQ(options.horizontalScrollBar()->maximum(), 0);
        expectNothingCutOff(of);
    }

    static void expectNothingCutOff(const QWidget& of)
    {
        for (const QWidget* shown : of.findChildren<QWidget*>()) {
            const bool hasText = shown->inherits("QAbstractButton") || shown->inherits("QLabel") ||
                                 shown->inherits("QComboBox") || shown->inherits("QGroupBox");
            if (!hasText || !shown->isVisible())
                continue;
            EXPECT_GE(shown->width(), shown->minimumSizeHint().width()) << qPrintable(shown->objectName());
            EXPECT_GE(shown->height(), shown->minimumSizeHint().height()) << qPrintable(shown->objectName());
        }
    }
};

struct CaptionRow
{
    const char* name;
    const char* caption;
};

class EachCaptionOfTheEncoder : public LooksOfTheEncoder, public ::testing::WithParamInterface<CaptionRow>
{
};

TEST_P(EachCaptionOfTheEncoder, StandsAsItIs)
{
    const auto& captioned = control<QWidget>(*window, GetParam().name);
    const auto* frame = qobject_cast<const QGroupBox*>(&captioned);
    EXPECT_EQ(frame ? frame->title() : captioned.property("text").toString(), GetParam().caption);
}

INSTANTIATE_TEST_SUITE_P(
    Captions, EachCaptionOfTheEncoder,
    ::testing::Values(CaptionRow{"FrameMode", "Mode"}, CaptionRow{"FrameBitrate", "Bitrate and priority"},
                      CaptionRow{"FrameVBR", "Variable bitrate"}, CaptionRow{"FrameMisc", "Misc properties"},
                      CaptionRow{"FrameFrequencies", "IO frequences"},
                      CaptionRow{"LabelInputFrequency", "Input frequency"},
                      CaptionRow{"LabelOutputFrequency", "Output frequency"},
                      CaptionRow{"LabelProgress", "Progress :"}, CaptionRow{"Label8", ""},
                      CaptionRow{"cmdBrowse", "Browse"}, CaptionRow{"cmdEncode", "Encode to MP3"},
                      CaptionRow{"cmdOptions", "Options >>"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(LooksOfTheEncoder, HaveTheirTitleAndTheIconOfTheProgram)
{
    EXPECT_EQ(window->windowTitle(), "MP3 encoder");
    EXPECT_FALSE(window->windowIcon().isNull());
    EXPECT_EQ(control<QWidget>(*window, "progress").property("Scrolling"), 1);
}

TEST_F(LooksOfTheEncoder, AreSmallAtFirst)
{
    show();
    EXPECT_EQ(window->height(), 160);  // 2400 twips
    for (const char* hidden : {"FrameMode", "FrameBitrate", "FrameVBR", "FrameMisc", "FrameFrequencies"})
        EXPECT_FALSE(control<QWidget>(*window, hidden).isVisible()) << hidden;
    for (const char* shown : {"Text3", "Text4", "Label8", "progress", "cmdBrowse", "cmdEncode", "cmdOptions"})
        EXPECT_TRUE(control<QWidget>(*window, shown).isVisible()) << shown;
    expectNothingCutOff(*window);
}

TEST_F(LooksOfTheEncoder, HaveAllOptionsInTheTallForm)
{
    show();
    expand();
    EXPECT_EQ(window->height(), 553);  // 8300 twips
    EXPECT_EQ(control<QToolButton>(*window, "cmdOptions").text(), "<< Hide options");
    for (const char* shown : {"FrameMode", "FrameBitrate", "FrameVBR", "FrameMisc", "FrameFrequencies"})
        EXPECT_TRUE(control<QWidget>(*window, shown).isVisible()) << shown;
    expectAllOptionsInSight(*window);
}

TEST_F(LooksOfTheEncoder, AreAsAtFirstWhenTheOptionsWereShownAndHidden)
{
    show();
    const QSize atFirst = window->size();
    for (int i = 0; i < 2; ++i) {
        expand();
        EXPECT_EQ(window->height(), 553);
        click("cmdOptions");
        EXPECT_EQ(window->size(), atFirst);
        EXPECT_EQ(control<QToolButton>(*window, "cmdOptions").text(), "Options >>");
        EXPECT_FALSE(control<QWidget>(*window, "FrameMode").isVisible());
    }
}

TEST_F(LooksOfTheEncoder, StayMaximized)
{
    window->showMaximized();
    QApplication::processEvents();
    const QSize maximized = window->size();
    expand();
    EXPECT_TRUE(window->isMaximized());
    EXPECT_EQ(window->size(), maximized);
    EXPECT_TRUE(control<QWidget>(*window, "FrameMode").isVisible());
}

TEST_F(LooksOfTheEncoder, MoveUpWhereTheTallFormWouldLeaveTheScreen)
{
    show();
    const QRect screen = window->screen()->availableGeometry();
    window->move(30, screen.bottom() - 200);
    expand();
    EXPECT_EQ(window->frameGeometry().bottom(), screen.bottom());
    EXPECT_EQ(window->x(), 30);
}

TEST_F(LooksOfTheEncoder, GiveTheKeyboardBackWhenTheOptionsGo)
{
    show();
    expand();
    control<QWidget>(*window, "chkHQ").setFocus();
    click("cmdOptions");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdOptions");
}

TEST_F(LooksOfTheEncoder, AreNotClosedByEscapeNorByReturn)
{
    show();
    for (const char* name : {"Text3", "cmdBrowse", "cmdOptions"}) {
        QTest::keyClick(&control<QWidget>(*window, name), Qt::Key_Escape);
        QTest::keyClick(&control<QWidget>(*window, name), Qt::Key_Return);
    }
    EXPECT_TRUE(window->isVisible());
}

TEST_F(LooksOfTheEncoder, NameAllControlsForScreenReaders)
{
    EXPECT_EQ(controlsNamedForScreenReaders(*window), 31);
    EXPECT_NE(control<QWidget>(*window, "progress").accessibleName(), "");
    click("cmdOptions");
    EXPECT_EQ(control<QWidget>(*window, "cmdOptions").accessibleName(), "Hide options");
    click("cmdOptions");
    EXPECT_EQ(control<QWidget>(*window, "cmdOptions").accessibleName(), "Options");
}

TEST_F(LooksOfTheEncoder, GiveEachButtonAPicture)
{
    const IconTheme icons;
    const frmMP3Options another(std::make_unique<Encoder>(), dialog);
    const auto buttons = another.findChildren<QToolButton*>();
    EXPECT_EQ(buttons.size(), 3);
    for (const QToolButton* button : buttons)
        EXPECT_FALSE(button->icon().isNull()) << qPrintable(button->objectName());
}

TEST_F(LooksOfTheEncoder, AreWalkedByTheTabKeyAsTheEyeGoes)
{
    browse("/music/track.wav");
    show();
    expand();
    control<QWidget>(*window, "Text3").setFocus();
    QStringList walked;
    do {
        walked << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget()->objectName() != "Text3" && walked.size() < 50);
    EXPECT_EQ(walked.join(' ').toStdString(),
              "Text3 cmdBrowse Text4 cmdEncode cmdOptions optMode0 cmbBitrate cmbPriority chkUseVBR cmbVBRQuality "
              "cmbMinVBRRate cmbMaxVBRRate chkVBRTag chkVoiceMode chkHQ chkFastMode chkDisableSFB "
              "chkChanellBlocktype chkATHmasking chkShortBlocks chkRaw chkByteSwab chkToMono chkAddChecksum "
              "chkCopyright chkNonOriginal Text1 Text2");
}

TEST_F(LooksOfTheEncoder, BeginWithTheKeyboardOnTheChoiceOfASource)
{
    show();
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdBrowse");
}

TEST_F(LooksOfTheEncoder, HaveRoomForCaptionsHalfAsLongAgain)
{
    const auto longer = [](const QString& text) { return text + QString(text.size() / 2, u'n'); };
    for (QLabel* label : window->findChildren<QLabel*>())
        label->setText(longer(label->text()));
    for (QAbstractButton* button : window->findChildren<QAbstractButton*>())
        button->setText(longer(button->text()));
    show();
    expand();
    const int besideTheOptions = window->width() - control<QScrollArea>(*window, "options").width();
    EXPECT_LE(content(*window).minimumSizeHint().width() + besideTheOptions, 1024);
    EXPECT_EQ(control<QScrollArea>(*window, "options").verticalScrollBar()->maximum(), 0);
    EXPECT_GE(content(*window).width(), content(*window).minimumSizeHint().width());
    expectNothingCutOff(*window);
}

TEST_F(LooksOfTheEncoder, GrowWithLargerLetters)
{
    const QFont usual = QApplication::font();
    const auto back = qScopeGuard([&] { QApplication::setFont(usual); });
    QFont large = usual;
    large.setPointSizeF(usual.pointSizeF() * 1.25);
    QApplication::setFont(large);
    frmMP3Options another(std::make_unique<Encoder>(), dialog);
    another.show();
    control<QToolButton>(another, "cmdOptions").click();
    QApplication::processEvents();
    EXPECT_GT(another.height(), 553);
    expectAllOptionsInSight(another);
}

// Where the screen has no room for all of the options, none is cut off: they scroll.
TEST_F(LooksOfTheEncoder, ScrollTheOptionsOnASmallScreen)
{
    const QFont usual = QApplication::font();
    const auto back = qScopeGuard([&] { QApplication::setFont(usual); });
    QFont large = usual;
    large.setPointSize(24);
    QApplication::setFont(large);
    frmMP3Options another(std::make_unique<Encoder>(), dialog);
    another.show();
    control<QToolButton>(another, "cmdOptions").click();
    QApplication::processEvents();
    EXPECT_EQ(another.height(), another.screen()->availableSize().height());
    EXPECT_GT(control<QScrollArea>(another, "options").verticalScrollBar()->maximum(), 0);
    EXPECT_GE(content(another).height(), content(another).minimumSizeHint().height());
    expectNothingCutOff(another);
}

// A long path would otherwise make the window as wide as it is long.
TEST_F(LooksOfTheEncoder, KeepTheirWidthWhateverTheNames)
{
    show();
    const int width = window->width();
    browse("/music/" + QString(300, u'm') + ".wav");
    QApplication::processEvents();
    EXPECT_EQ(window->width(), width);
}

}  // namespace
