#include "vocalremover/VocalRemoverTest.h"

#include <QApplication>
#include <QEventLoop>

using ::testing::InSequence;
using ::testing::Return;

namespace {

/// Where a routine is when its window is closed.
enum class Place
{
    SourceExport,
    Removal,
    RemovalAtOnce,
    ResultLoading,
    Gain,
    ResultExport,
    SuccessBox,
    FailureBox,
};

enum class Opening
{
    Beside,    ///< Shown, and deleted on closing.
    Blocking,  ///< Executed, and deleted behind that.
};

struct ClosingRow
{
    const char* name;
    Place place;
};

/// The window opened as the program does, and closed by the user in the middle of a routine.
class ClosedVocalRemover : public VocalRemoverWindow
{
protected:
    void SetUp() override { chooseSource(); }

    /// Clicks a button from the event loop and returns when the window has gone. Tells what ended, one after the
    /// other.
    QString endsAfterClick(
        const char* button, Opening opening, const Event& before = [] {})
    {
        QStringList ends;
        QTimer::singleShot(0, window, [this, button, before, &ends] {
            before();
            click(button);
            EXPECT_FALSE(alive.isNull());
            EXPECT_FALSE(window->isVisible());
            ends << "routine";
        });
        QObject::connect(window, &QObject::destroyed, [&ends] { ends << "window"; });
        if (opening == Opening::Beside) {
            QEventLoop loop;
            QObject::connect(window, &QObject::destroyed, &loop, &QEventLoop::quit);
            window->setAttribute(Qt::WA_DeleteOnClose);
            window->show();
            loop.exec();
        } else {
            window->exec();
            ends << "blocking";
            EXPECT_FALSE(alive.isNull());
            delete alive.data();
        }
        return ends.join(' ');
    }

    static QString wantedEnds(Opening opening)
    {
        return opening == Opening::Beside ? "routine window" : "routine blocking window";
    }

    const Event close = [this] { window->close(); };

    /// A job that is never reported done: it ends with the engine.
    int closesMeanwhile()
    {
        QTimer::singleShot(0, window, close);
        return 0;
    }

    /// A removal that ends as soon as it is given up.
    void expectGivenUpRemoval(VocalRemoverEngine& engine, bool atOnce)
    {
        EXPECT_CALL(*remover, GiveUp).WillOnce([this] { givenUp = true; });
        EXPECT_CALL(*extended, GiveUp).WillOnce([this] { givenUp = true; });
        if (atOnce)
            QObject::connect(&engine, &VocalRemoverEngine::ProcessPercent, window, close);
        else
            QTimer::singleShot(0, window, close);
        for (int i = 0; i < 1000 && !givenUp; ++i)
            emit engine.ProcessPercent(1);
        EXPECT_TRUE(givenUp);
    }

    void expectPreviewClosedAt(Place place)
    {
        expectLoadedSource();
        if (place == Place::SourceExport) {
            EXPECT_CALL(*player, ExportSoundRange).WillOnce([this] { return closesMeanwhile(); });
            return expectGivenUp();
        }
        expectExport(0, 15000);
        expectSetUp(*extended);
        EXPECT_CALL(*extended, RemoveVocals).WillOnce([this, place] {
            if (place == Place::FailureBox)
                return VocalRemoval::Done;
            expectGivenUpRemoval(*extended, place == Place::RemovalAtOnce);
            return VocalRemoval::GivenUp;
        });
        if (place == Place::FailureBox) {
            EXPECT_CALL(*player, LoadSoundForExport(1, home.out())).WillOnce(Return(-6));
            EXPECT_CALL(*player, LastError).WillOnce(Return(-6));
            EXPECT_CALL(msgBox, show).WillOnce(close);
            expectGivenUp();
        }
    }

    void expectRunClosedAt(Place place)
    {
        expectLoadedSource();
        EXPECT_CALL(*player, GetDuration(0)).WillOnce(Return(200000));
        if (place == Place::SourceExport) {
            EXPECT_CALL(*player, ExportSoundRange).WillOnce([this] { return closesMeanwhile(); });
            return expectGivenUp();
        }
        expectExport(0, 200000);
        EXPECT_CALL(*player, CloseSound(0));
        if (place == Place::Removal || place == Place::RemovalAtOnce) {
            expectSetUp(*remover);
            EXPECT_CALL(*remover, RemoveVocals).WillOnce([this, place] {
                expectGivenUpRemoval(*remover, place == Place::RemovalAtOnce);
                return VocalRemoval::GivenUp;
            });
            return;
        }
        expectRemoval();
        expectForgottenFiles();
        expectEditorClosedAt(place);
        expectGivenUp();
    }

