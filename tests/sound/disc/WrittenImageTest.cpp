#include "sound/disc/CdImageReader.h"
#include "sound/disc/DiscEngineTest.h"
#include "sound/media/CdTrack.h"

#include <cmath>
#include <cstring>
#include <numbers>
#include <span>

using namespace sound;
using namespace sound::test;

namespace {

constexpr double steps = 32768;

/// What rounding and the dither can put a sample off by.
constexpr double dithered = 1.5;

/// What a track is measured by.
enum class Measure
{
    Bits,       ///< The samples that are in the file.
    Decoded,    ///< What the ffmpeg program makes of the file.
    Converted,  ///< The same, brought to the rate of discs.
    Tone,       ///< The tone that was recorded.
};

struct Source
{
    const char* file;
    double hertz;
    int rate;
    int channels;
    std::int64_t frames;
    QStringList arguments;
    std::int64_t sectors;
    Measure measure;
    double tolerance;  // in steps of 16 bits
};

/// Twelve tracks of all formats, rates and channels. Sectors: frames at 44100 Hz by 588, and the last begun one.
const std::vector<Source>& sources()
{
    using enum Measure;
    static const std::vector<Source> all = {
        {"01.wav", 440, 44100, 2, 300 * 588, {}, 300, Bits, 0},
        {"02.wav", 550, 44100, 2, 300 * 588 + 1, {}, 301, Bits, 0},
        {"03.wav", 660, 44100, 2, 320 * 588 - 1, {}, 320, Bits, 0},
        {"04.wav", 700, 44100, 2, 44100, {}, 300, Bits, 0},  // a second, and silence for the other three
        {"05.wav", 770, 44100, 1, 310 * 588, {}, 310, Bits, 0},
        {"06.wav", 880, 48000, 2, 301 * 640, {}, 301, Tone, dithered + 1},
        {"07.wav", 330, 96000, 1, 301 * 1280 + 1, {}, 302, Tone, dithered + 1},
        {"08.wav", 220, 44100, 2, 305 * 588, {"-c:a", "pcm_s24le"}, 305, Decoded, dithered},
        {"09.mp3", 440, 44100, 2, 304 * 588, {"-b:a", "320k"}, 304, Decoded, dithered},
        {"10.mp3", 500, 48000, 1, 302 * 640, {"-b:a", "160k"}, 302, Converted, dithered + 1},
        {"11.wma", 600, 44100, 2, 44100 * 4, {"-b:a", "192k"}, 0, Decoded, dithered},
        {"12.ogg", 700, 44100, 2, 301 * 588, {"-q:a", "9"}, 301, Decoded, dithered},
    };
    return all;
}

std::vector<int> samplesOf(const QByteArray& bytes)
{
    std::vector<std::int16_t> samples(static_cast<std::size_t>(bytes.size()) / 2);
    std::memcpy(samples.data(), bytes.constData(), samples.size() * 2);
    return {samples.begin(), samples.end()};
}

/// The samples of a WAV file of 16 bits and 44100 Hz; a single channel's twice.
std::vector<int> exactSamples(const QString& file, int channels)
{
    QByteArray bytes;
    runFfmpeg({"-i", "file:" + file, "-f", "s16le", "pipe:1"}, {}, &bytes);
    std::vector<int> stereo;
    for (const int sample : samplesOf(bytes))
        stereo.insert(stereo.end(), channels == 1 ? 2 : 1, sample);
    return stereo;
}

/// What the ffmpeg program makes of one channel at another rate, on two.
std::vector<float> convertedByFfmpeg(const QString& file)
{
    const QTemporaryDir folder;
    const QString converted = folder.filePath("converted.wav");
    runFfmpeg({"-i", "file:" + file, "-af", "aresample=resampler=soxr:precision=28:osr=44100", "-c:a", "pcm_f32le",
               "file:" + converted});
    std::vector<float> stereo;
    for (const float sample : decodedByFfmpeg(converted, 1))
        stereo.insert(stereo.end(), 2, sample);
    return stereo;
}

/// How far the track is from what is wanted, at its worst; what is wanted beyond its end is silence.
double worstDifference(const std::vector<int>& track, const std::vector<double>& wanted)
{
    double worst = wanted.size() <= track.size() ? 0 : HUGE_VAL;
    for (std::size_t index = 0; index < track.size(); ++index)
        worst = std::max(worst, std::abs(track[index] - (index < wanted.size() ? wanted[index] : 0)));
    return worst;
}

class WrittenImageTest : public DiscEngineTest
{
protected:
    void addAll()
    {
        for (const Source& source : sources()) {
            const QString file = files.make(
                source.file, sine(source.hertz, source.rate, source.channels, source.frames), source.arguments);
            ASSERT_TRUE(add(file)) << source.file;
        }
    }

