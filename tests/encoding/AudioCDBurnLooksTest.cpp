#include "WindowLooks.h"
#include "encoding/AudioCDBurnTest.h"

#include <QApplication>
#include <QScopeGuard>
#include <QTest>

namespace {

/// The window as the user finds it.
class LooksOfTheAudioCDWriter : public AudioCDBurn
{
protected:
    void show() const
    {
        window->show();
        QApplication::setActiveWindow(window);
        QApplication::processEvents();
    }
};

struct DiscCaptionRow
{
    const char* name;
    const char* caption;
};

class EachCaptionOfTheAudioCDWriter : public LooksOfTheAudioCDWriter,
                                      public ::testing::WithParamInterface<DiscCaptionRow>
{
};

TEST_P(EachCaptionOfTheAudioCDWriter, StandsAsItIs)
{
    EXPECT_EQ(control<QWidget>(*window, GetParam().name).property("text").toString(), GetParam().caption);
}

INSTANTIATE_TEST_SUITE_P(
    Captions, EachCaptionOfTheAudioCDWriter,
    ::testing::Values(
        DiscCaptionRow{"LabelDevices", "Drive :"}, DiscCaptionRow{"LabelWriteSpeed", "Write Speed :"},
        DiscCaptionRow{"chkCacheFiles", "Cache/Decode files locally"}, DiscCaptionRow{"chkTestWrite", "Test Mode "},
        DiscCaptionRow{"chkUseBurnProof", "Use Burn Proof"}, DiscCaptionRow{"chkDiscAtOnce", "Disc-at-Once"},
        DiscCaptionRow{"LabelTrackProgress", "Track Progress :"},
        DiscCaptionRow{"LabelTotalProgress", "Total Progress :"},
        DiscCaptionRow{"lblDriveBuffer", "Drive Buffer :"}, DiscCaptionRow{"lblReadBuffer", "ReadBuffer :"},
        DiscCaptionRow{"lblStatus", "Status : Idle"}, DiscCaptionRow{"cmdWriteDisc", "Write audio disc"},
        DiscCaptionRow{"cmdCancel", "Cancel"}, DiscCaptionRow{"cmdAddTrack", "Add audio track"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(LooksOfTheAudioCDWriter, NameAllControlsForScreenReaders)
{
    EXPECT_EQ(controlsNamedForScreenReaders(*window), 15);
    EXPECT_NE(control<QWidget>(*window, "prgTrackProgress").accessibleName(), "");
    EXPECT_NE(control<QWidget>(*window, "prgTotalProgress").accessibleName(), "");
}

TEST_F(LooksOfTheAudioCDWriter, GiveEachButtonAPictureAndEachWithoutACaptionAToolTip)
{
    const auto buttons = window->findChildren<QToolButton*>();
    EXPECT_EQ(buttons.size(), 8);
    for (const QToolButton* button : buttons) {
        EXPECT_FALSE(button->icon().isNull()) << qPrintable(button->objectName());
        EXPECT_NE(button->text() + button->toolTip(), "") << qPrintable(button->objectName());
    }
}

TEST_F(LooksOfTheAudioCDWriter, AreWalkedByTheTabKeyAsTheEyeGoes)
{
    load();
    show();
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdAddTrack");
    control<QWidget>(*window, "cboDevices").setFocus();
    QStringList walked;
    do {
        walked << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget()->objectName() != "cboDevices" && walked.size() < 50);
    EXPECT_EQ(walked.join(' ').toStdString(),
              "cboDevices cboWriteSpeed chkCacheFiles chkUseBurnProof chkTestWrite chkDiscAtOnce lvwAudioTracks "
              "cmdMoveFirst cmdMoveUp cmdMoveDown cmdMoveLast cmdAddTrack cmdRemoveTrack cmdWriteDisc");
}

// One press too many on the key that starts a write must not end it.
TEST_F(LooksOfTheAudioCDWriter, DoNotGiveTheKeyboardToCancelByItself)
{
    load();
    show();
    control<QWidget>(*window, "cmdWriteDisc").setFocus();
    startWriting();
    EXPECT_NE(QApplication::focusWidget(), &control<QWidget>(*window, "cmdCancel"));
    QTest::keyClick(window, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &control<QWidget>(*window, "cmdCancel"));
}

TEST_F(LooksOfTheAudioCDWriter, FitOnASmallScreen)
{
    load();
    show();
    EXPECT_LE(window->minimumSizeHint().width(), 1024);
    EXPECT_LE(window->minimumSizeHint().height(), 560);
    EXPECT_LE(window->height(), 560);
}

TEST_F(LooksOfTheAudioCDWriter, HaveRoomForCaptionsHalfAsLongAgain)
{
    load();
    const auto longer = [](const QString& text) { return text + QString(text.size() / 2, u'n'); };
    for (QLabel* label : window->findChildren<QLabel*>())
        label->setText(longer(label->text()));
    for (QAbstractButton* button : window->findChildren<QAbstractButton*>())
        button->setText(button->text().isEmpty() ? QString() : longer(button->text()));
    show();
    EXPECT_LE(window->minimumSizeHint().width(), 1024);
    EXPECT_LE(window->minimumSizeHint().height(), 560);
    for (const QAbstractButton* button : window->findChildren<QAbstractButton*>())
        EXPECT_GE(button->width(), button->minimumSizeHint().width()) << qPrintable(button->objectName());
    for (const QLabel* label : window->findChildren<QLabel*>())
        EXPECT_GE(label->width(), label->minimumSizeHint().width()) << qPrintable(label->text());
    EXPECT_GE(control<QWidget>(*window, "prgTotalProgress").width(), 120);
}

TEST_F(LooksOfTheAudioCDWriter, KeepTheirWidthWhateverTheStatusSays)
{
    load();
    show();
    const int width = window->width();
    bool goOn = false;
    emit engine->FileWarning({QString(300, u'm'), ""}, goOn);
    QApplication::processEvents();
    EXPECT_EQ(window->width(), width);
    EXPECT_EQ(status(), "File Warning:" + QString(300, u'm'));
}

TEST_F(LooksOfTheAudioCDWriter, GrowWithLargerLetters)
{
    const int usualHeight = window->minimumSizeHint().height();
    const QFont usual = QApplication::font();
    const auto back = qScopeGuard([&] { QApplication::setFont(usual); });
    QFont large = usual;
    large.setPointSize(24);
    QApplication::setFont(large);
    frmAudioCDBurn another(makeEngine(), {dialog, msgBox});
    another.show();
    QApplication::processEvents();
    EXPECT_GT(another.minimumSizeHint().height(), usualHeight);
    for (const char* name : {"cmdAddTrack", "cmdWriteDisc", "lblStatus", "chkCacheFiles"}) {
        const auto& shown = control<QWidget>(another, name);
        EXPECT_GE(shown.height(), shown.minimumSizeHint().height()) << name;
        EXPECT_GE(shown.width(), shown.minimumSizeHint().width()) << name;
    }
}

}  // namespace