    void expectEditorClosedAt(Place place)
    {
        if (place == Place::ResultLoading) {
            EXPECT_CALL(*editor, LoadSound).WillOnce([this] { return closesMeanwhile(); });
            return;
        }
        expectLoadedResult();
        if (place == Place::Gain) {
            EXPECT_CALL(effects, ApplyGain).WillOnce([this] { return closesMeanwhile(); });
            return;
        }
        expectGain(20.F);
        if (place == Place::ResultExport) {
            EXPECT_CALL(*editor, ExportToFile).WillOnce([this] { return closesMeanwhile(); });
            return;
        }
        if (place == Place::FailureBox) {
            EXPECT_CALL(*editor, ExportToFile).WillOnce(Return(-8));
            EXPECT_CALL(*editor, LastError).WillOnce(Return(-8));
            EXPECT_CALL(msgBox, show).WillOnce(close);
            return;
        }
        expectExportedResult(outputOfSource());
        EXPECT_CALL(*editor, CloseSound);
        EXPECT_CALL(msgBox, show).WillOnce(close);
    }

    bool givenUp = false;
};

class ClosedInARun : public ClosedVocalRemover,
                     public ::testing::WithParamInterface<std::tuple<Opening, ClosingRow>>
{
};

TEST_P(ClosedInARun, LetsTheRunReturnAndGoesBehindIt)
{
    const auto [opening, row] = GetParam();
    put("sldGain", 20);
    {
        const InSequence order;
        expectRunClosedAt(row.place);
    }
    EXPECT_EQ(endsAfterClick("cmdProcess", opening), wantedEnds(opening));
}

class ClosedInAPreview : public ClosedVocalRemover,
                         public ::testing::WithParamInterface<std::tuple<Opening, ClosingRow>>
{
};

TEST_P(ClosedInAPreview, LetsThePreviewReturnAndGoesBehindIt)
{
    const auto [opening, row] = GetParam();
    {
        const InSequence order;
        expectPreviewClosedAt(row.place);
    }
    EXPECT_EQ(endsAfterClick("cmdConvertPlayPreview", opening), wantedEnds(opening));
}

const auto openings = ::testing::Values(Opening::Beside, Opening::Blocking);

std::string nameOfClosing(const ::testing::TestParamInfo<std::tuple<Opening, ClosingRow>>& info)
{
    return std::string(std::get<1>(info.param).name) +
           (std::get<0>(info.param) == Opening::Beside ? "Beside" : "Blocking");
}

INSTANTIATE_TEST_SUITE_P(Places, ClosedInARun,
                         ::testing::Combine(openings,
                                            ::testing::Values(ClosingRow{"SourceExport", Place::SourceExport},
                                                              ClosingRow{"Removal", Place::Removal},
                                                              ClosingRow{"RemovalAtOnce", Place::RemovalAtOnce},
                                                              ClosingRow{"ResultLoading", Place::ResultLoading},
                                                              ClosingRow{"Gain", Place::Gain},
                                                              ClosingRow{"ResultExport", Place::ResultExport},
                                                              ClosingRow{"SuccessBox", Place::SuccessBox},
                                                              ClosingRow{"FailureBox", Place::FailureBox})),
                         nameOfClosing);

INSTANTIATE_TEST_SUITE_P(Places, ClosedInAPreview,
                         ::testing::Combine(openings,
                                            ::testing::Values(ClosingRow{"SourceExport", Place::SourceExport},
                                                              ClosingRow{"Removal", Place::Removal},
                                                              ClosingRow{"RemovalAtOnce", Place::RemovalAtOnce},
                                                              ClosingRow{"FailureBox", Place::FailureBox})),
                         nameOfClosing);

class ClosedInEitherOpening : public ClosedVocalRemover, public ::testing::WithParamInterface<Opening>
{
};

TEST_P(ClosedInEitherOpening, EndsTheWaitsOfRoutinesInOneAnother)
{
    mostAtWork = 2;
    {
        const InSequence order;
        expectLoadedSource();
        EXPECT_CALL(*player, GetDuration(0)).WillOnce(Return(200000));
        EXPECT_CALL(*player, ExportSoundRange).WillOnce([this] {
            QTimer::singleShot(0, window, [this] { click("cmdConvertPlayPreview"); });
            return 0;
        });
        expectPreviewClosedAt(Place::SourceExport);
    }
    EXPECT_EQ(endsAfterClick("cmdProcess", GetParam()), wantedEnds(GetParam()));
}

TEST_P(ClosedInEitherOpening, GivesUpRemovalsInOneAnother)
{
    mostAtWork = 2;
    {
        const InSequence order;
        expectWholeExport();
        expectSetUp(*remover);
        EXPECT_CALL(*remover, RemoveVocals).WillOnce([this] {
            QTimer::singleShot(0, window, [this] { click("cmdConvertPlayPreview"); });
            for (int i = 0; i < 1000 && !givenUp; ++i)
                emit remover->ProcessPercent(1);
            return VocalRemoval::GivenUp;
        });
        expectPreviewClosedAt(Place::Removal);
    }
    EXPECT_EQ(endsAfterClick("cmdProcess", GetParam()), wantedEnds(GetParam()));
}

TEST_P(ClosedInEitherOpening, EndsAPreviewThatWaitsForASuccessThatAnotherOneTook)
{
    {
        const InSequence order;
        expectLoadedSource();
        EXPECT_CALL(*player, ExportSoundRange).WillOnce([this] {
            QTimer::singleShot(0, window, [this] {
                click("cmdConvertPlayPreview");
                QTimer::singleShot(0, window, close);
            });
            return 0;
        });
        expectPreview();
        expectGivenUp();
    }
    EXPECT_EQ(endsAfterClick("cmdConvertPlayPreview", GetParam()), wantedEnds(GetParam()));
}

TEST_P(ClosedInEitherOpening, TakesNoFileFromADialogThatIsAnsweredAfterwards)
{
    {
        const InSequence order;
        EXPECT_CALL(dialog, ShowOpen).WillOnce([this] {
            close();
            return answering("/music/other.mp3");
        });
    }
    expectGivenUp();
    EXPECT_EQ(endsAfterClick("cmdInput", GetParam()), wantedEnds(GetParam()));
}

TEST_P(ClosedInEitherOpening, TakesNoOutputFromADialogThatIsAnsweredAfterwards)
{
    {
        const InSequence order;
        EXPECT_CALL(dialog, ShowSave).WillOnce([this] {
            close();
            return answering("/music/other.mp3");
        });
    }
    expectGivenUp();
    EXPECT_EQ(endsAfterClick("cmdOutput", GetParam()), wantedEnds(GetParam()));
}

TEST_P(ClosedInEitherOpening, OutlivesTheTurnOfItsDial)
{
    put("sldVocalPan", 50);
    expectGivenUp();
    const auto closeAndDelete = [this] {
        close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // as the event loop may in one turn
    };
    const auto closeSoon = [this, closeAndDelete] {
        QMetaObject::invokeMethod(window, closeAndDelete, Qt::QueuedConnection);
    };
    EXPECT_EQ(endsAfterClick("cmdResetPan", GetParam(), closeSoon), wantedEnds(GetParam()));
}

TEST_P(ClosedInEitherOpening, GoesAtOnceWhileNothingRuns)
{
    expectGivenUp();
    QTimer::singleShot(0, window, close);
    bool gone = false;
    QObject::connect(window, &QObject::destroyed, [&gone] { gone = true; });
    if (GetParam() == Opening::Beside) {
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->show();
        while (!gone)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    } else {
        window->exec();
        EXPECT_FALSE(gone);
        delete alive.data();
    }
    EXPECT_TRUE(gone);
}

// The wait of another command of the program lies over that of the run, which therefore cannot return yet.
TEST_P(ClosedInEitherOpening, EndsThePlayerAndTheEditorThoughItsRunCannotReturnYet)
{
    const QPointer<QObject> itsPlayer = player;
    const QPointer<QObject> itsEditor = editor;
    const auto closeUnderAnotherWait = [&] {
        QEventLoop another;
        QTimer::singleShot(0, window, [&] {
            close();
            EXPECT_TRUE(itsPlayer.isNull());
            EXPECT_TRUE(itsEditor.isNull());
            for (const char* button : {"cmdProcess", "cmdConvertPlayPreview", "cmdConvertStopPreview",
                                       "cmdPlayOriginal", "cmdInput", "cmdOutput"})
                click(button);  // does nothing any more
            QTimer::singleShot(0, &another, &QEventLoop::quit);
        });
        another.exec();
        EXPECT_FALSE(alive.isNull());
    };
    {
        const InSequence order;
        expectWholeExport();
        expectRemoval();
        expectForgottenFiles();
        expectLoadedResult();
        EXPECT_CALL(*editor, ExportToFile).WillOnce([&] {
            QTimer::singleShot(0, qApp, closeUnderAnotherWait);
            return 0;
        });
    }
    expectGivenUp();
    EXPECT_EQ(endsAfterClick("cmdProcess", GetParam()), wantedEnds(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Openings, ClosedInEitherOpening, openings, [](const auto& info) {
    return std::string(info.param == Opening::Beside ? "Beside" : "Blocking");
});

TEST_F(ClosedVocalRemover, IsQuitWithTheProgram)
{
    {
        const InSequence order;
        expectLoadedSource();
        EXPECT_CALL(*player, GetDuration(0)).WillOnce(Return(200000));
        EXPECT_CALL(*player, ExportSoundRange).WillOnce([] {
            QTimer::singleShot(0, [] { QCoreApplication::quit(); });
            return 0;
        });
    }
    expectGivenUp();
    bool returned = false;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    QTimer::singleShot(0, window, [&] {
        click("cmdProcess");
        returned = true;
    });
    QCoreApplication::exec();
    EXPECT_TRUE(returned);
}

TEST_F(ClosedVocalRemover, GivesItsRunUpWhereTheProgramsEventLoopEndsWithoutClosingIt)
{
    {
        const InSequence order;
        expectWholeExport();
        expectRemoval();
        expectForgottenFiles();
        EXPECT_CALL(*editor, LoadSound).WillOnce([] {
            QTimer::singleShot(0, [] { QCoreApplication::exit(); });
            return 0;
        });
    }
    bool returned = false;
    window->show();
    QTimer::singleShot(0, window, [&] {
        click("cmdProcess");
        returned = true;
    });
    QCoreApplication::exec();
    EXPECT_TRUE(returned);
}

}  // namespace
