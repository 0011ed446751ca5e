#include "vocalremover/VocalRemoverTest.h"

#include "support/IconTheme.h"

#include <QApplication>
#include <QGroupBox>
#include <QScopeGuard>
#include <QTest>
#include <QToolButton>

namespace {

/// The window as the user finds it.
class LooksOfTheVocalRemover : public VocalRemoverWindow
{
protected:
    void SetUp() override { chooseSource(); }

    void show() const
    {
        window->show();
        QApplication::setActiveWindow(window);
        QApplication::processEvents();
    }
};

struct CaptionRow
{
    const char* name;
    const char* caption;
};

class EachCaptionOfTheVocalRemover : public LooksOfTheVocalRemover, public ::testing::WithParamInterface<CaptionRow>
{
};

TEST_P(EachCaptionOfTheVocalRemover, StandsAsItIs)
{
    const auto& captioned = control<QWidget>(*window, GetParam().name);
    const auto* frame = qobject_cast<const QGroupBox*>(&captioned);
    EXPECT_EQ(frame ? frame->title() : captioned.property("text").toString(), GetParam().caption);
}

INSTANTIATE_TEST_SUITE_P(
    Captions, EachCaptionOfTheVocalRemover,
    ::testing::Values(CaptionRow{"FrameCutOff", "Cutoff frquency"},
                      CaptionRow{"FrameVocalPosition", "Adjust Vocal Position"},
                      CaptionRow{"FramePreview", "Preview"}, CaptionRow{"LabelLow", "Low"},
                      CaptionRow{"LabelHigh", "High"}, CaptionRow{"LabelGain", "Gain:"},
                      CaptionRow{"LabelVocalPan", "Vocal Pan:"}, CaptionRow{"lblPreviewPosition", "Position :"},
                      CaptionRow{"lblDurationCaption", "Duration :"}, CaptionRow{"lblSeconds", "seconds"},
                      CaptionRow{"cmdInput", "Browse input"}, CaptionRow{"cmdOutput", "Browse output"},
                      CaptionRow{"cmdProcess", "Process audio"}, CaptionRow{"cmdConvertPlayPreview", "Play result"},
                      CaptionRow{"cmdConvertStopPreview", "Stop"}, CaptionRow{"cmdPlayOriginal", "Play source"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(LooksOfTheVocalRemover, HaveTheirTitleAndBlockNothingByThemselves)
{
    EXPECT_EQ(window->windowTitle(), "Vocal Remover");
    EXPECT_FALSE(window->isModal());
}

TEST_F(LooksOfTheVocalRemover, NameAllControlsForScreenReaders)
{
    int controls = 0;
    for (const QWidget* widget : window->findChildren<QWidget*>()) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || widget->objectName().startsWith("qt_"))
            continue;
        ++controls;
        EXPECT_NE(widget->accessibleName(), "") << qPrintable(widget->objectName());
    }
    EXPECT_EQ(controls, 19);
    EXPECT_NE(control<QWidget>(*window, "prgPercentDone").accessibleName(), "");
}

TEST_F(LooksOfTheVocalRemover, GiveEachButtonAPicture)
{
    const IconTheme icons;
    const frmVocalRemover another(makeEngines(), surroundings());
    const auto buttons = another.findChildren<QToolButton*>();
    EXPECT_EQ(buttons.size(), 12);
    for (const QToolButton* button : buttons)
        EXPECT_FALSE(button->icon().isNull()) << qPrintable(button->objectName());
}

TEST_F(LooksOfTheVocalRemover, AreWalkedByTheTabKeyAsTheEyeGoes)
{
    show();
    control<QWidget>(*window, "txtInputAudio").setFocus();
    QStringList walked;
    do {
        walked << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget()->objectName() != "txtInputAudio" && walked.size() < 50);
    EXPECT_EQ(
        walked.join(' ').toStdString(),
        "txtInputAudio cmdInput txtOutputAudio cmdOutput sldCutOffLow sldCutOffHigh cmdResetAllFrequences "
        "sldGain cmdResetGain sldVocalPan cmdResetPan sldPreviewPosition cmdPreviewDurationDown "
        "cmdPreviewDurationUp cmdConvertPlayPreview cmdConvertStopPreview cmdPlayOriginal cmdProcess cmdHelp");
}

TEST_F(LooksOfTheVocalRemover, BeginWithTheKeyboardOnTheChoiceOfASource)
{
    show();
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdInput");
}

TEST_F(LooksOfTheVocalRemover, AreNotClosedByEscapeNorByReturn)
{
    show();
    for (const char* name : {"cmdInput", "txtInputAudio", "sldGain"}) {
        QTest::keyClick(&control<QWidget>(*window, name), Qt::Key_Escape);
        QTest::keyClick(&control<QWidget>(*window, name), Qt::Key_Return);
    }
    EXPECT_TRUE(window->isVisible());
}

TEST_F(LooksOfTheVocalRemover, FitOnASmallScreen)
{
    show();
    const QSize needed = window->minimumSizeHint();
    EXPECT_LE(needed.width(), 1024);
    EXPECT_LE(needed.height(), 560);
    EXPECT_LE(window->width(), 1024);
    EXPECT_LE(window->height(), 560);
}

TEST_F(LooksOfTheVocalRemover, HaveRoomForCaptionsHalfAsLongAgain)
{
    const auto longer = [](const QString& text) { return text + QString(text.size() / 2, u'n'); };
    for (QLabel* label : window->findChildren<QLabel*>()) {
        const bool isNumber = !label->text().isEmpty() && label->text().at(0).isDigit();
        if (!isNumber)
            label->setText(longer(label->text()));
    }
    for (QAbstractButton* button : window->findChildren<QAbstractButton*>())
        button->setText(button->text().isEmpty() ? QString() : longer(button->text()));
    show();
    EXPECT_LE(window->minimumSizeHint().width(), 1024);
    EXPECT_LE(window->minimumSizeHint().height(), 560);
    for (const QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
        EXPECT_TRUE(button->isHidden() || button->width() >= button->minimumSizeHint().width())
            << qPrintable(button->objectName());
    }
    for (const QLabel* label : window->findChildren<QLabel*>())
        EXPECT_TRUE(label->isHidden() || label->width() >= label->minimumSizeHint().width())
            << qPrintable(label->text());
    for (const char* slider : {"sldCutOffLow", "sldCutOffHigh", "sldGain", "sldVocalPan", "sldPreviewPosition"})
        EXPECT_GE(control<Slider>(*window, slider).width(), 120) << slider;
}

// A long path would otherwise make the window as wide as it is long.
TEST_F(LooksOfTheVocalRemover, KeepTheirWidthWhateverTheStatusSays)
{
    show();
    const int width = window->width();
    control<QLineEdit>(*window, "txtInputAudio").setText(QString(300, u'm'));
    emit player->SoundPlaying(1);
    QApplication::processEvents();
    EXPECT_EQ(window->width(), width);
}

TEST_F(LooksOfTheVocalRemover, GrowWithLargerLetters)
{
    const int usualHeight = window->minimumSizeHint().height();
    const QFont usual = QApplication::font();
    const auto back = qScopeGuard([&] { QApplication::setFont(usual); });
    QFont large = usual;
    large.setPointSize(24);
    QApplication::setFont(large);
    frmVocalRemover another(makeEngines(), surroundings());
    another.show();
    QApplication::processEvents();
    EXPECT_GE(another.height(), another.minimumSizeHint().height());
    EXPECT_GT(another.minimumSizeHint().height(), usualHeight);
    for (const char* name : {"cmdInput", "cmdProcess", "lblCutOffHigh", "LabelGain"}) {
        const auto& shown = control<QWidget>(another, name);
        EXPECT_GE(shown.height(), shown.minimumSizeHint().height()) << name;
        EXPECT_GE(shown.width(), shown.minimumSizeHint().width()) << name;
    }
}

TEST_F(LooksOfTheVocalRemover, OpenTheHelpFileAtTheVocalRemover)
{
    click("cmdHelp");
    EXPECT_EQ(helpContexts, QList<int>{160});
}

}  // namespace
