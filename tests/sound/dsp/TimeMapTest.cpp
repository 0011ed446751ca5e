#include "sound/dsp/TimeMap.h"

#include <gtest/gtest.h>
#include <cmath>
#include <functional>
#include <random>

using namespace sound;

namespace {

using Line = std::function<double(double)>;

// The output place where a rising line reaches @p input, by halving an interval.
double outputAt(const Line& line, double input, double low, double high)
{
    for (int halving = 0; halving < 100; ++halving) {
        const double middle = (low + high) / 2;
        (line(middle) < input ? low : high) = middle;
    }
    return (low + high) / 2;
}

TEST(TimeMapTest, BeginsAsAStraightLine)
{
    TimeMap map;
    map.start(100, 5000, 1.6);
    EXPECT_DOUBLE_EQ(map.inputAt(100), 5000);
    EXPECT_DOUBLE_EQ(map.inputAt(110), 5016);
    EXPECT_DOUBLE_EQ(map.inputAt(100.5), 5000.8);
    EXPECT_DOUBLE_EQ(map.slopeAt(1000), 1.6);
}

TEST(TimeMapTest, StartingAgainForgetsTheBends)
{
    TimeMap map;
    map.start(0, 0, 1);
    map.bendAtInput(100, 0.5);
    map.scaleOutputAfter(50, 2);
    map.start(7, 70, 0.4);
    EXPECT_DOUBLE_EQ(map.inputAt(7), 70);
    EXPECT_DOUBLE_EQ(map.inputAt(1007), 470);
}

TEST(TimeMapTest, ABendHoldsFromItsInputPlaceOn)
{
    TimeMap map;
    map.start(0, 0, 1);
    map.bendAtInput(1000, 0.5);
    EXPECT_DOUBLE_EQ(map.inputAt(999), 999);
    EXPECT_DOUBLE_EQ(map.inputAt(1000), 1000);
    EXPECT_DOUBLE_EQ(map.inputAt(1010), 1005);
    EXPECT_DOUBLE_EQ(map.slopeAt(999), 1);
    EXPECT_DOUBLE_EQ(map.slopeAt(1001), 0.5);
}

TEST(TimeMapTest, ABendDropsThoseBeyondIt)
{
    TimeMap map;
    map.start(0, 0, 1);
    map.bendAtInput(2000, 0.5);
    map.bendAtInput(3000, 4);
    map.bendAtInput(1000, 2);
    EXPECT_DOUBLE_EQ(map.inputAt(1000), 1000);
    EXPECT_DOUBLE_EQ(map.inputAt(3000), 5000);
}

TEST(TimeMapTest, ABendBeforeTheBeginningHoldsFromTheBeginning)
{
    TimeMap map;
    map.start(0, 500, 1);
    map.bendAtInput(100, 0.5);
    EXPECT_DOUBLE_EQ(map.inputAt(0), 500);
    EXPECT_DOUBLE_EQ(map.inputAt(100), 550);
}

TEST(TimeMapTest, ScalingMovesWhatComesAfterAndNothingBefore)
{
    TimeMap map;
    map.start(0, 0, 1);
    map.bendAtInput(1000, 0.5);
    map.scaleOutputAfter(600, 0.5);
    EXPECT_DOUBLE_EQ(map.inputAt(300), 300);
    EXPECT_DOUBLE_EQ(map.inputAt(600), 600);
    EXPECT_DOUBLE_EQ(map.inputAt(700), 800);   // what lay 200 behind 600 now lies 100 behind it
    EXPECT_DOUBLE_EQ(map.inputAt(800), 1000);  // the bend, 400 behind
    EXPECT_DOUBLE_EQ(map.inputAt(900), 1100);
    EXPECT_DOUBLE_EQ(map.slopeAt(599), 1);
    EXPECT_DOUBLE_EQ(map.slopeAt(700), 2);
    EXPECT_DOUBLE_EQ(map.slopeAt(900), 1);
}

TEST(TimeMapTest, ScalingBackRestoresTheLine)
{
    TimeMap map;
    map.start(0, 0, 0.8);
    map.scaleOutputAfter(100, 0.25);
    map.scaleOutputAfter(100, 4);
    for (const double output : {0.0, 99.0, 100.0, 101.0, 5000.0})
        EXPECT_NEAR(map.inputAt(output), 0.8 * output, 1e-9);
}

TEST(TimeMapTest, ForgettingChangesNothingFromThatPlaceOn)
{
    TimeMap map;
    map.start(0, 0, 1);
    for (int bend = 1; bend <= 20; ++bend)
        map.bendAtInput(bend * 100, bend % 2 == 0 ? 0.5 : 1.5);
    TimeMap remembering = map;
    map.forgetBefore(1000);
    for (double output = 1000; output < 5000; output += 12.5) {
        EXPECT_DOUBLE_EQ(map.inputAt(output), remembering.inputAt(output));
        EXPECT_DOUBLE_EQ(map.slopeAt(output), remembering.slopeAt(output));
    }
}

TEST(TimeMapTest, ForgettingBeforeTheBeginningIsHarmless)
{
    TimeMap map;
    map.start(100, 200, 1.5);
    map.forgetBefore(-1000);
    map.forgetBefore(100);
    EXPECT_DOUBLE_EQ(map.inputAt(100), 200);
    EXPECT_DOUBLE_EQ(map.inputAt(102), 203);
}

// Every change is also made to a plain function, as its contract words it.
TEST(TimeMapTest, AnyRowOfChangesAgreesWithTheirDefinitionAndOnlyRises)
{
    std::mt19937 generator(1);
    std::uniform_real_distribution<double> part(0, 1);
    for (int row = 0; row < 200; ++row) {
        TimeMap map;
        const double firstSlope = 0.4 + 1.2 * part(generator);
        map.start(0, 0, firstSlope);
        Line line = [firstSlope](double output) { return firstSlope * output; };
        double now = 0;
        for (int change = 0; change < 9; ++change) {
            now += 400 * part(generator);
            if (part(generator) < 0.5) {
                const double factor = std::exp2(2 * part(generator) - 1);
                map.scaleOutputAfter(now, factor);
                line = [before = line, now, factor](double output) {
                    return before(output <= now ? output : now + (output - now) / factor);
                };
            } else {
                const double input = line(now) + 800 * part(generator);
                const double slope = 0.4 + 1.2 * part(generator);
                const double bend = outputAt(line, input, now, now + 10'000);
                map.bendAtInput(input, slope);
                line = [before = line, input, slope, bend](double output) {
                    return output <= bend ? before(output) : input + (output - bend) * slope;
                };
            }
            if (change == 6)
                map.forgetBefore(now);
        }
        double last = map.inputAt(now) - 1;
        for (double output = now; output < now + 5000; output += 37.3) {
            EXPECT_NEAR(map.inputAt(output), line(output), 1e-6) << "row " << row << " output " << output;
            EXPECT_GT(map.inputAt(output), last);
            last = map.inputAt(output);
            const double further = 1e-4;
            EXPECT_NEAR(map.inputAt(output + further) - map.inputAt(output), map.slopeAt(output) * further,
                        4 * further)
                << "a jump at output " << output;
        }
    }
}

TEST(TimeMapTest, MoreBendsThanItHoldsCostOnlyTheirOwnPrecision)
{
    TimeMap map;
    map.start(0, 0, 1);
    // Slopes around 1, so that the line never strays far from the diagonal.
    for (int bend = 1; bend <= 500; ++bend)
        map.bendAtInput(bend, bend % 2 == 0 ? 0.9 : 1.1);
    for (double output = 0; output < 1000; ++output)
        EXPECT_NEAR(map.inputAt(output), output, 120) << output;
    EXPECT_DOUBLE_EQ(map.slopeAt(10'000), 0.9);
}

TEST(TimeMapTest, AFullMapIsExactAgainOnceItHasForgotten)
{
    TimeMap map;
    map.start(0, 0, 1);
    for (int bend = 1; bend <= 500; ++bend)
        map.bendAtInput(bend, bend % 2 == 0 ? 0.9 : 1.1);
    const double place = map.inputAt(2000);
    map.forgetBefore(2000);
    map.bendAtInput(place + 90, 0.5);
    EXPECT_NEAR(map.inputAt(2100), place + 90, 1e-9);
    EXPECT_NEAR(map.inputAt(2200), place + 140, 1e-9);
}

TEST(TimeMapTest, AFullMapStillScales)
{
    TimeMap map;
    map.start(0, 0, 1);
    for (int bend = 1; bend <= 500; ++bend)
        map.bendAtInput(bend, bend % 2 == 0 ? 0.9 : 1.1);
    const double place = map.inputAt(2000);
    const double further = map.inputAt(3000);
    map.scaleOutputAfter(2000, 2);
    EXPECT_NEAR(map.inputAt(2000), place, 1e-9);
    EXPECT_NEAR(map.inputAt(4000), further, 1e-9);
}

}  // namespace