    /// The cue sheet that was not there when this was asked last.
    QString newSheet()
    {
        const QStringList before = std::exchange(sheets, QDir(imageFolder()).entryList({"*.cue"}));
        for (const QString& sheet : sheets) {
            if (!before.contains(sheet))
                return QDir(imageFolder()).filePath(sheet);
        }
        return {};
    }

    /// In steps of 16 bits, left and right.
    static std::vector<double> soundIn(const Source& source, const QString& file)
    {
        std::vector<double> wanted;
        switch (source.measure) {
        case Measure::Bits:
            for (const int sample : exactSamples(file, source.channels))
                wanted.push_back(sample);
            EXPECT_EQ(wanted.size(), static_cast<std::size_t>(2 * source.frames));
            break;
        case Measure::Decoded:
            for (const float sample : decodedByFfmpeg(file, 2))
                wanted.push_back(sample * steps);
            break;
        case Measure::Converted:
            for (const float sample : convertedByFfmpeg(file))
                wanted.push_back(sample * steps);
            break;
        case Measure::Tone:
            break;
        }
        return wanted;
    }

    void expectSoundOf(const Source& source, const std::vector<int>& track)
    {
        if (source.measure == Measure::Tone) {
            expectTone(source, track);
            return;
        }
        const std::vector<double> wanted = soundIn(source, files.path(source.file));
        EXPECT_LE(worstDifference(track, wanted), source.tolerance) << source.file;
    }

    /// Around begin and end a converter rings, for there the tone is cut.
    static void expectTone(const Source& source, const std::vector<int>& track)
    {
        const std::int64_t frames = source.frames * 44100 / source.rate;
        const std::int64_t edge = 4000;
        double worst = 0;
        for (std::int64_t frame = edge; frame < frames - edge; ++frame) {
            const double angle = 2 * std::numbers::pi * source.hertz * static_cast<double>(frame) / 44100;
            for (const std::int64_t channel : {0, 1}) {
                const int sample = track[static_cast<std::size_t>(2 * frame + channel)];
                worst = std::max(worst, std::abs(sample - 0.5 * steps * std::sin(angle)));
            }
        }
        EXPECT_LE(worst, source.tolerance) << source.file;
    }

    /// What a program that rips CDs finds on it, track by track.
    std::vector<QByteArray> expectDisc(const CdImageReader& disc, long pause)
    {
        std::vector<QByteArray> ripped;
        EXPECT_TRUE(disc.isOpen());
        if (!disc.isOpen() || disc.tracks() != 12) {
            ADD_FAILURE() << "there are no twelve tracks";
            return ripped;
        }
        long sector = 0;
        for (int number = 1; number <= 12; ++number) {
            const Source& source = sources()[static_cast<std::size_t>(number - 1)];
            EXPECT_EQ(disc.start(number), sector) << number;
            const long length = disc.end(number) - disc.start(number);
            EXPECT_EQ(length, project().GetTrackLength(number));
            if (source.sectors > 0) {
                EXPECT_EQ(length, source.sectors) << source.file;
            }
            ripped.push_back(disc.sound(number));
            sector += length;
            if (number < 12) {
                EXPECT_EQ(disc.sound(sector, sector + pause), QByteArray(pause * Sectors::bytes, '\0'));
                sector += pause;
            }
        }
        EXPECT_EQ(disc.discEnd(), sector);
        EXPECT_EQ(sector, project().GetRequiredSpace() + 11 * pause);
        return ripped;
    }

