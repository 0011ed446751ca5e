#include "sound/media/DecodedSound.h"

#include "sound/SoundFiles.h"

#include <gtest/gtest.h>
#include <cmath>

using sound::DecodedSound;
using sound::FrameCount;
using sound::FramePosition;
using sound::test::SoundFiles;

namespace {

constexpr int framesPerSector = 588;
constexpr int sectorsPerTrack = 300;

QByteArray number(std::uint32_t value, int size)
{
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes.append(static_cast<char>(value >> (8 * i)));
    return bytes;
}

/// What a CD shows in the place of a track's sound.
QByteArray stub(int track, std::uint32_t start = 0, std::uint32_t length = sectorsPerTrack)
{
    return QByteArray("RIFF") + number(36, 4) + "CDDAfmt " + number(24, 4) + number(1, 2) +
           number(static_cast<std::uint32_t>(track), 2) + number(0x1234, 4) + number(start, 4) + number(length, 4) +
           number(0, 4) + number(0, 4);
}

/// Sixteen-bit stereo of one tone, two seconds and a little.
QByteArray trackOf(double hertz)
{
    QByteArray bytes;
    const auto tone = sound::test::sine(hertz, 44100, 2, sectorsPerTrack * framesPerSector);
    for (const float sample : tone.samples)
        bytes += number(static_cast<std::uint32_t>(std::lrint(sample * 32767.0F)), 2);
    return bytes;
}

class CdImage : public ::testing::Test
{
protected:
    CdImage()
        : first(trackOf(440))
        , second(trackOf(1000))
    {
        files.write("disc.bin", first + second);
        files.write("disc.cue",
                    "FILE \"disc.bin\" BINARY\n"
                    "  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n"
                    "  TRACK 02 AUDIO\n    INDEX 01 00:04:00\n");
    }

    static std::vector<float> expectedOf(const QByteArray& track)
    {
        std::vector<float> samples;
        for (qsizetype i = 0; i + 1 < track.size(); i += 2) {
            const int low = static_cast<std::uint8_t>(track[i]);
            const int high = static_cast<std::int8_t>(track[i + 1]);
            samples.push_back(static_cast<float>(high * 256 + low) / 32768.0F);
        }
        return samples;
    }

    SoundFiles files;
    QByteArray first;
    QByteArray second;
};

TEST_F(CdImage, ATrackIsReadBitForBit)
{
    for (const auto& [number, bytes] : {std::pair(1, &first), std::pair(2, &second)}) {
        const auto opened = DecodedSound::open(files.write("Track.cda", stub(number)));
        ASSERT_TRUE(opened.sound) << number;
        const DecodedSound& sound = *opened.sound;
        EXPECT_EQ(sound.rate().hertz, 44100);
        EXPECT_EQ(sound.channels(), 2);
        ASSERT_EQ(sound.length().value, sectorsPerTrack * framesPerSector);
        ASSERT_TRUE(sound.waitFor(sound.length()));
        std::vector<float> samples(static_cast<std::size_t>(2 * sound.length().value));
        sound.read(FramePosition{0}, sound.length(), samples.data());
        EXPECT_EQ(samples, expectedOf(*bytes)) << number;
    }
}

TEST_F(CdImage, TheLengthIsTheDiscsWhateverTheStubClaims)
{
    const auto opened = DecodedSound::open(files.write("Track02.CDA", stub(2, 0xFFFFFFFF, 0xFFFFFFFF)));
    ASSERT_TRUE(opened.sound);
    EXPECT_EQ(opened.sound->length().value, sectorsPerTrack * framesPerSector);
}

TEST_F(CdImage, ATrackThatTheDiscDoesNotHaveIsRefused)
{
    for (const int track : {0, 3, 99, 170, 65535}) {
        const auto opened = DecodedSound::open(files.write("Track.cda", stub(track)));
        EXPECT_FALSE(opened.sound);
        EXPECT_EQ(opened.error, EngineError::InvalidCdTrack) << track;
    }
}

TEST_F(CdImage, ATrackOfDataIsRefused)
{
    files.write("disc.bin", QByteArray(2352 * 300, 'd') + second);
    files.write("disc.cue",
                "FILE \"disc.bin\" BINARY\n"
                "  TRACK 01 MODE1/2352\n    INDEX 01 00:00:00\n"
                "  TRACK 02 AUDIO\n    INDEX 01 00:04:00\n");
    EXPECT_EQ(DecodedSound::open(files.write("Track.cda", stub(1))).error, EngineError::NotAnAudioTrack);
    EXPECT_TRUE(DecodedSound::open(files.write("Track.cda", stub(2))).sound);
}

TEST_F(CdImage, ACueSheetThatMakesNoSenseIsADiscThatIsNotReady)
{
    for (const char* sheet : {"", "nonsense", "FILE \"disc.bin\" BINARY\n", "TRACK 01 AUDIO\nINDEX 01 99:99:99\n",
                              "FILE \"disc.bin\" BINARY\n  TRACK 200 AUDIO\n    INDEX 01 00:00:00\n",
                              "FILE \"disc.bin\" BINARY\n  TRACK 01 AUDIO\n"}) {
        files.write("disc.cue", sheet);
        const auto opened = DecodedSound::open(files.write("Track.cda", stub(1)));
        if (opened.sound)
            EXPECT_LE(opened.sound->length().value, 2 * sectorsPerTrack * framesPerSector) << sheet;
        else
            EXPECT_NE(opened.error, EngineError::None) << sheet;
    }
}

TEST(CdTrack, AStubThatLiesOnNoDiscNamesNoDrive)
{
    const SoundFiles files;
    EXPECT_EQ(DecodedSound::open(files.write("Track01.cda", stub(1))).error, EngineError::InvalidDrive);
}

TEST(CdTrack, AFileThatIsNoStubIsNoSound)
{
    const SoundFiles files;
    EXPECT_EQ(DecodedSound::open(files.path("missing.cda")).error, EngineError::InvalidSoundFile);
    EXPECT_EQ(DecodedSound::open(files.write("a.cda", "")).error, EngineError::InvalidSoundFile);
    EXPECT_EQ(DecodedSound::open(files.write("a.cda", stub(1).left(43))).error, EngineError::InvalidSoundFile);
    EXPECT_EQ(DecodedSound::open(files.write("a.cda", QByteArray(44, 'x'))).error, EngineError::InvalidSoundFile);
    EXPECT_EQ(DecodedSound::open(files.folder() + "/.cda").error, EngineError::InvalidSoundFile);
}

}  // namespace
