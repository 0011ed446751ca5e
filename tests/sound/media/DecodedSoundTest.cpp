#include "sound/media/DecodedSound.h"

#include "sound/SoundFiles.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <ostream>
#include <random>

using sound::DecodedSound;
using sound::FrameCount;
using sound::FramePosition;
using sound::test::SoundFiles;
using sound::test::TestSound;

namespace {

std::vector<float> framesOf(const DecodedSound& sound, std::int64_t from, std::int64_t count)
{
    std::vector<float> samples(static_cast<std::size_t>(count * sound.channels()));
    sound.read(FramePosition{from}, FrameCount{count}, samples.data());
    return samples;
}

bool sameBits(const std::vector<float>& a, const std::vector<float>& b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
}

struct Format
{
    const char* name;
    const char* file;
    QStringList arguments;
    int rate = 44100;
    int channels = 2;
    int ratePlayed = 0;         // where the encoder decides it: Opus is always 48 kHz
    bool paddingIsCut = false;  // the container knows the sound's length, and ffmpeg plays the padding behind it
    int delayKept = 0;          // frames of the encoder before the sound that the container tells nothing of
};

void PrintTo(const Format& format, std::ostream* out)
{
    *out << format.name;
}

class EveryFormat : public ::testing::TestWithParam<Format>
{
protected:
    SoundFiles files;
};

TEST_P(EveryFormat, HoldsEveryFrameOfTheLinearDecodeWhereverItIsRead)
{
    const Format& format = GetParam();
    const TestSound made = sound::test::slideWithNoise(format.rate, format.channels, 7 * format.rate + 1234);
    const QString path = files.make(format.file, made, format.arguments);
    const int channels = std::min(format.channels, 2);
    std::vector<float> linear = sound::test::decodedByFfmpeg(path, channels);
    if (format.paddingIsCut)
        linear.resize(static_cast<std::size_t>((made.frames() + format.delayKept) * channels));
    ASSERT_GE(linear.size(), made.samples.size() / static_cast<std::size_t>(format.channels) / 2);

    const auto opened = DecodedSound::open(path);
    ASSERT_TRUE(opened.sound);
    EXPECT_EQ(opened.error, EngineError::None);
    const DecodedSound& sound = *opened.sound;
    EXPECT_EQ(sound.rate().hertz, format.ratePlayed != 0 ? format.ratePlayed : format.rate);
    EXPECT_EQ(sound.channels(), channels);
    const auto frames = static_cast<std::int64_t>(linear.size()) / channels;
    ASSERT_EQ(sound.length().value, frames);

    ASSERT_TRUE(sound.waitFor(sound.length()));
    EXPECT_TRUE(sameBits(framesOf(sound, 0, frames), linear));
    std::minstd_rand places(7);
    for (int i = 0; i < 1000; ++i) {
        const auto from = static_cast<std::int64_t>(places() % static_cast<unsigned>(frames - 300));
        const std::int64_t count = 1 + static_cast<std::int64_t>(places() % 300);
        const auto begin = linear.begin() + from * channels;
        ASSERT_TRUE(sameBits(framesOf(sound, from, count), {begin, begin + count * channels})) << "from " << from;
    }
}

/// Bytes of the Ogg pages from one to another, each page whole.
QByteArray oggPages(const QByteArray& bytes, int first, int last)
{
    QByteArray pages;
    qsizetype from = 0;
    for (int page = 0; from >= 0 && page <= last; ++page) {
        const qsizetype next = bytes.indexOf("OggS", from + 4);
        if (page >= first)
            pages += bytes.mid(from, next < 0 ? -1 : next - from);
        from = next;
    }
    return pages;
}

/// The position that a page bears: of the end of the sound on it.
std::int64_t positionOf(const QByteArray& page)
{
    std::int64_t position = 0;
    std::memcpy(&position, page.constData() + 6, sizeof position);
    return position;
}

TEST(OggSound, APieceCutFromALongerSoundIsAsLongAsWhatIsInIt)
{
    const SoundFiles files;
    const QByteArray whole = sound::test::contentOf(
        files.make("whole.ogg", sound::test::slideWithNoise(44100, 2, 60 * 44100), {"-c:a", "libvorbis"}));
    constexpr int firstPage = 30;
    constexpr int lastPage = 44;
    const auto opened =
        DecodedSound::open(files.write("cut.ogg", oggPages(whole, 0, 1) + oggPages(whole, firstPage, lastPage)));
    ASSERT_TRUE(opened.sound);
    EXPECT_EQ(opened.sound->length().value, positionOf(oggPages(whole, lastPage, lastPage)) -
                                                positionOf(oggPages(whole, firstPage - 1, firstPage - 1)));
}

TEST(OggSound, SoundsThatAreChainedPlayOneAfterTheOther)
{
    const SoundFiles files;
    const auto first = sound::test::slideWithNoise(48000, 1, 100'000);
    const auto second = sound::test::sine(440, 48000, 1, 70'000);
    const QByteArray chained =
        sound::test::contentOf(files.make("1.opus", first, {"-c:a", "libopus", "-serial_offset", "1"})) +
        sound::test::contentOf(files.make("2.opus", second, {"-c:a", "libopus", "-serial_offset", "2"}));
    const auto opened = DecodedSound::open(files.write("both.opus", chained));
    ASSERT_TRUE(opened.sound);
    EXPECT_EQ(opened.sound->length().value, 170'000);
}

TEST(Mp3Sound, PartsOfDifferentRatesAreBroughtToOne)
{
    const SoundFiles files;
    const QStringList untagged = {"-write_xing", "0", "-id3v2_version", "0"};
    const QByteArray first =
        sound::test::contentOf(files.make("1.mp3", sound::test::sine(440, 44100, 2, 44100), untagged));
    const QByteArray second =
        sound::test::contentOf(files.make("2.mp3", sound::test::sine(440, 48000, 2, 48000), untagged));
    const auto opened = DecodedSound::open(files.write("both.mp3", first + second));
    ASSERT_TRUE(opened.sound);
    // Each part is a second and, with its delay, up to the end of a coded frame.
    const double rate = opened.sound->rate().hertz;
    const double seconds = static_cast<double>(opened.sound->length().value) / rate;
    EXPECT_GT(seconds, 2.0 + 1105 / 44100.0 + 1105 / 48000.0 - 0.001);
    EXPECT_LT(seconds, 2.0 + 2 * (1105 + 1152) / 44100.0);
    ASSERT_TRUE(opened.sound->waitFor(opened.sound->length()));
    // In the middle of either part the tone crosses zero 880 times a second.
    for (const double from : {0.3, 1.3}) {
        const auto samples = framesOf(*opened.sound, std::lround(from * rate), std::lround(rate / 2));
        int crossings = 0;
        for (std::size_t i = 2; i < samples.size(); i += 2)
            crossings += (samples[i - 2] < 0) != (samples[i] < 0) ? 1 : 0;
        EXPECT_NEAR(crossings, 440, 2) << from;
    }
}

/// Where the container's own duration is a guess, rounded, or missing.
TEST(SoundLength, IsThatOfTheEncodedSoundAndTheEncodersFramingToTheMillisecond)
{
    const SoundFiles files;
    constexpr int rate = 44100;
    // Loud and silent in turn, so that the bit rate at the beginning says nothing of the rest.
    sound::test::TestSound made = sound::test::slideWithNoise(rate, 2, 30 * rate + 500);
    std::fill(made.samples.begin() + 2 * rate, made.samples.begin() + 30 * rate, 0.0F);
    const auto lengthOf = [&](const char* name, const QStringList& arguments) {
        const auto opened = DecodedSound::open(files.make(name, made, arguments));
        return opened.sound ? sound::durationOf(opened.sound->length(), opened.sound->rate()).count() : 0;
    };
    const auto durationOf = [](std::int64_t frames) {
        return sound::durationOf(FrameCount{frames}, sound::SampleRate{rate}).count();
    };
    const std::int64_t frames = made.frames();
    const auto wholeBlocks = [frames](std::int64_t block, std::int64_t delay) {
        return (frames + delay + block - 1) / block * block;
    };
    EXPECT_EQ(lengthOf("a.m4a", {}), durationOf(frames));
    EXPECT_EQ(lengthOf("a.ogg", {"-c:a", "libvorbis"}), durationOf(frames));
    EXPECT_EQ(lengthOf("a.mp3", {"-q:a", "0"}), durationOf(frames));
    // Encoders that say nothing of their delay: it is heard, and so is the silence that fills the last block.
    EXPECT_EQ(lengthOf("a.aac", {}), durationOf(wholeBlocks(1024, 1024)));
    EXPECT_EQ(lengthOf("a.wma", {"-c:a", "wmav2"}), durationOf(wholeBlocks(2048, 0) - 2048));
    EXPECT_EQ(lengthOf("b.mp3", {"-q:a", "0", "-write_xing", "0"}), durationOf(wholeBlocks(1152, 1105)));
}

const QStringList withPicture = {"-f", "lavfi", "-i", "color=s=64x64:d=1", "-map", "0:a", "-map", "1:v"};

INSTANTIATE_TEST_SUITE_P(
    Media, EveryFormat,
    ::testing::Values(
        Format{"Wav8", "a.wav", {"-c:a", "pcm_u8"}}, Format{"Wav16", "a.wav", {}},
        Format{"Wav24", "a.wav", {"-c:a", "pcm_s24le"}}, Format{"Wav32", "a.wav", {"-c:a", "pcm_s32le"}},
        Format{"WavFloat", "a.wav", {"-c:a", "pcm_f32le"}}, Format{"WavDouble", "a.wav", {"-c:a", "pcm_f64le"}},
        Format{"WavAdpcm", "a.wav", {"-c:a", "adpcm_ms"}},
        Format{"WavMuLaw", "a.wav", {"-c:a", "pcm_mulaw"}, 8000, 1},
        Format{"WavExtensible192kHz", "a.wav", {"-c:a", "pcm_s24le"}, 192000},
        Format{"WavFivePointOne", "a.wav", {"-c:a", "pcm_s24le"}, 48000, 6},
        Format{"WavMono8kHz", "a.wav", {}, 8000, 1}, Format{"Rf64", "a.wav", {"-rf64", "always"}},
        Format{"Wave64", "a.w64", {}}, Format{"WavOfUnknownLength", "a.wav", {"-f", "wav", "-seekable", "0"}},
        Format{"Aiff16", "a.aiff", {}}, Format{"Aiff24", "a.aif", {"-f", "aiff", "-c:a", "pcm_s24be"}, 96000},
        Format{"AifcFloat", "a.aiff", {"-c:a", "pcm_f32be"}},
        Format{"AifcLittleEndian", "a.aiff", {"-c:a", "pcm_s16le"}},
        Format{"Aiff8Mono", "a.aiff", {"-c:a", "pcm_s8"}, 11025, 1},
        Format{"Mp3Constant", "a.mp3", {"-b:a", "192k"}}, Format{"Mp3Variable", "a.mp3", {"-q:a", "4"}},
        Format{"Mp3VariableWithoutTag", "a.mp3", {"-q:a", "4", "-write_xing", "0", "-id3v2_version", "0"}},
        Format{"Mp3Mono8kHz", "a.mp3", {}, 8000, 1}, Format{"Mp3Mono22kHz", "a.mp3", {"-q:a", "2"}, 22050, 1},
        Format{"Mp3With1Tag", "a.mp3", {"-write_id3v1", "1", "-metadata", "title=Etude"}, 48000},
        Format{"Mp3WithCover", "a.mp3", withPicture + QStringList{"-c:v", "png", "-frames:v", "1"}},
        Format{"Mp2", "a.mp2", {"-b:a", "192k"}}, Format{"Mp2Mono48kHz", "a.mp2", {}, 48000, 1},
        Format{"OggVorbis", "a.ogg", {"-c:a", "libvorbis"}},
        Format{"OggVorbisMono", "a.ogg", {"-c:a", "libvorbis"}, 22050, 1},
        Format{"OggOpus", "a.opus", {"-c:a", "libopus"}, 48000},
        Format{"OggOpusOf24kHz", "a.opus", {"-c:a", "libopus"}, 24000, 1, 48000},
        Format{"OggFlac", "a.ogg", {"-c:a", "flac"}},
        Format{"OggVorbisFivePointOne", "a.ogg", {"-c:a", "libvorbis"}, 48000, 6},
        Format{"Wma1", "a.wma", {"-c:a", "wmav1"}}, Format{"Wma2", "a.wma", {"-c:a", "wmav2", "-b:a", "128k"}},
        Format{"Wma2Mono22kHz", "a.wma", {"-c:a", "wmav2", "-b:a", "48k"}, 22050, 1},
        Format{"Wmv", "a.wmv", withPicture + QStringList{"-c:v", "wmv2", "-c:a", "wmav2"}},
        Format{"M4aAac", "a.m4a", {}, 44100, 2, 0, true}, Format{"M4aAacMono48kHz", "a.m4a", {}, 48000, 1, 0, true},
        Format{"M4aAacFragmented", "a.m4a", {"-movflags", "+frag_keyframe+empty_moov"}, 44100, 2, 0, true, 1024},
        Format{"M4aAlac", "a.m4a", {"-c:a", "alac"}},
        Format{"M4aAlac24", "a.m4a", {"-c:a", "alac", "-sample_fmt", "s32p"}},
        Format{"M4aFivePointOne", "a.m4a", {}, 48000, 6, 0, true},
        Format{"Mp4WithVideo", "a.mp4", withPicture + QStringList{"-c:v", "mpeg4"}, 44100, 2, 0, true},
        Format{"Flac16", "a.flac", {}}, Format{"Flac24", "a.flac", {"-sample_fmt", "s32"}, 192000},
        Format{"FlacFivePointOne", "a.flac", {}, 48000, 6},
        Format{"FlacMono", "a.flac", {"-compression_level", "12"}, 16000, 1}, Format{"AacAdts", "a.aac", {}},
        Format{"AacAdtsMono8kHz", "a.aac", {}, 8000, 1}, Format{"Ac3", "a.ac3", {}, 48000},
        Format{"Ac3Of44kHz", "a.ac3", {}}, Format{"Ac3FivePointOne", "a.ac3", {}, 48000, 6},
        Format{"Eac3", "a.eac3", {}, 48000}, Format{"WavPack", "a.wv", {}},
        Format{"WavPackFloat", "a.wv", {"-sample_fmt", "fltp"}},
        Format{"WavPackFivePointOne", "a.wv", {}, 48000, 6}),
    [](const auto& info) { return info.param.name; });

}  // namespace
