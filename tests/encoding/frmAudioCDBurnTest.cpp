#include "encoding/AudioCDBurnTest.h"
#include "support/IconTheme.h"

#include <QApplication>
#include <QScopeGuard>
#include <QTest>

using ::testing::_;
using ::testing::InSequence;
using ::testing::Return;

namespace {

class TheAudioCDWriter : public AudioCDBurn
{
protected:
    void show() const
    {
        window->show();
        QApplication::setActiveWindow(window);
        QApplication::processEvents();
    }

    static void deleteLater() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
};

// --- opening

TEST_F(TheAudioCDWriter, OpensIdle)
{
    load();
    expectIdle();
    EXPECT_EQ(window->windowTitle(), "Audio CD Writer");
    EXPECT_FALSE(window->isModal());
    EXPECT_TRUE(box("chkCacheFiles").isChecked());
    EXPECT_FALSE(box("chkTestWrite").isChecked());
    EXPECT_TRUE(box("chkUseBurnProof").isChecked());
    EXPECT_FALSE(box("chkDiscAtOnce").isChecked());
    EXPECT_EQ(valueOf("prgTrackProgress"), 0);
    EXPECT_EQ(valueOf("prgTotalProgress"), 0);
    EXPECT_EQ(status(), "Status : Idle");
    EXPECT_EQ(tracks().columnCount(), 4);
    EXPECT_TRUE(tracks().isVisibleTo(window));
}

TEST_F(TheAudioCDWriter, BeginsWithTheProtectionAgainstUnderrunsOff)
{
    EXPECT_FALSE(box("chkUseBurnProof").isChecked());
}

TEST_F(TheAudioCDWriter, GoesOnWhereTheDevicesCannotBeInitialized)
{
    const InSequence order;
    EXPECT_CALL(*engine, InitDevices(false)).WillOnce(Return(false));
    expectBox("Devices Cannot be initialized...Contact support!", MsgBox::Look::Plain);
    EXPECT_CALL(*engine, GetAudioProject).WillOnce(Return(&project));
    expectDeviceList();
    expectDriveIsPicked();
    expectIdleAgain();
    window->Load();
    expectIdle();
}

TEST_F(TheAudioCDWriter, DoesNotCloseUnderAMessageBoxOfItsOpening)
{
    window->setAttribute(Qt::WA_DeleteOnClose);
    const InSequence order;
    EXPECT_CALL(*engine, InitDevices(false)).WillOnce(Return(false));
    EXPECT_CALL(msgBox, show(_, _, _)).WillOnce([this] {
        EXPECT_FALSE(window->close());
        deleteLater();
    });
    EXPECT_CALL(*engine, GetAudioProject).WillOnce(Return(&project));
    expectDeviceList();
    expectDriveIsPicked();
    expectIdleAgain();
    window->Load();
    ASSERT_FALSE(alive.isNull());
    expectIdle();
}

// --- closing

TEST_F(TheAudioCDWriter, ClosesWhileItIsIdle)
{
    load();
    window->setAttribute(Qt::WA_DeleteOnClose);
    show();
    EXPECT_TRUE(window->close());
    deleteLater();
    EXPECT_TRUE(alive.isNull());
}

TEST_F(TheAudioCDWriter, RefusesToCloseWhileItWritesAndSaysNothing)
{
    load();
    window->setAttribute(Qt::WA_DeleteOnClose);
    show();
    startWriting();
    EXPECT_FALSE(window->close());
    window->done(0);
    window->reject();
    QTest::keyClick(window, Qt::Key_Escape);
    deleteLater();
    ASSERT_FALSE(alive.isNull());
    EXPECT_TRUE(window->isVisible());
    expectWriting();
    EXPECT_EQ(status(), "Status : Idle");
}

TEST_F(TheAudioCDWriter, RefusesToCloseWhileItWritesOutOfSight)
{
    load();
    window->setAttribute(Qt::WA_DeleteOnClose);
    startWriting();
    window->hide();
    EXPECT_FALSE(window->close());
    deleteLater();
    EXPECT_FALSE(alive.isNull());
}

struct EndRow
{
    const char* name;
    DiscStage stage;
};

class TheEndOfAWrite : public TheAudioCDWriter, public ::testing::WithParamInterface<EndRow>
{
};

TEST_P(TheEndOfAWrite, LetsTheWindowCloseAgainAndNotBeforeItsBoxIsClosed)
{
    load();
    show();
    startWriting();
    EXPECT_CALL(msgBox, show(_, _, _)).WillRepeatedly([this] { EXPECT_FALSE(window->close()); });
    EXPECT_CALL(project, GetTestMode).WillRepeatedly(Return(true));
    EXPECT_CALL(project, ClearTracks).Times(::testing::AtMost(1));
    expectIdleAgain();
    tell(GetParam().stage);
    EXPECT_TRUE(window->close());
}

INSTANTIATE_TEST_SUITE_P(Stages, TheEndOfAWrite,
                         ::testing::Values(EndRow{"Completed", DiscStage::Completed},
                                           EndRow{"Cancelled", DiscStage::Cancelled},
                                           EndRow{"Failed", DiscStage::Failed}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(TheAudioCDWriter, IsNotClosedByEscapeNorByReturnWhileItIsIdle)
{
    load();
    show();
    for (const char* name : {"cmdAddTrack", "lvwAudioTracks", "cboDevices", "chkTestWrite"}) {
        QTest::keyClick(&control<QWidget>(*window, name), Qt::Key_Escape);
        if (std::string(name) != "cmdAddTrack")
            QTest::keyClick(&control<QWidget>(*window, name), Qt::Key_Return);
    }
    EXPECT_TRUE(window->isVisible());
}

TEST_F(TheAudioCDWriter, AddsNoMoreTracksWhereItIsClosedUnderTheDialog)
{
    load();
    window->setAttribute(Qt::WA_DeleteOnClose);
    show();
    EXPECT_CALL(dialog, ShowOpen).WillOnce([this](const FileDialogSetup&) {
        EXPECT_TRUE(window->close());
        deleteLater();
        EXPECT_FALSE(alive.isNull());
        return answering("/music/a.wav");
    });
    click("cmdAddTrack");
    deleteLater();
    EXPECT_TRUE(alive.isNull());
}

TEST_F(TheAudioCDWriter, AddsNoMoreTracksWhereItIsClosedUnderABoxAboutOne)
{
    load();
    window->setAttribute(Qt::WA_DeleteOnClose);
    show();
    const InSequence order;
    EXPECT_CALL(dialog, ShowOpen)
        .WillOnce(Return(answering(QStringList({"/music", "a.ogg", "b.wav"}).join(QChar::Null))));
    EXPECT_CALL(msgBox, show(_, _, _)).WillOnce([this] { EXPECT_TRUE(window->close()); });
    click("cmdAddTrack");
    deleteLater();
    EXPECT_TRUE(alive.isNull());
}

TEST_F(TheAudioCDWriter, TakesItsHourglassWithItWhereItIsDeletedWhileItWrites)
{
    load();
    show();
    startWriting();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    delete alive.data();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

// --- looks

struct CaptionRow
{
    const char* name;
    const char* caption;
};

class EachCaptionOfTheAudioCDWriter : public TheAudioCDWriter, public ::testing::WithParamInterface<CaptionRow>
{
};

TEST_P(EachCaptionOfTheAudioCDWriter, StandsAsItIs)
{
    EXPECT_EQ(control<QWidget>(*window, GetParam().name).property("text").toString(), GetParam().caption);
}

INSTANTIATE_TEST_SUITE_P(
    Captions, EachCaptionOfTheAudioCDWriter,
    ::testing::Values(CaptionRow{"LabelDevices", "Drive :"}, CaptionRow{"LabelWriteSpeed", "Write Speed :"},
                      CaptionRow{"chkCacheFiles", "Cache/Decode files locally"},
                      CaptionRow{"chkTestWrite", "Test Mode "}, CaptionRow{"chkUseBurnProof", "Use Burn Proof"},
                      CaptionRow{"chkDiscAtOnce", "Disc-at-Once"},
                      CaptionRow{"LabelTrackProgress", "Track Progress :"},
                      CaptionRow{"LabelTotalProgress", "Total Progress :"},
                      CaptionRow{"lblDriveBuffer", "Drive Buffer :"}, CaptionRow{"lblReadBuffer", "ReadBuffer :"},
                      CaptionRow{"lblStatus", "Status : Idle"}, CaptionRow{"cmdWriteDisc", "Write audio disc"},
                      CaptionRow{"cmdCancel", "Cancel"}, CaptionRow{"cmdAddTrack", "Add audio track"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(TheAudioCDWriter, NamesAllItsControlsForScreenReaders)
{
    int controls = 0;
    for (const QWidget* widget : window->findChildren<QWidget*>()) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || widget->objectName().startsWith("qt_") ||
            widget->parentWidget()->inherits("QComboBoxPrivateContainer"))
            continue;
        ++controls;
        EXPECT_NE(widget->accessibleName(), "") << qPrintable(widget->objectName());
    }
    EXPECT_EQ(controls, 15);
    EXPECT_NE(control<QWidget>(*window, "prgTrackProgress").accessibleName(), "");
    EXPECT_NE(control<QWidget>(*window, "prgTotalProgress").accessibleName(), "");
}

TEST_F(TheAudioCDWriter, GivesEachButtonAPictureAndEachWithoutACaptionAToolTip)
{
    const IconTheme icons;
    const frmAudioCDBurn another(makeEngine(), {dialog, msgBox});
    const auto buttons = another.findChildren<QToolButton*>();
    EXPECT_EQ(buttons.size(), 8);
    for (const QToolButton* button : buttons) {
        EXPECT_FALSE(button->icon().isNull()) << qPrintable(button->objectName());
        EXPECT_NE(button->text() + button->toolTip(), "") << qPrintable(button->objectName());
    }
}

TEST_F(TheAudioCDWriter, IsWalkedByTheTabKeyAsTheEyeGoes)
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
TEST_F(TheAudioCDWriter, DoesNotGiveTheKeyboardToCancelByItself)
{
    load();
    show();
    control<QWidget>(*window, "cmdWriteDisc").setFocus();
    startWriting();
    EXPECT_NE(QApplication::focusWidget(), &control<QWidget>(*window, "cmdCancel"));
    QTest::keyClick(window, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &control<QWidget>(*window, "cmdCancel"));
}

TEST_F(TheAudioCDWriter, FitsOnASmallScreen)
{
    load();
    show();
    EXPECT_LE(window->minimumSizeHint().width(), 1024);
    EXPECT_LE(window->minimumSizeHint().height(), 560);
    EXPECT_LE(window->height(), 560);
}

TEST_F(TheAudioCDWriter, HasRoomForCaptionsHalfAsLongAgain)
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

TEST_F(TheAudioCDWriter, KeepsItsWidthWhateverTheStatusSays)
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

TEST_F(TheAudioCDWriter, GrowsWithLargerLetters)
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
