#include "encoding/AudioCDBurnTest.h"

using ::testing::InSequence;

namespace {

struct MoveRow
{
    const char* name;
    const char* command;
    int selected;
    int position;
};

/// Moves in a list of four tracks.
class AMove : public AudioCDBurn, public ::testing::WithParamInterface<MoveRow>
{
protected:
    void SetUp() override
    {
        load();
        list({{"/music/1.wav"}, {"/music/2.wav"}, {"/music/3.wav"}, {"/music/4.wav"}});
    }

    static QString selectedFile() { return QStringLiteral("/music/%1.wav").arg(GetParam().selected); }
};

class AMoveThatRuns : public AMove
{
};

TEST_P(AMoveThatRuns, TakesTheTrackOutAndPutsItInAgain)
{
    select(GetParam().selected);
    const InSequence order;
    EXPECT_CALL(project, RemoveTrack(GetParam().selected));
    expectAddedTrack(selectedFile(), GetParam().position);
    expectRefreshedList({{"rebuilt"}, {"rows"}});
    click(GetParam().command);
    EXPECT_EQ(rows(), QStringList({"01|rebuilt|WAV|00:00:00", "02|rows|WAV|00:00:00"}));
    EXPECT_EQ(tracks().selectedRow(), 0);
}

TEST_P(AMoveThatRuns, LooksAtWhetherTheTrackWentInAgainOnlyWhereItGoesDownAStep)
{
    select(GetParam().selected);
    const bool looks = GetParam().command == std::string("cmdMoveDown");
    const InSequence order;
    EXPECT_CALL(project, RemoveTrack(GetParam().selected));
    expectAddedTrack(selectedFile(), GetParam().position, false);
    if (!looks)
        expectRefreshedList({{"rebuilt"}});
    click(GetParam().command);
    EXPECT_EQ(rows().size(), looks ? 4 : 1);
    EXPECT_EQ(tracks().selectedRow(), looks ? GetParam().selected : 0);
}

INSTANTIATE_TEST_SUITE_P(Commands, AMoveThatRuns,
                         ::testing::Values(MoveRow{"UpFromTheEnd", "cmdMoveUp", 4, 3},
                                           MoveRow{"UpToTheTop", "cmdMoveUp", 2, 1},
                                           MoveRow{"DownFromTheTop", "cmdMoveDown", 1, 2},
                                           MoveRow{"DownToTheEnd", "cmdMoveDown", 3, 4},
                                           MoveRow{"FirstFromTheEnd", "cmdMoveFirst", 4, 1},
                                           MoveRow{"FirstFromTheSecond", "cmdMoveFirst", 2, 1},
                                           MoveRow{"LastFromTheTop", "cmdMoveLast", 1, 5},
                                           MoveRow{"LastFromTheThird", "cmdMoveLast", 3, 5}),
                         [](const auto& info) { return std::string(info.param.name); });

class AMoveAtTheEdge : public AMove
{
};

TEST_P(AMoveAtTheEdge, DoesNothingAndSaysNothing)
{
    select(GetParam().selected);
    click(GetParam().command);
    EXPECT_EQ(rows().size(), 4);
    EXPECT_EQ(tracks().selectedRow(), GetParam().selected);
}

INSTANTIATE_TEST_SUITE_P(Commands, AMoveAtTheEdge,
                         ::testing::Values(MoveRow{"UpFromTheTop", "cmdMoveUp", 1, 0},
                                           MoveRow{"DownFromTheEnd", "cmdMoveDown", 4, 0},
                                           MoveRow{"FirstFromTheTop", "cmdMoveFirst", 1, 0},
                                           MoveRow{"LastFromTheEnd", "cmdMoveLast", 4, 0}),
                         [](const auto& info) { return std::string(info.param.name); });

class AMoveOfNoTrack : public AMove
{
};

TEST_P(AMoveOfNoTrack, SaysThatNoneIsSelected)
{
    expectBox("No item is selected.");
    click(GetParam().command);
    EXPECT_EQ(rows().size(), 4);
}

INSTANTIATE_TEST_SUITE_P(Commands, AMoveOfNoTrack,
                         ::testing::Values(MoveRow{"Up", "cmdMoveUp", 0, 0}, MoveRow{"Down", "cmdMoveDown", 0, 0},
                                           MoveRow{"First", "cmdMoveFirst", 0, 0},
                                           MoveRow{"Last", "cmdMoveLast", 0, 0}),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
