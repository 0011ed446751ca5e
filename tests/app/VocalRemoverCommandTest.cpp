#include "app/MainWindowTest.h"
#include "engines/MockEditorEffects.h"
#include "engines/MockEncodeFormats.h"
#include "engines/MockVocalRemoverEngine.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QTimer>

using ::testing::ByMove;
using ::testing::NiceMock;
using ::testing::Return;
using ::testing::ReturnRef;

namespace {

/// The commands that open the vocal remover: one beside the main window, one that blocks it.
class VocalRemoverCommand : public MainWindow
{
protected:
    void SetUp() override { start(); }

    /// Engines that let anything be done with them.
    void expectEngines()
    {
        auto player = std::make_unique<NiceMock<MockPlayerEngine>>();
        auto editor = std::make_unique<NiceMock<MockEditorEngine>>();
        auto remover = std::make_unique<NiceMock<MockVocalRemoverEngine>>();
        ON_CALL(*editor, EncodeFormats).WillByDefault(ReturnRef(formats));
        itsPlayer = player.get();
        itsRemover = remover.get();
        EXPECT_CALL(*player, InitPlayers(2, ::testing::_, 0, 0, 0, 0));
        expectSet(std::move(player), std::move(editor), std::move(remover),
                  std::make_unique<NiceMock<MockVocalRemoverExtendedEngine>>());
    }

    void expectSet(std::unique_ptr<PlayerEngine> player, std::unique_ptr<EditorEngine> editor,
                   std::unique_ptr<VocalRemoverEngine> remover,
                   std::unique_ptr<VocalRemoverExtendedEngine> extended)
    {
        EXPECT_CALL(engines, createPlayer).WillOnce(Return(ByMove(std::move(player)))).RetiresOnSaturation();
        EXPECT_CALL(engines, createEditor).WillOnce(Return(ByMove(std::move(editor)))).RetiresOnSaturation();
        EXPECT_CALL(engines, createVocalRemover).WillOnce(Return(ByMove(std::move(remover)))).RetiresOnSaturation();
        EXPECT_CALL(engines, createVocalRemoverExtended)
            .WillOnce(Return(ByMove(std::move(extended))))
            .RetiresOnSaturation();
    }

    static QWidgetList openOnes() { return openWindows("frmVocalRemover"); }

    static QWidget* openOne() { return openOnes().value(0); }

    void showBeside()
    {
        expectEngines();
        trigger("mnuVocalRemover");
        ASSERT_EQ(openOnes().size(), 1);
    }

    void closeAndDelete() const
    {
        openOne()->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(window->findChild<QWidget*>("frmVocalRemover"), nullptr);
    }

    /// Presses the button of the toolbar, looks at the window that blocks, and returns when that is closed.
    template <typename Look>
    void blocked(Look look)
    {
        bool seen = false;
        QTimer poll;  // the load turns the event loop as well
        QObject::connect(&poll, &QTimer::timeout, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            if (!modal)
                return;
            poll.stop();
            EXPECT_EQ(modal, openOne());
            seen = true;
            look(*modal);
        });
        poll.start(0);
        click(*window, "tlbCmdVocalRemover");
        EXPECT_TRUE(seen);
        EXPECT_EQ(openOne(), nullptr);
        EXPECT_EQ(window->findChild<QWidget*>("frmVocalRemover"), nullptr);
    }

    /// Starts a run in the middle of whose removal @p meanwhile is done.
    template <typename Meanwhile>
    void runWith(QWidget& remover, Meanwhile meanwhile)
    {
        write("song.wav", "");
        control<QLineEdit>(remover, "txtInputAudio").setText(folder.filePath("song.wav"));
        control<QWidget>(remover, "cmdProcess").setEnabled(true);
        EXPECT_CALL(*itsPlayer, ExportSoundRange).WillOnce([this] {
            QTimer::singleShot(0, itsPlayer, [this] { emit itsPlayer->ConversionDone(0, 1); });
            return 0;
        });
        EXPECT_CALL(*itsRemover, GiveUp).WillOnce([this] { givenUp = true; });
        EXPECT_CALL(*itsRemover, RemoveVocals).WillOnce([this, meanwhile] {
            QTimer::singleShot(0, window.get(), meanwhile);
            for (int i = 0; i < 1000 && !givenUp; ++i)
                emit itsRemover->ProcessPercent(1);
            EXPECT_TRUE(givenUp);
            return VocalRemoval::GivenUp;
        });
        click(remover, "cmdProcess");
    }

    NiceMock<MockEncodeFormats> formats;
    NiceMock<MockPlayerEngine>* itsPlayer = nullptr;
    NiceMock<MockVocalRemoverEngine>* itsRemover = nullptr;
    bool givenUp = false;
};

TEST_F(VocalRemoverCommand, OpensBesideTheMainWindowFromTheMenu)
{
    showBeside();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    closeAndDelete();
}

