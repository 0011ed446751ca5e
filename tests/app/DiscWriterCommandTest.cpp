#include "app/MainWindowTest.h"
#include "engines/MockDiscEngine.h"

#include <QApplication>
#include <QPointer>
#include <QTimer>

using ::testing::_;
using ::testing::ByMove;
using ::testing::InSequence;
using ::testing::NiceMock;
using ::testing::Return;
using ::testing::SetArgReferee;

namespace {

/// A drive with a blank disc, and a project that fits.
class OpenedDiscEngine : public NiceMock<MockDiscEngine>
{
public:
    explicit OpenedDiscEngine(int& alive)
        : alive(alive)
    {
        ++alive;
        ON_CALL(*this, InitDevices).WillByDefault(Return(true));
        ON_CALL(*this, GetDeviceCount).WillByDefault(Return(short{1}));
        ON_CALL(*this, GetDevice).WillByDefault(Return(&drive));
        ON_CALL(*this, GetAudioProject).WillByDefault(Return(&project));
        ON_CALL(drive, IsDeviceUsable).WillByDefault(Return(true));
        ON_CALL(drive, GetDiscInfo).WillByDefault(Return(DiscInfo(true, true, 0)));
        ON_CALL(project, StartWrite).WillByDefault(SetArgReferee<1>(true));
    }
    ~OpenedDiscEngine() override { --alive; }
    Q_DISABLE_COPY_MOVE(OpenedDiscEngine)

    NiceMock<MockDiscDevice> drive;
    NiceMock<MockAudioProject> project;

private:
    int& alive;
};

/// The command that opens the disc writer, and the end of the program while that writes.
class DiscWriterCommand : public MainWindow
{
protected:
    void SetUp() override { start(); }

    void expectEngine()
    {
        auto owned = std::make_unique<OpenedDiscEngine>(enginesAlive);
        engine = owned.get();
        EXPECT_CALL(engines, createDisc).WillOnce(Return(ByMove(std::move(owned)))).RetiresOnSaturation();
    }

    static QWidgetList openWriters() { return openWindows("frmAudioCDBurn"); }

    static QWidget* openWriter() { return openWriters().value(0); }

    void open()
    {
        expectEngine();
        click(*window, "tlbCmdCDBurn");
        ASSERT_EQ(openWriters().size(), 1);
    }

    void openAndWrite()
    {
        open();
        EXPECT_CALL(engine->project, StartWrite(&engine->drive, _));
        click(*openWriter(), "cmdWriteDisc");
        ASSERT_TRUE(control<QWidget>(*openWriter(), "cmdCancel").isEnabled());
    }

    /// The user has been told of the end.
    void endTheWrite()
    {
        EXPECT_CALL(msgBox, show(QString("Writing is complete!"), MsgBox::Look::Information, QString()));
        emit engine->WriteProgress(100, 1, 100, DiscStage::Completed);
    }

    void expectClosedAndDeleted()
    {
        EXPECT_EQ(openWriter(), nullptr);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(window->findChild<QWidget*>("frmAudioCDBurn"), nullptr);
        EXPECT_EQ(enginesAlive, 0);
    }

