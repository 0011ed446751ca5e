#include "sound/player/Timeline.h"

#include <gtest/gtest.h>
#include <memory>

using namespace sound;

namespace {

TimelineEntry entryAt(double position, Peaks peaks = {})
{
    TimelineEntry entry;
    entry.position = position;
    entry.slope = 1;
    entry.peaks = peaks;
    return entry;
}

TEST(TimelineTest, StretchesLieOneBehindTheOther)
{
    Timeline timeline;
    EXPECT_EQ(timeline.end(), 0);
    timeline.append(entryAt(1000), {441});
    timeline.append(entryAt(2000), {100});
    EXPECT_EQ(timeline.end(), 541);
    EXPECT_EQ(timeline.at(440).begin, 0);
    EXPECT_EQ(timeline.at(440).end, 441);
    EXPECT_EQ(timeline.at(441).begin, 441);
    EXPECT_EQ(timeline.at(441).end, 541);
    EXPECT_EQ(timeline.at(441).position, 2000);
}

TEST(TimelineTest, WhatIsNotWrittenYetIsTheLastStretch)
{
    Timeline timeline;
    timeline.append(entryAt(1), {10});
    timeline.append(entryAt(2), {10});
    EXPECT_EQ(timeline.at(20).position, 2);
    EXPECT_EQ(timeline.at(1'000'000).position, 2);
}

TEST(TimelineTest, BeforeTheBeginningIsTheFirstStretch)
{
    Timeline timeline;
    timeline.append(entryAt(1), {10});
    timeline.append(entryAt(2), {10});
    EXPECT_EQ(timeline.at(-5).position, 1);
}

TEST(TimelineTest, AnEmptyTimelineHasAnEmptyStretch)
{
    const Timeline timeline;
    EXPECT_EQ(timeline.at(0).position, 0);
    EXPECT_EQ(timeline.peaksBetween(0, 100).left, 0);
}

TEST(TimelineTest, AnEmptyStretchHoldsFromItsPlaceOnUntilTheNext)
{
    Timeline timeline;
    timeline.append(entryAt(1), {10});
    timeline.append(entryAt(2), {0});
    EXPECT_EQ(timeline.at(9).position, 1);
    EXPECT_EQ(timeline.at(10).position, 2);
    timeline.append(entryAt(3), {10});
    EXPECT_EQ(timeline.at(10).position, 3);
}

TEST(TimelineTest, TenSecondsOfStretchesAreRemembered)
{
    const auto timeline = std::make_unique<Timeline>();
    for (int index = 0; index < 5000; ++index)
        timeline->append(entryAt(index), {10});
    for (int index = 4000; index < 5000; ++index) {
        ASSERT_EQ(timeline->at(10 * index).position, index);
        ASSERT_EQ(timeline->at(10 * index + 9).position, index);
    }
    // A forgotten place is the nearest one that is not.
    EXPECT_GE(timeline->at(0).position, 3900);
    EXPECT_LE(timeline->at(0).position, 4000);
}

TEST(TimelineTest, PeaksAreTakenOfTheStretchesThatBeginInBetween)
{
    Timeline timeline;
    timeline.append(entryAt(0, {0.9F, 0.1F}), {10});
    timeline.append(entryAt(0, {0.2F, 0.3F}), {10});
    timeline.append(entryAt(0, {0.4F, 0.1F}), {10});
    timeline.append(entryAt(0, {0.1F, 0.8F}), {10});
    const Peaks peaks = timeline.peaksBetween(10, 30);
    EXPECT_EQ(peaks.left, 0.4F);
    EXPECT_EQ(peaks.right, 0.3F);
    EXPECT_EQ(timeline.peaksBetween(0, 10).left, 0.9F);
    EXPECT_EQ(timeline.peaksBetween(40, 100).left, 0);
    EXPECT_EQ(timeline.peaksBetween(11, 20).left, 0);
}

}  // namespace
