#include "sound/player/LatestValue.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <array>
#include <thread>

using namespace sound;

namespace {

/// Torn if its fields differ.
struct Row
{
    std::array<long, 32> fields{};
};

Row rowOf(long number)
{
    Row row;
    row.fields.fill(number);
    return row;
}

TEST(LatestValueTest, BeforeAnythingIsPublishedTheValueIsItsDefault)
{
    LatestValue<int> value;
    EXPECT_EQ(value.latest(), 0);
}

TEST(LatestValueTest, TheNewestIsFetchedAndTheOthersAreLost)
{
    LatestValue<int> value;
    for (const int number : {1, 2, 3})
        value.publish(number);
    EXPECT_EQ(value.latest(), 3);
}

TEST(LatestValueTest, WhatWasFetchedStaysUntilANewerOneComes)
{
    LatestValue<int> value;
    value.publish(7);
    for (int time = 0; time < 5; ++time)
        EXPECT_EQ(value.latest(), 7);
    value.publish(8);
    EXPECT_EQ(value.latest(), 8);
    EXPECT_EQ(value.latest(), 8);
}

TEST(LatestValueTest, AFetchedValueIsNotTouchedByTheWriter)
{
    LatestValue<int> value;
    value.publish(1);
    const int& fetched = value.latest();
    for (int number = 2; number < 10; ++number)
        value.publish(number);
    EXPECT_EQ(fetched, 1);
    EXPECT_EQ(value.latest(), 9);
}

TEST(LatestValueTest, BetweenThreadsValuesArriveWholeInOrderAndTheLastOneAlways)
{
    constexpr long last = 200'000;
    LatestValue<Row> value;
    std::thread writer([&value] {
        for (long number = 1; number <= last; ++number)
            value.publish(rowOf(number));
    });
    long newest = 0;
    bool whole = true;
    bool rising = true;
    while (newest < last && whole && rising) {
        const Row& row = value.latest();
        whole =
            std::all_of(row.fields.begin(), row.fields.end(), [&](long field) { return field == row.fields[0]; });
        rising = row.fields[0] >= newest;
        newest = row.fields[0];
    }
    writer.join();
    EXPECT_TRUE(whole);
    EXPECT_TRUE(rising);
    EXPECT_EQ(value.latest().fields[0], last);
}

}  // namespace