    QStringList sheets;
};

TEST_F(WrittenImageTest, TwelveTracksOfAllFormatsAreReadBackAsAnAudioCd)
{
    addAll();
    project().SetCacheFiles(true);
    ASSERT_EQ(write(imageWriter()), DiscStage::Completed);
    const std::vector<QByteArray> ripped = expectDisc(CdImageReader(newSheet()), Sectors::pause);
    ASSERT_EQ(ripped.size(), 12U);
    for (std::size_t track = 0; track < ripped.size(); ++track)
        expectSoundOf(sources()[track], samplesOf(ripped[track]));

    project().SetCacheFiles(false);
    project().SetWriteMode(AudioProject::discAtOnce);
    ASSERT_EQ(write(imageWriter()), DiscStage::Completed);
    EXPECT_TRUE(expectDisc(CdImageReader(newSheet()), 0) == ripped);
}

/// A file that stands for a track of the disc beside it.
QByteArray trackStub(int track)
{
    QByteArray bytes(44, '\0');
    bytes.replace(0, 4, "RIFF");
    bytes.replace(8, 8, "CDDAfmt ");
    bytes[22] = static_cast<char>(track);
    return bytes;
}

TEST_F(WrittenImageTest, ThePlayerOpensItsTracks)
{
    ASSERT_TRUE(add(tone("a.wav", 4.1, 440)));
    ASSERT_TRUE(add(tone("b.wav", 4.5, 1000)));
    project().SetWriteMode(AudioProject::discAtOnce);
    ASSERT_EQ(write(imageWriter()), DiscStage::Completed);
    for (int track = 1; track <= 2; ++track) {
        const QString stub = files.write(QStringLiteral("Recordings/Track0%1.cda").arg(track), trackStub(track));
        const OpenedFrames opened = openCdTrack(stub);
        ASSERT_TRUE(opened.stream) << track;
        EXPECT_EQ(opened.stream->length().value, project().GetTrackLength(track) * Sectors::frames);
        std::vector<float> samples;
        while (opened.stream->next(samples)) {
        }
        std::vector<float> wanted = decodedByFfmpeg(project().GetTrackFile(track), 2);
        wanted.resize(static_cast<std::size_t>(opened.stream->length().value * 2));
        EXPECT_TRUE(samples == wanted) << track;
    }
}

TEST_F(WrittenImageTest, ADiscIsCalledAsItsFilesAre)
{
    const TestSound sound = sine(440, 44100, 2, 44100);
    const QStringList album{"-metadata", "album=Songs of \"Home\"", "-metadata", "album_artist=The Band"};
    ASSERT_TRUE(add(files.make(
        "a.mp3", sound, album + QStringList{"-metadata", "title=First \"one\"", "-metadata", "artist=Ann"})));
    ASSERT_TRUE(add(files.make("b.mp3", sound,
                               album + QStringList{"-metadata", "title=Two\nlines", "-metadata", "artist=Bob"})));
    ASSERT_TRUE(add(files.make("c \"ö\" 漢.wma", sound, album)));
    ASSERT_EQ(write(imageWriter()), DiscStage::Completed);
    const CdImageReader disc(newSheet());
    ASSERT_TRUE(disc.isOpen());
    EXPECT_EQ(disc.text(CDTEXT_FIELD_TITLE, 0), "Songs of 'Home'");
    EXPECT_EQ(disc.text(CDTEXT_FIELD_PERFORMER, 0), "The Band");
    EXPECT_EQ(disc.text(CDTEXT_FIELD_TITLE, 1), "First 'one'");
    EXPECT_EQ(disc.text(CDTEXT_FIELD_PERFORMER, 1), "Ann");
    EXPECT_EQ(disc.text(CDTEXT_FIELD_TITLE, 2), "Two lines");
    EXPECT_EQ(disc.text(CDTEXT_FIELD_PERFORMER, 2), "Bob");
    EXPECT_EQ(disc.text(CDTEXT_FIELD_TITLE, 3), "");
}

}  // namespace