TEST_F(VocalRemoverCommand, OpensBesideTheMainWindowByItsKey)
{
    expectEngines();
    QApplication::setActiveWindow(window.get());
    QTest::keyClick(window.get(), Qt::Key_V, Qt::ControlModifier);
    ASSERT_NE(openOne(), nullptr);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(VocalRemoverCommand, BlocksTheMainWindowFromTheToolbar)
{
    expectEngines();
    blocked([](QWidget& remover) { remover.close(); });
}

TEST_F(VocalRemoverCommand, BringsTheOneToTheFrontThatStandsOpen)
{
    showBeside();
    QWidget* first = openOne();
    first->showMinimized();
    trigger("mnuVocalRemover");
    EXPECT_EQ(openOnes(), QWidgetList{first});
    EXPECT_FALSE(first->isMinimized());
    first->showMinimized();
    click(*window, "tlbCmdVocalRemover");  // does not block then
    EXPECT_EQ(openOnes(), QWidgetList{first});
    EXPECT_FALSE(first->isMinimized());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(VocalRemoverCommand, OpensNoOtherOneWhileOneBlocks)
{
    expectEngines();
    blocked([this](QWidget& remover) {
        trigger("mnuVocalRemover");
        EXPECT_EQ(openOnes(), QWidgetList{&remover});
        remover.close();
    });
}

TEST_F(VocalRemoverCommand, OpensOneWhereItIsGivenAgainWhileTheFirstLoads)
{
    expectEngines();
    expectEngines();
    QTimer::singleShot(0, window.get(), [this] { trigger("mnuVocalRemover"); });
    trigger("mnuVocalRemover");
    EXPECT_EQ(openOnes().size(), 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(openOnes().size(), 1);
}

TEST_F(VocalRemoverCommand, OpensNoneWhereTheMainWindowIsClosedWhileItLoads)
{
    expectEngines();
    QTimer::singleShot(0, window.get(), [this] { window->close(); });
    trigger("mnuVocalRemover");
    EXPECT_EQ(openOne(), nullptr);
}

TEST_F(VocalRemoverCommand, StartsAfreshAfterItWasClosed)
{
    showBeside();
    control<Slider>(*openOne(), "sldGain").setValue(7);
    control<QLineEdit>(*openOne(), "txtInputAudio").setText("/music/song.mp3");
    closeAndDelete();
    showBeside();
    EXPECT_EQ(valueOf(*openOne(), "sldGain"), 100);
    EXPECT_EQ(control<QLineEdit>(*openOne(), "txtInputAudio").text(), "choose input file");
}

TEST_F(VocalRemoverCommand, DoesNothingInABuildWithoutVocalRemovers)
{
    for (const char* command : {"mnuVocalRemover", "tlbCmdVocalRemover"}) {
        expectSet(std::make_unique<NiceMock<MockPlayerEngine>>(), std::make_unique<NiceMock<MockEditorEngine>>(),
                  nullptr, nullptr);
        if (command[0] == 'm')
            trigger(command);
        else
            click(*window, command);
        EXPECT_EQ(openOne(), nullptr);
    }
}

TEST_F(VocalRemoverCommand, DoesNothingInABuildWithoutAnEditor)
{
    expectSet(std::make_unique<NiceMock<MockPlayerEngine>>(), nullptr,
              std::make_unique<NiceMock<MockVocalRemoverEngine>>(),
              std::make_unique<NiceMock<MockVocalRemoverExtendedEngine>>());
    trigger("mnuVocalRemover");
    EXPECT_EQ(openOne(), nullptr);
}

TEST_F(VocalRemoverCommand, ClosesTheWindowWithTheMainWindow)
{
    showBeside();
    window->close();
    EXPECT_EQ(openOne(), nullptr);
}

TEST_F(VocalRemoverCommand, ClosesTheWindowThatBlocksWithTheMainWindow)
{
    expectEngines();
    blocked([this](QWidget&) { window->close(); });
}

TEST_F(VocalRemoverCommand, GivesARunUpWhereTheMainWindowIsClosedInItsMiddle)
{
    showBeside();
    QPointer<QWidget> remover = openOne();
    runWith(*openOne(), [this] { window->close(); });
    EXPECT_FALSE(remover.isNull());
    EXPECT_EQ(openOne(), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(remover.isNull());
}

TEST_F(VocalRemoverCommand, GivesARunUpWhereTheMainWindowIsClosedInItsMiddleWhileItIsBlocked)
{
    expectEngines();
    blocked([this](QWidget& remover) { runWith(remover, [this] { window->close(); }); });
    EXPECT_FALSE(window->isVisible());
}

TEST_F(VocalRemoverCommand, OpensAnotherWindowInTheMiddleOfARunThatIsGivenUp)
{
    showBeside();
    QPointer<QWidget> first = openOne();
    runWith(*openOne(), [this, first] {
        first->close();
        showBeside();
    });
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(first.isNull());
    EXPECT_NE(openOne(), nullptr);
}

TEST_F(VocalRemoverCommand, LeadsToTheManualsPageOfIt)
{
    showBeside();
    QDir(folder.path()).mkpath("help/manual");
    write("help/manual/index.html", "");
    write("help/manual/vocals.html", "");
    EXPECT_CALL(shell, ShellExecute(folder.filePath("help/manual/vocals.html"))).WillOnce(Return(true));
    click(*openOne(), "cmdHelp");
}

}  // namespace
