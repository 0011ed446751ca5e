#include "app/MainWindowTest.h"
#include "engines/MockMp3EncoderEngine.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

using ::testing::ByMove;
using ::testing::Return;
using ::testing::StrictMock;

namespace {

/// Tells when it goes.
class OpenedEncoder : public StrictMock<MockMp3EncoderEngine>
{
public:
    explicit OpenedEncoder(int& alive)
        : alive(alive)
    {
        ++alive;
    }
    ~OpenedEncoder() override { --alive; }
    Q_DISABLE_COPY_MOVE(OpenedEncoder)

private:
    int& alive;
};

/// The command that opens the MP3 encoder.
class Mp3EncoderCommand : public MainWindow
{
protected:
    void SetUp() override { start(); }

    void expectEncoder()
    {
        auto owned = std::make_unique<OpenedEncoder>(encodersAlive);
        encoder = owned.get();
        EXPECT_CALL(engines, createMp3Encoder).WillOnce(Return(ByMove(std::move(owned)))).RetiresOnSaturation();
    }

    /// Gives the command, looks at the window that blocks, and returns when that is closed.
    template <typename Give, typename Look>
    void blocked(Give give, Look look)
    {
        bool seen = false;
        QTimer::singleShot(0, window.get(), [&] {
            QWidget* modal = QApplication::activeModalWidget();
            ASSERT_NE(modal, nullptr);
            EXPECT_EQ(modal->objectName(), "frmMP3Options");
            EXPECT_EQ(encodersAlive, 1);
            seen = true;
            look(*modal);
        });
        give();
        EXPECT_TRUE(seen);
        EXPECT_EQ(window->findChild<QWidget*>("frmMP3Options"), nullptr);
        EXPECT_EQ(encodersAlive, 0);
    }

    StrictMock<MockMp3EncoderEngine>* encoder = nullptr;
    int encodersAlive = 0;
};

TEST_F(Mp3EncoderCommand, BlocksTheMainWindowFromTheToolbar)
{
    expectEncoder();
    blocked([this] { click(*window, "tlbCmdMP3"); }, [](QWidget& modal) { modal.close(); });
}

TEST_F(Mp3EncoderCommand, BlocksTheMainWindowFromTheMenu)
{
    expectEncoder();
    blocked([this] { trigger("mnuMP3"); }, [](QWidget& modal) { modal.close(); });
}

TEST_F(Mp3EncoderCommand, BlocksTheMainWindowByItsKey)
{
    expectEncoder();
    QApplication::setActiveWindow(window.get());
    blocked([this] { QTest::keyClick(window.get(), Qt::Key_E, Qt::ControlModifier); },
            [](QWidget& modal) { modal.close(); });
}

TEST_F(Mp3EncoderCommand, AsksInTheProgramsFileDialog)
{
    expectEncoder();
    FileDialogAnswer chosen;
    chosen.fileName = "/music/take.wav";
    EXPECT_CALL(dialog, ShowOpen).WillOnce(Return(chosen));
    EXPECT_CALL(*encoder, InputFile(QString("/music/take.wav")));
    EXPECT_CALL(*encoder, OutputFile(QString("/music/take.mp3")));
    EXPECT_CALL(*encoder, Encode).WillOnce(Return(true));
    blocked([this] { trigger("mnuMP3"); },
            [](QWidget& modal) {
                click(modal, "cmdBrowse");
                click(modal, "cmdEncode");
                modal.close();  // the encoding goes with the encoder
            });
}

TEST_F(Mp3EncoderCommand, StartsAfreshAfterItWasClosed)
{
    expectEncoder();
    blocked([this] { trigger("mnuMP3"); },
            [](QWidget& modal) {
                click(modal, "cmdOptions");
                control<QLineEdit>(modal, "Text3").setText("/music/take.wav");
                modal.close();
            });
    expectEncoder();
    blocked([this] { trigger("mnuMP3"); },
            [](QWidget& modal) {
                EXPECT_EQ(control<QLineEdit>(modal, "Text3").text(), "choose input file");
                EXPECT_FALSE(control<QWidget>(modal, "FrameMode").isVisible());
                modal.close();
            });
}

TEST_F(Mp3EncoderCommand, ClosesTheWindowWithTheMainWindow)
{
    expectEncoder();
    blocked([this] { trigger("mnuMP3"); },
            [this](QWidget& modal) {
                window->close();
                EXPECT_FALSE(modal.isVisible());
            });
    EXPECT_FALSE(window->isVisible());
}

TEST_F(Mp3EncoderCommand, DoesNothingInABuildWithoutAnEncoder)
{
    EXPECT_CALL(engines, createMp3Encoder).WillOnce([] { return nullptr; });
    trigger("mnuMP3");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

}  // namespace
