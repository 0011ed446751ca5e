#include "encoding/AudioCDBurnTest.h"

#include <QApplication>
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

}  // namespace