    OpenedDiscEngine* engine = nullptr;
    int enginesAlive = 0;
};

TEST_F(DiscWriterCommand, OpensItBesideTheMainWindow)
{
    open();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    openWriter()->close();
    expectClosedAndDeleted();
}

TEST_F(DiscWriterCommand, BringsTheOneToTheFrontThatStandsOpen)
{
    open();
    QWidget* first = openWriter();
    first->showMinimized();
    click(*window, "tlbCmdCDBurn");
    EXPECT_EQ(openWriters(), QWidgetList{first});
    EXPECT_FALSE(first->isMinimized());
}

TEST_F(DiscWriterCommand, StartsAfreshAfterItWasClosed)
{
    open();
    control<QAbstractButton>(*openWriter(), "chkDiscAtOnce").setChecked(true);
    openWriter()->close();
    expectClosedAndDeleted();
    open();
    EXPECT_FALSE(control<QAbstractButton>(*openWriter(), "chkDiscAtOnce").isChecked());
}

TEST_F(DiscWriterCommand, AsksInTheProgramsFileDialog)
{
    open();
    FileDialogAnswer chosen;
    chosen.fileName = "/music/take.wav";
    EXPECT_CALL(dialog, ShowOpen).WillOnce(Return(chosen));
    EXPECT_CALL(engine->project, AddTrack(QString("/music/take.wav"), 1, _)).WillOnce(SetArgReferee<2>(true));
    click(*openWriter(), "cmdAddTrack");
}

TEST_F(DiscWriterCommand, DoesNothingInABuildThatWritesNoDiscs)
{
    EXPECT_CALL(engines, createDisc).WillOnce([] { return nullptr; });
    click(*window, "tlbCmdCDBurn");
    EXPECT_EQ(openWriter(), nullptr);
}

TEST_F(DiscWriterCommand, OpensOneWhereItIsGivenAgainBehindAMessageBoxOfTheLoad)
{
    expectEngine();
    OpenedDiscEngine* first = engine;
    ON_CALL(*first, InitDevices).WillByDefault(Return(false));
    EXPECT_CALL(msgBox, show(QString("Devices Cannot be initialized...Contact support!"), _, QString()))
        .WillOnce([this] {
            expectEngine();
            click(*window, "tlbCmdCDBurn");
        });
    click(*window, "tlbCmdCDBurn");
    EXPECT_EQ(openWriters().size(), 1);
    EXPECT_EQ(enginesAlive, 1);
}

TEST_F(DiscWriterCommand, OpensNoneWhereTheMainWindowIsClosedBehindAMessageBoxOfTheLoad)
{
    expectEngine();
    ON_CALL(*engine, InitDevices).WillByDefault(Return(false));
    EXPECT_CALL(msgBox, show).WillOnce([this] { window->close(); });
    click(*window, "tlbCmdCDBurn");
    EXPECT_EQ(openWriter(), nullptr);
    EXPECT_EQ(enginesAlive, 0);
}

TEST_F(DiscWriterCommand, ClosesTheWindowWithTheMainWindow)
{
    open();
    window->close();
    EXPECT_FALSE(window->isVisible());
    expectClosedAndDeleted();
}

TEST_F(DiscWriterCommand, LeavesAWriteAloneWhereTheMainWindowIsClosed)
{
    openAndWrite();
    trigger("mnuBpm");
    EXPECT_CALL(engine->project, AbortWrite).Times(0);
    EXPECT_CALL(*player, CloseSound(0));  // the sound does not go on alone
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(window->findChild<QWidget*>("frmBPMCalculator", Qt::FindDirectChildrenOnly)->isVisible(), false);
    ASSERT_NE(openWriter(), nullptr);
    EXPECT_EQ(read("list.pms"), "");

    emit engine->WriteProgress(40, 1, 80, DiscStage::Writing);
    EXPECT_EQ(textOf(*openWriter(), "lblStatus"), "Writing Image... Track# 01");
    openWriter()->close();
    ASSERT_NE(openWriter(), nullptr);
    endTheWrite();
    ASSERT_NE(openWriter(), nullptr);
    openWriter()->close();
    expectClosedAndDeleted();
}

TEST_F(DiscWriterCommand, WritesAnotherDiscWithoutTheMainWindow)
{
    openAndWrite();
    EXPECT_CALL(*player, CloseSound(0));
    window->close();
    endTheWrite();
    EXPECT_CALL(engine->project, StartWrite(&engine->drive, _));
    click(*openWriter(), "cmdWriteDisc");
    openWriter()->close();
    EXPECT_NE(openWriter(), nullptr);
}

/// As the program runs: it ends when Qt says so.
class EndOfTheProgramThatWrites : public DiscWriterCommand
{
protected:
    void SetUp() override
    {
        DiscWriterCommand::SetUp();
        QApplication::setQuitOnLastWindowClosed(true);
    }

    void TearDown() override { QApplication::setQuitOnLastWindowClosed(false); }

    /// Some turns of the event loop on, if the program still runs.
    template <typename Later>
    void later(Later step)
    {
        constexpr int someTurns = 20;
        auto* turn = new QTimer(&turns);
        QObject::connect(turn, &QTimer::timeout, turn, [turn, step, count = 0]() mutable {
            if (++count < someTurns)
                return;
            turn->stop();
            step();
        });
        turn->start(0);
    }

    int run()
    {
        QTimer::singleShot(20000, &turns, [] { QCoreApplication::exit(1); });
        return QApplication::exec();
    }

    QObject turns;
};

TEST_F(EndOfTheProgramThatWrites, ComesWhenTheWindowIsClosedBehindTheWrite)
{
    openAndWrite();
    EXPECT_CALL(*player, CloseSound(0));
    bool ended = false;
    later([&] {
        window->close();
        later([&] {
            openWriter()->close();
            endTheWrite();
            later([&] {
                ended = true;
                openWriter()->close();
            });
        });
    });
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(ended);
    EXPECT_EQ(enginesAlive, 0);
}

TEST_F(EndOfTheProgramThatWrites, ComesWithTheMainWindowWhereTheWriteIsOver)
{
    openAndWrite();
    bool tooLate = false;
    later([&] {
        endTheWrite();
        window->close();
        later([&] { tooLate = true; });
    });
    EXPECT_EQ(run(), 0);
    EXPECT_FALSE(tooLate);
}

TEST_F(EndOfTheProgramThatWrites, GivesTheWriteUpWithTheMainWindowThatOwnsIt)
{
    openAndWrite();
    EXPECT_CALL(*player, CloseSound(0));
    window->close();
    EXPECT_EQ(enginesAlive, 1);
    window.reset();
    EXPECT_EQ(enginesAlive, 0);
}

}  // namespace
