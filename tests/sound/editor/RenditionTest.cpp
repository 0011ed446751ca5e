#include "sound/editor/Rendition.h"

#include "sound/Comparison.h"
#include "sound/editor/MemoryStream.h"

#include <gtest/gtest.h>
#include <cmath>
#include <numbers>
#include <ostream>
#include <random>

using namespace sound;
using namespace sound::test;

namespace {

using std::numbers::pi;
constexpr SampleRate target{44100};
constexpr int workers = 2;

std::vector<float> rendered(const MemorySound& sound, const RenditionSettings& settings)
{
    Rendition rendition(wholeOf(sound), settings, workers);
    std::vector<float> out = allOf(rendition);
    EXPECT_EQ(static_cast<std::int64_t>(out.size()) / settings.channels, rendition.length().value);
    EXPECT_EQ(rendition.channels(), settings.channels);
    EXPECT_EQ(rendition.missing().value, 0);
    return out;
}

RenditionSettings unchanged(int channels = 2)
{
    return {{}, 1, target, channels};
}

/// Samples of 16 bits, full scale among them.
MemorySound sixteenBits(int channels, std::int64_t frames)
{
    std::mt19937 bits(5);
    return MemorySound::of(target, channels, {frames}, [&](std::int64_t frame, int) {
        const auto sample =
            frame < 4 ? (frame % 2 == 0 ? -32768 : 32767) : static_cast<int>(bits() % 65536) - 32768;
        return sample / 32768.0;
    });
}

TEST(RenditionTest, UnchangedStereoOfTheSameRateIsTheSameToTheBit)
{
    for (const std::int64_t frames : {1, 16'384, 123'457}) {
        const MemorySound sound = sixteenBits(2, frames);
        expectSame(rendered(sound, unchanged()), sound.interleaved(), 2, target);
    }
}

TEST(RenditionTest, MonoSoundsOnBothSides)
{
    const MemorySound sound = sixteenBits(1, 50'000);
    const std::vector<float> out = rendered(sound, unchanged(2));
    expectSame(channelOf(out, 2, 0), sound.interleaved(), 1, target);
    expectSame(channelOf(out, 2, 1), sound.interleaved(), 1, target);
    expectSame(rendered(sound, unchanged(1)), sound.interleaved(), 1, target);
}

TEST(RenditionTest, StereoIsAveragedToMono)
{
    const MemorySound sound = sixteenBits(2, 50'000);
    const std::vector<float> out = rendered(sound, unchanged(1));
    ASSERT_EQ(out.size(), 50'000U);
    for (std::size_t frame = 0; frame < out.size(); ++frame)
        ASSERT_EQ(out[frame], (sound.interleaved()[2 * frame] + sound.interleaved()[2 * frame + 1]) / 2);
}

TEST(RenditionTest, ASoundWithoutFramesHasNone)
{
    EXPECT_TRUE(rendered(MemorySound(target, 2, {}), unchanged()).empty());
    EXPECT_TRUE(rendered(MemorySound({48000}, 1, {}), {{0.8, 1.1, 1.2}, 1, target, 2}).empty());
}

TEST(RenditionTest, TheGainIsAFactorOfEverySample)
{
    const MemorySound sound = noiseSound(target, 2, {30'000});
    RenditionSettings settings = unchanged();
    settings.gain = 0.5;
    const std::vector<float> out = rendered(sound, settings);
    for (std::size_t sample = 0; sample < out.size(); ++sample)
        ASSERT_EQ(out[sample], sound.interleaved()[sample] / 2);
    settings.gain = 0;
    EXPECT_EQ(levelOf(rendered(sound, settings)), 0);
}

TEST(RenditionTest, WhatIsAboveFullScaleIsLimitedAndStaysASine)
{
    RenditionSettings settings = unchanged();
    settings.gain = 4;
    const std::vector<float> out = rendered(sineSound(target, 2, 440, 2), settings);
    EXPECT_LE(std::abs(*std::max_element(out.begin(), out.end())), 1.0F);
    EXPECT_GE(*std::min_element(out.begin(), out.end()), -1.0F);
    const std::vector<float> left = channelOf(out, 2, 0);
    const std::span<const float> steady = std::span(left).subspan(44100, 22050);
    EXPECT_GT(amplitudeAt(steady, target, 440), 0.9);
    EXPECT_LT(decibels(amplitudeAt(steady, target, 1320), 1), -40);  // clipped it were at -14
}

TEST(RenditionTest, AStopEndsItSoonWhateverItDoes)
{
    for (const Changes& changes : {Changes{}, Changes{0.8, 1, 1}, Changes{1, 1, 1.1}}) {
        Rendition rendition(wholeOf(noiseSound(target, 2, {20 * 44100})), {changes, 1, target, 2}, workers);
        rendition.stop();
        std::vector<float> frames;
        EXPECT_FALSE(rendition.next(frames));
        EXPECT_TRUE(frames.empty());
    }
}

TEST(RenditionTest, WhatASoundLacksIsTold)
{
    auto stream = std::make_unique<MemoryStream>(noiseSound({48000}, 2, {48000}));
    stream->endAfter({40000});
    Rendition rendition(std::make_unique<SourcePart>(std::move(stream), FramePosition{0}, FrameCount{48000}),
                        {{0.8, 1, 1}, 1, target, 2}, workers);
    EXPECT_EQ(allOf(rendition).size(), 2U * 55125);
    EXPECT_EQ(rendition.missing().value, 8000);
    EXPECT_LT(rendition.missing(), rendition.bearable());
}

struct Changed
{
    const char* name;
    int rate;
    Changes changes;
    double hertz;
};

void PrintTo(const Changed& changed, std::ostream* out)
{
    *out << changed.name;
}

class ChangedRenditionTest : public ::testing::TestWithParam<Changed>
{
};

TEST_P(ChangedRenditionTest, HasItsLengthAndItsPitch)
{
    const auto& [name, rate, changes, hertz] = GetParam();
    constexpr double seconds = 3.3;
    const MemorySound sound = sineSound({rate}, 1, hertz, seconds);
    const std::vector<float> out = channelOf(rendered(sound, {changes, 1, target, 2}), 2, 0);
    const auto wanted = std::llround(static_cast<double>(sound.length().value) / (changes.tempo * changes.rate) *
                                     target.hertz / rate);
    EXPECT_EQ(static_cast<std::int64_t>(out.size()), wanted);

    const double heard = hertz * changes.pitch * changes.rate;
    const auto edge = static_cast<std::size_t>(target.hertz) / 4;
    const std::span<const float> steady = std::span(out).subspan(edge, out.size() - 2 * edge);
    EXPECT_LT(std::abs(centsBetween(measuredFrequency(steady, target, heard), heard)), 0.1);
    EXPECT_NEAR(decibels(amplitudeAt(steady, target, heard), 0.5), 0, 0.2);
}

// A short burst at a known moment: its middle is where its power is.
TEST_P(ChangedRenditionTest, HasEveryMomentInItsPlace)
{
    const auto& [name, rate, changes, hertz] = GetParam();
    const int hertzOfSource = rate;
    for (const double moment : {0.3, 1.9}) {
        const MemorySound sound =
            MemorySound::of({rate}, 1, {static_cast<std::int64_t>(2.5 * rate)}, [&](std::int64_t frame, int) {
                const double time = static_cast<double>(frame) / hertzOfSource - moment;
                return 0.7 * std::exp(-std::pow(time / 0.02, 2)) * std::sin(2 * pi * 1000 * time);
            });
        const std::vector<float> out = rendered(sound, {changes, 1, target, 1});
        double weights = 0;
        double places = 0;
        for (std::size_t frame = 0; frame < out.size(); ++frame) {
            const double power = double{out[frame]} * out[frame];
            weights += power;
            places += power * static_cast<double>(frame) / target.hertz;
        }
        EXPECT_NEAR(places / weights, moment / (changes.tempo * changes.rate), 0.004);
    }
}

const double twoUp = std::exp2(2.0 / 12);

#ifdef LARKSPIN_SANITIZED
const auto changed =
    ::testing::Values(Changed{"from96000", 96000, {}, 3000}, Changed{"slower", 44100, {0.8, 1, 1}, 55},
                      Changed{"allFrom44100", 44100, {0.8, twoUp, 1.25}, 440});
#else
const auto changed = ::testing::Values(
    Changed{"from48000", 48000, {}, 1000}, Changed{"from8000", 8000, {}, 440},
    Changed{"from96000", 96000, {}, 3000}, Changed{"slower", 44100, {0.8, 1, 1}, 55},
    Changed{"muchSlower", 44100, {0.4, 1, 1}, 330}, Changed{"faster", 44100, {1.6, 1, 1}, 440},
    Changed{"higher", 44100, {1, twoUp, 1}, 3000}, Changed{"octaveDown", 44100, {1, 0.5, 1}, 440},
    Changed{"turntableUp", 44100, {1, 1, 1.25}, 440}, Changed{"turntableDown", 48000, {1, 1, 0.4}, 997},
    Changed{"slowerAndHigherFrom48000", 48000, {0.73, twoUp, 1}, 110},
    Changed{"slowFrom22050", 22050, {0.5, 1, 1}, 220}, Changed{"allFrom44100", 44100, {0.8, twoUp, 1.25}, 440},
    Changed{"allFrom96000", 96000, {1.3, 0.9, 0.7}, 1000},
    Changed{"turntableThatUndoesTheRate", 48000, {1, 1, 0.91875}, 500});
#endif

INSTANTIATE_TEST_SUITE_P(Changes, ChangedRenditionTest, changed,
                         [](const auto& info) { return std::string(info.param.name); });

TEST(RenditionTest, AChangeOfRateThatTheSampleRatesMakeGoodCopiesTheFrames)
{
    const MemorySound sound = noiseSound({22050}, 2, {30'000});
    expectSame(rendered(sound, {{1, 1, 2}, 1, target, 2}), sound.interleaved(), 2, target);
}

}  // namespace
