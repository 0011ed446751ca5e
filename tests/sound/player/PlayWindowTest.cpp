#include "sound/player/PlayWindow.h"

#include <gtest/gtest.h>

using namespace sound;

namespace {

TEST(PlayWindowTest, TheWholeOfASoundPlaysOnce)
{
    const PlayWindow window = wholeOf({1000});
    EXPECT_EQ(window.begin, FramePosition{0});
    EXPECT_EQ(window.end, FramePosition{1000});
    EXPECT_FALSE(window.repeats);
    EXPECT_EQ(window.length(), FrameCount{1000});
}

struct Fold
{
    const char* name;
    std::int64_t running;
    std::int64_t place;
};

class PlayWindowFoldTest : public ::testing::TestWithParam<Fold>
{
};

TEST_P(PlayWindowFoldTest, ARunningPositionIsAPlaceInTheWindow)
{
    const PlayWindow window{{100}, {110}, true};
    EXPECT_EQ(foldedIn(window, FramePosition{GetParam().running}), FramePosition{GetParam().place});
    EXPECT_DOUBLE_EQ(foldedIn(window, static_cast<double>(GetParam().running)),
                     static_cast<double>(GetParam().place));
}

INSTANTIATE_TEST_SUITE_P(Folds, PlayWindowFoldTest,
                         ::testing::Values(Fold{"FarBeforeTheBegin", -50, -50}, Fold{"BeforeTheBegin", 99, 99},
                                           Fold{"TheBegin", 100, 100}, Fold{"TheLastFrame", 109, 109},
                                           Fold{"TheEndIsTheBegin", 110, 100}, Fold{"TheSecondPass", 115, 105},
                                           Fold{"TheMillionthPass", 10'000'107, 107}),
                         [](const auto& row) { return row.param.name; });

TEST(PlayWindowTest, PositionsBetweenFramesFoldToo)
{
    const PlayWindow window{{100}, {110}, true};
    EXPECT_DOUBLE_EQ(foldedIn(window, 109.75), 109.75);
    EXPECT_DOUBLE_EQ(foldedIn(window, 110.25), 100.25);
    EXPECT_DOUBLE_EQ(foldedIn(window, 135.5), 105.5);
}

TEST(PlayWindowTest, AWindowThatPlaysOnceFoldsNothing)
{
    const PlayWindow window{{100}, {110}, false};
    EXPECT_EQ(foldedIn(window, FramePosition{500}), FramePosition{500});
    EXPECT_DOUBLE_EQ(foldedIn(window, 500.5), 500.5);
}

}  // namespace
