#include "sound/recorder/FileSequence.h"

#include "sound/Comparison.h"
#include "sound/DiscOf.h"
#include "sound/Signals.h"
#include "sound/SoundFiles.h"

#include <gtest/gtest.h>
#include <QFileInfo>
#include <cmath>
#include <cstring>
#include <numbers>
#include <vector>

using namespace sound;
using namespace sound::test;

namespace {

constexpr SampleRate captured{48000};
constexpr RecordingFormat wav48{wavFormat(), {48000}, 2};
constexpr RecordingFormat wav44{wavFormat(), {44100}, 2};

/// Values that 16 bits hold, no two neighbours alike: they come back as they were.
std::vector<float> steps(std::size_t frames)
{
    std::vector<float> stereo(frames * 2);
    for (std::size_t sample = 0; sample < stereo.size(); ++sample)
        stereo[sample] = static_cast<float>((sample * 7919) % 60001) / 32768 - 30000 / 32768.0F;
    return stereo;
}

std::vector<float> tone(double hertz, SampleRate rate, std::size_t frames)
{
    std::vector<float> stereo;
    for (std::size_t frame = 0; frame < frames; ++frame) {
        const double phase = 2 * std::numbers::pi * hertz * static_cast<double>(frame) / rate.hertz;
        stereo.push_back(static_cast<float>(0.5 * std::sin(phase)));
        stereo.push_back(static_cast<float>(0.25 * std::cos(phase)));
    }
    return stereo;
}

/// What a WAV file of 16 bits holds; a file of a few thousand frames needs no other program.
std::vector<float> samplesOf(const QString& path)
{
    const QByteArray bytes = contentOf(path);
    const qsizetype data = bytes.indexOf("data");
    EXPECT_GE(data, 0);
    std::vector<std::int16_t> values(static_cast<std::size_t>(bytes.size() - data - 8) / 2);
    std::memcpy(values.data(), bytes.constData() + data + 8, values.size() * 2);
    std::vector<float> samples;
    for (const std::int16_t value : values)
        samples.push_back(static_cast<float>(value) / 32768);
    return samples;
}

class FileSequenceTest : public ::testing::Test
{
protected:
    /// Frames from @p first to before @p end.
    static std::span<const float> part(const std::vector<float>& stereo, std::size_t first, std::size_t end)
    {
        return std::span(stereo).subspan(first * 2, (end - first) * 2);
    }

    QString path(int number) const { return files.path(QString("part %1.wav").arg(number)); }

    /// What the files hold, one behind the other.
    std::vector<float> joined(int count) const
    {
        std::vector<float> all;
        for (int number = 0; number < count; ++number) {
            const std::vector<float> one = samplesOf(path(number));
            all.insert(all.end(), one.begin(), one.end());
        }
        return all;
    }

