#include "playback/TransportPanel.h"

#include "playback/PanelTest.h"
#include "playback/PlaybackState.h"
#include "playback/PositionPanel.h"

#include <QApplication>

using ::testing::InSequence;
using ::testing::Return;
using ::testing::StrictMock;

namespace {

class Transport : public ::testing::Test
{
protected:
    StrictMock<MockPlayerEngine> engine;
    PlaybackState state;
    QWidget window;
    PositionPanel position{engine, state, &window};
    TransportPanel panel{engine, state, position, &window};

    Transport()
    {
        put(position, "sldBeginLoop", 10);
        put(position, "sldEndLoop", 20);
        control<QLineEdit>(position, "txtBeginLoop").setText("250");
        control<QLineEdit>(position, "txtEndLoop").setText("500");
    }
};

TEST_F(Transport, PlayEndsTheLoop)
{
    state.PlayLoopActive = true;
    EXPECT_CALL(engine, PlaySound(0)).WillOnce([this] { EXPECT_TRUE(state.PlayLoopActive); });
    click(panel, "cmdPlay");
    EXPECT_FALSE(state.PlayLoopActive);
}

TEST_F(Transport, PlayGivesTheWindowTheKeys)
{
    window.show();
    QApplication::setActiveWindow(&window);
    control<QToolButton>(panel, "cmdPlay").setFocus();
    EXPECT_CALL(engine, PlaySound(0));
    click(panel, "cmdPlay");
    EXPECT_EQ(QApplication::focusWidget(), &window);
}

TEST_F(Transport, PlayLoopRepeatsTheWindowForEver)
{
    EXPECT_CALL(engine, PlaySoundRange(0, 10250, 20500, -1)).WillOnce([this] {
        EXPECT_FALSE(state.PlayLoopActive);
    });
    click(panel, "cmdPlayLoop");
    EXPECT_TRUE(state.PlayLoopActive);
}

TEST_F(Transport, PauseIsTheToggleOfPlayingAndPausedAndLeavesTheLoopAlone)
{
    state.PlayLoopActive = true;
    {
        const InSequence order;
        EXPECT_CALL(engine, GetPlayerStatus(0)).WillOnce(Return(1));
        EXPECT_CALL(engine, PauseSound(0));
        EXPECT_CALL(engine, GetPlayerStatus(0)).WillOnce(Return(2));
        EXPECT_CALL(engine, ResumeSound(0));
    }
    click(panel, "cmdPause");
    click(panel, "cmdPause");
    EXPECT_TRUE(state.PlayLoopActive);
}

class StatusWithoutPause : public Transport, public ::testing::WithParamInterface<int>
{
};

TEST_P(StatusWithoutPause, MakesPauseDoNothing)
{
    EXPECT_CALL(engine, GetPlayerStatus(0)).WillOnce(Return(GetParam()));
    click(panel, "cmdPause");
}

INSTANTIATE_TEST_SUITE_P(Statuses, StatusWithoutPause, ::testing::Values(0, 3, 4, -1));

TEST_F(Transport, StopIsOneCallOutsideALoop)
{
    put(position, "sldAudioPosition", 77);
    EXPECT_CALL(engine, StopSound(0));
    click(panel, "cmdStop");
    EXPECT_EQ(valueOf(position, "sldAudioPosition"), 77);
}

TEST_F(Transport, StopBringsALoopToTheWholeSecondOfItsBeginAndKeepsIt)
{
    state.PlayLoopActive = true;
    {
        const InSequence order;
        EXPECT_CALL(engine, StopSound(0));
        EXPECT_CALL(engine, SeekSound(0, 10000));
    }
    click(panel, "cmdStop");
    EXPECT_EQ(valueOf(position, "sldAudioPosition"), 10);
    EXPECT_TRUE(state.PlayLoopActive);
}

struct JumpRow
{
    const char* name;
    bool loop;
    int position;
    int target;  ///< -1 where the jump is refused
};

class EachRewind : public Transport, public ::testing::WithParamInterface<JumpRow>
{
};

TEST_P(EachRewind, StaysInsideTheSoundOrTheLoopWindow)
{
    state.PlayLoopActive = GetParam().loop;
    EXPECT_CALL(engine, GetPosition(0)).WillRepeatedly(Return(GetParam().position));
    if (GetParam().target >= 0)
        EXPECT_CALL(engine, SeekSound(0, GetParam().target));
    click(panel, "cmdRewind");
}

INSTANTIATE_TEST_SUITE_P(
    Positions, EachRewind,
    ::testing::Values(JumpRow{"Middle", false, 8123, 3123}, JumpRow{"ToTheVeryStart", false, 5000, 0},
                      JumpRow{"OneMsTooEarly", false, 4999, -1}, JumpRow{"FourSecondsIn", false, 4000, -1},
                      JumpRow{"AtTheStart", false, 0, -1}, JumpRow{"ToTheLoopsBegin", true, 15000, 10000},
                      JumpRow{"OneMsTooEarlyInTheLoop", true, 14999, -1},
                      JumpRow{"TwoSecondsIntoTheLoop", true, 12000, -1}),
    [](const auto& info) { return std::string(info.param.name); });

class EachForward : public Transport, public ::testing::WithParamInterface<JumpRow>
{
};

TEST_P(EachForward, StaysInsideTheSoundOrTheLoopWindow)
{
    state.PlayLoopActive = GetParam().loop;
    EXPECT_CALL(engine, GetPosition(0)).WillRepeatedly(Return(GetParam().position));
    if (!GetParam().loop)
        EXPECT_CALL(engine, GetDuration(0)).WillRepeatedly(Return(60000));
    if (GetParam().target >= 0)
        EXPECT_CALL(engine, SeekSound(0, GetParam().target));
    click(panel, "cmdFForward");
}

INSTANTIATE_TEST_SUITE_P(Positions, EachForward,
                         ::testing::Values(JumpRow{"Middle", false, 8123, 13123},
                                           JumpRow{"ToTheVeryEnd", false, 55000, 60000},
                                           JumpRow{"OneMsTooLate", false, 55001, -1},
                                           JumpRow{"FourSecondsBeforeTheEnd", false, 56000, -1},
                                           JumpRow{"ToTheLoopsEnd", true, 15000, 20000},
                                           JumpRow{"OneMsTooLateInTheLoop", true, 15001, -1}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(Transport, IsNotMovedPastTheLongestSoundThereIs)
{
    EXPECT_CALL(engine, GetPosition(0)).WillOnce(Return(2147483000));
    EXPECT_CALL(engine, GetDuration(0)).WillOnce(Return(2147483647));
    click(panel, "cmdFForward");
}

TEST_F(Transport, KeepsEveryButtonEnabledWithoutASound)
{
    for (const char* button : {"cmdPlay", "cmdPlayLoop", "cmdPause", "cmdStop", "cmdRewind", "cmdFForward"}) {
        EXPECT_TRUE(control<QToolButton>(panel, button).isEnabled()) << button;
        EXPECT_NE(control<QToolButton>(panel, button).accessibleName(), "") << button;
    }
}

}  // namespace
