#include "sound/SoundFiles.h"
#include "sound/media/OpenedFrames.h"
#include "sound/media/RecordingFile.h"
#include "sound/media/SoundEncoder.h"
#include "sound/media/WrittenSounds.h"
#include "sound/media/recorded/RecordedWave.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <QFile>
#include <cmath>
#include <numbers>
#include <random>

using sound::GrowingFile;
using sound::RecordingFile;
using sound::SampleRate;
using sound::SoundFormat;
using sound::test::readSound;
using sound::test::SoundFiles;
using sound::test::TestSound;

namespace {

struct Offered
{
    SoundFormat format;
    int rate = 44100;
    int channels = 2;
};

/// All that can be chosen in the recorder's window.
std::vector<Offered> everythingOffered()
{
    std::vector<Offered> all;
    for (const int rate : {48000, 44100, 32000, 22500, 11025}) {
        for (const int channels : {1, 2})
            all.push_back({sound::wavFormat(), rate, channels});
    }
    for (const int kilobits : {32, 64, 96, 128, 160, 192, 256}) {
        for (const int channels : {1, 2})
            all.push_back({sound::mp3Format(kilobits * 1000), 44100, channels});
    }
    for (int quality = 1; quality <= 10; ++quality) {
        for (const int channels : {1, 2})
            all.push_back({sound::oggVorbisFormat(quality), 44100, channels});
    }
    for (const int kilobits : {32, 48, 64, 96, 128, 160, 192})
        all.push_back({sound::wmaFormat(kilobits * 1000)});
    for (const int quality :
         {10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120, 130, 140, 150, 200, 300, 400, 500}) {
        all.push_back({sound::aacFormat(quality)});
        all.push_back({sound::mp4Format(quality)});
    }
    return all;
}

void PrintTo(const Offered& offered, std::ostream* out)
{
    *out << "family " << static_cast<int>(offered.format.family) << ", bit rate " << offered.format.bitRate
         << ", quality " << offered.format.quality << ", " << offered.rate << " Hz, " << offered.channels
         << " channels";
}

/// The amplitude of a tone in one channel.
double amplitudeAt(double hertz, const TestSound& sound, int channel)
{
    double real = 0;
    double imaginary = 0;
    const auto from = sound.frames() / 4;
    const auto count = sound.frames() / 2;
    for (std::int64_t i = from; i < from + count; ++i) {
        const double angle = 2 * std::numbers::pi * hertz * static_cast<double>(i) / sound.rate;
        const double sample = sound.samples[static_cast<std::size_t>(i * sound.channels + channel)];
        real += sample * std::cos(angle);
        imaginary += sample * std::sin(angle);
    }
    return 2 * std::hypot(real, imaginary) / static_cast<double>(count);
}

/// The hardest there is to code: as loud as it gets, another in each channel.
TestSound loudestNoise(std::int64_t frames)
{
    std::minstd_rand random(7);
    TestSound loud{44100, 2, {}};
    for (std::int64_t i = 0; i < 2 * frames; ++i)
        loud.samples.push_back((random() & 0x1000) != 0 ? 1.0F : -1.0F);
    return loud;
}

EngineError record(const QString& path, const Offered& offered, std::span<const float> samples)
{
    const auto opened = RecordingFile::create(path, offered.format, SampleRate{offered.rate}, offered.channels);
    if (!opened.file)
        return opened.error;
    EXPECT_TRUE(opened.file->write(samples));
    return opened.file->finish();
}

TEST(RecordedFormats, EverySettingThatIsOfferedKeepsToneLevelAndLength)
{
    const SoundFiles files;
    for (const Offered& offered : everythingOffered()) {
        const TestSound made = sound::test::sine(1000, offered.rate, offered.channels, offered.rate / 4, 0.5);
        ASSERT_EQ(record(files.path("a"), offered, made.samples), EngineError::None)
            << testing::PrintToString(offered);
        const TestSound heard = readSound(files.path("a"));
        ASSERT_EQ(heard.rate, offered.rate);
        ASSERT_EQ(heard.channels, offered.channels);
        EXPECT_NEAR(static_cast<double>(heard.frames()), static_cast<double>(made.frames()), 4100);
        for (int channel = 0; channel < heard.channels; ++channel)
            EXPECT_NEAR(amplitudeAt(1000, heard, channel), 0.5, 0.03) << testing::PrintToString(offered);
    }
}

TEST(RecordedFormats, NoSettingThatIsOfferedBreaksOffAtAnySound)
{
    const SoundFiles files;
    const TestSound loud = loudestNoise(11'025);
    for (const Offered& offered : everythingOffered()) {
        ASSERT_EQ(record(files.path("a"), offered, loud.samples), EngineError::None)
            << testing::PrintToString(offered);
        EXPECT_GE(readSound(files.path("a")).frames(), 11025) << testing::PrintToString(offered);
    }
}

TEST(RecordedFormats, NoiseThatIsTooLoudForTheBitRateLeavesWhatFollowsAsItIs)
{
    const SoundFiles files;
    const Offered least{sound::wmaFormat(32'000)};
    TestSound made = loudestNoise(22'050);
    const TestSound tone = sound::test::sine(1000, 44100, 2, 44'100, 0.5);
    made.samples.insert(made.samples.end(), tone.samples.begin(), tone.samples.end());
    ASSERT_EQ(record(files.path("a"), least, made.samples), EngineError::None);
    TestSound heard = readSound(files.path("a"));
    heard.samples.erase(heard.samples.begin(), heard.samples.begin() + 2 * 26'000);
    EXPECT_NEAR(amplitudeAt(1000, heard, 0), 0.5, 0.03);
}

/// Keeps of the samples only that they are there: a file of zeros that takes no room on the disc.
class HollowFile : public GrowingFile
{
public:
    explicit HollowFile(const QString& path)
        : GrowingFile(sound::NewFile::create(path), usualInterval)
    {
    }

    bool writeAt(std::int64_t offset, std::span<const std::byte> bytes) override
    {
        constexpr std::int64_t mostOfAHead = 200;
        if (offset < mostOfAHead && bytes.size() < mostOfAHead)
            return GrowingFile::writeAt(offset, bytes);
        return cutTo(offset + static_cast<std::int64_t>(bytes.size()));
    }
};

TEST(RecordedFormats, AWavThatGrowsBeyondFourGibibytesIsReadableAtEveryMoment)
{
    const SoundFiles files;
    const QString path = files.path("a.wav");
    HollowFile file(path);
    const auto encoder = sound::SoundEncoder::open(sound::wavFormat(), SampleRate{48000}, 2);
    ASSERT_TRUE(encoder.encoder);
    const auto wave = sound::RecordedWave::begin(file, encoder.encoder->codec());
    ASSERT_TRUE(wave && file.takeName());
    std::uint8_t nothing = 0;
    AVPacket packet = {};
    packet.data = &nothing;  // which nobody looks at
    packet.size = 1'000'000'000;
    std::int64_t frames = 0;
    for (int packets = 1; packets <= 5; ++packets) {
        EXPECT_TRUE(wave->add(packet));
        frames += packet.size / 4;
        const auto opened = sound::openFrames(path);
        ASSERT_TRUE(opened.stream);
        EXPECT_EQ(opened.stream->length().value, frames);
        QFile written(path);
        ASSERT_TRUE(written.open(QIODevice::ReadOnly));
        EXPECT_EQ(written.read(4), packets < 5 ? "RIFF" : "RF64");
    }
    EXPECT_TRUE(wave->finish());
}

}  // namespace