    SoundFiles files;
    FileSequence sequence{captured};
};

TEST_F(FileSequenceTest, EachFrameStandsInJustOneFile)
{
    const auto sound = steps(30000);
    ASSERT_TRUE(sequence.begin(path(0), wav48));
    ASSERT_TRUE(sequence.write(part(sound, 0, 12345)));
    ASSERT_TRUE(sequence.begin(path(1), wav48));
    ASSERT_TRUE(sequence.write(part(sound, 12345, 12346)));
    ASSERT_TRUE(sequence.begin(path(2), wav48));
    ASSERT_TRUE(sequence.write(part(sound, 12346, 30000)));
    ASSERT_TRUE(sequence.finish());
    EXPECT_EQ(samplesOf(path(0)).size(), 2U * 12345);
    EXPECT_EQ(samplesOf(path(1)).size(), 2U);
    expectSame(joined(3), sound, 2, captured);
}

TEST_F(FileSequenceTest, AHundredFilesAtAnotherRateHoldOneUnbrokenSound)
{
    constexpr int count = 100;
    const auto sound = tone(997, captured, count * 1237);
    FileSequence whole{captured};
    ASSERT_TRUE(whole.begin(files.path("whole.wav"), wav44));
    ASSERT_TRUE(whole.write(sound));
    ASSERT_TRUE(whole.finish());
    for (int number = 0; number < count; ++number) {
        ASSERT_TRUE(sequence.begin(path(number), wav44));
        const auto first = static_cast<std::size_t>(number) * 1237;
        ASSERT_TRUE(sequence.write(part(sound, first, first + 1000)));
        ASSERT_TRUE(sequence.write(part(sound, first + 1000, first + 1237)));
    }
    ASSERT_TRUE(sequence.finish());

    // The dither of 16 bits is another one in each file.
    const auto all = joined(count);
    expectClose(all, samplesOf(files.path("whole.wav")), 3 / 32768.0, 2, {44100});
    EXPECT_EQ(all.size() / 2, std::llround(count * 1237 * (44100 / 48000.0)));
    // The converter's filter swings where the sound begins and ends.
    const auto wanted = tone(997, {44100}, all.size() / 2);
    const std::size_t edge = 2 * 200;
    expectClose(std::span(all).subspan(edge, all.size() - 2 * edge),
                std::span(wanted).subspan(edge, wanted.size() - 2 * edge), 3 / 32768.0, 2, {44100});
}

TEST_F(FileSequenceTest, FilesThatFollowCloserThanTheConverterDelaysAreWholeToo)
{
    const auto sound = tone(440, captured, 4000);
    for (int number = 0; number < 40; ++number) {
        ASSERT_TRUE(sequence.begin(path(number), wav44));
        const auto first = static_cast<std::size_t>(number) * 100;
        ASSERT_TRUE(sequence.write(part(sound, first, first + 100)));
    }
    ASSERT_TRUE(sequence.finish());
    const auto all = joined(40);
    EXPECT_EQ(all.size() / 2, 3675U);
    expectClose(all, tone(440, {44100}, 3675), 0.05, 2, {44100});
}

TEST_F(FileSequenceTest, OneChannelIsTheMeanOfBoth)
{
    const auto sound = steps(5000);
    ASSERT_TRUE(sequence.begin(path(0), {wavFormat(), captured, 1}));
    ASSERT_TRUE(sequence.write(sound));
    ASSERT_TRUE(sequence.finish());
    const auto mono = samplesOf(path(0));
    ASSERT_EQ(mono.size(), 5000U);
    for (std::size_t frame = 0; frame < mono.size(); ++frame)
        ASSERT_NEAR(mono[frame], (sound[2 * frame] + sound[2 * frame + 1]) / 2, 2 / 32768.0);
}

TEST_F(FileSequenceTest, AnotherFormatBeginsWithTheNextFrame)
{
    const auto sound = tone(440, captured, 20000);
    ASSERT_TRUE(sequence.begin(path(0), wav48));
    ASSERT_TRUE(sequence.write(part(sound, 0, 10000)));
    ASSERT_TRUE(sequence.begin(path(1), {wavFormat(), {22500}, 1}));
    ASSERT_TRUE(sequence.write(part(sound, 10000, 20000)));
    ASSERT_TRUE(sequence.finish());
    EXPECT_EQ(samplesOf(path(0)).size(), 2U * 10000);
    EXPECT_NEAR(static_cast<double>(samplesOf(path(1)).size()), 4687.5, 1);
}

TEST_F(FileSequenceTest, TheNameOfTheOpenFileBeginsItAfresh)
{
    const auto sound = steps(3000);
    ASSERT_TRUE(sequence.begin(path(0), wav48));
    ASSERT_TRUE(sequence.write(part(sound, 0, 2000)));
    ASSERT_TRUE(sequence.begin(path(0), wav48));
    ASSERT_TRUE(sequence.write(part(sound, 2000, 3000)));
    ASSERT_TRUE(sequence.finish());
    expectSame(joined(1), std::vector(sound.begin() + 4000, sound.end()), 2, captured);
}

TEST_F(FileSequenceTest, AFileThatCannotBeMadeEndsTheOneBeforeWhole)
{
    const auto sound = steps(3000);
    ASSERT_TRUE(sequence.begin(path(0), wav48));
    ASSERT_TRUE(sequence.write(sound));
    EXPECT_FALSE(sequence.begin("/proc/no/such.wav", wav48));
    EXPECT_FALSE(sequence.isOpen());
    expectSame(joined(1), sound, 2, captured);
    EXPECT_TRUE(sequence.write(sound));  // into nothing
}

TEST_F(FileSequenceTest, AnotherCaptureRateGoesOnInTheSameFile)
{
    ASSERT_TRUE(sequence.begin(path(0), wav44));
    ASSERT_TRUE(sequence.write(tone(997, captured, 48000)));
    ASSERT_TRUE(sequence.changeRate({96000}));
    ASSERT_TRUE(sequence.write(tone(997, {96000}, 96000)));
    ASSERT_TRUE(sequence.finish());
    const auto both = samplesOf(path(0));
    ASSERT_EQ(both.size() / 2, 88200U);
    const auto left = channelOf(both, 2, 0);
    EXPECT_NEAR(measuredFrequency(std::span(left).first(40000), {44100}, 997), 997, 0.01);
    EXPECT_NEAR(measuredFrequency(std::span(left).last(40000), {44100}, 997), 997, 0.01);
}

TEST_F(FileSequenceTest, OnAFullDiscTheFileHoldsWhatFoundRoom)
{
    const auto sound = steps(100000);
    {
        const DiscOf disc(1'000'000);
        ASSERT_TRUE(sequence.begin(path(0), wav48));
        int written = 0;
        while (written < 20 && sequence.write(sound))
            ++written;
        EXPECT_LT(written, 20);
        EXPECT_FALSE(sequence.isOpen());
    }
    const auto kept = samplesOf(path(0));
    ASSERT_GT(kept.size(), 400000U);
    for (std::size_t sample = 0; sample < kept.size(); ++sample)
        ASSERT_EQ(kept[sample], sound[sample % sound.size()]) << sample;
}

}  // namespace
