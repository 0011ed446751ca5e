#include "sound/disc/DiscTrack.h"

#include "sound/SoundFiles.h"
#include "sound/disc/DiscErrors.h"
#include "sound/disc/DiscPlan.h"
#include "sound/disc/SilentWave.h"
#include "sound/disc/TrackSound.h"
#include "sound/media/OpenedFrames.h"

#include <QDir>
#include <cerrno>
#include <cstring>
#include <tuple>

using namespace sound;
using namespace sound::test;

namespace {

std::vector<std::int16_t> read(TrackSound& sound, std::size_t samples)
{
    std::vector<std::int16_t> read(samples);
    sound.read(std::as_writable_bytes(std::span(read)));
    return read;
}

TEST(DiscTrack, ItsSectorsAreRightForEveryRateAndNoFewerThanFourSecondsHave)
{
    const SoundFiles files;
    for (const int rate : {44100, 48000, 88200, 96000, 176400, 192000}) {
        const std::int64_t sector = rate / 75;
        for (const auto& [frames, sectors] :
             std::initializer_list<std::pair<std::int64_t, std::int64_t>>{{1, 300},
                                                                          {299 * sector + 1, 300},
                                                                          {300 * sector, 300},
                                                                          {300 * sector + 1, 301},
                                                                          {345 * sector - 1, 345},
                                                                          {345 * sector, 345},
                                                                          {45'000 * sector, 45'000}}) {
            const auto track = readDiscTrack(silentWave(files.path("a.wav"), {rate}, 2, {frames}));
            ASSERT_TRUE(track) << rate << ' ' << frames;
            EXPECT_EQ(track->sectors(), sectors) << rate << ' ' << frames;
        }
    }
}

TEST(DiscTrack, OfARateThatIsNoMultipleTheLastBegunFrameAndSectorCount)
{
    const SoundFiles files;
    // 50000 Hz: 666.67 frames a sector. 200000 frames are 4 s, and 200001 begin a frame more.
    EXPECT_EQ(readDiscTrack(silentWave(files.path("a.wav"), {50000}, 1, {200'000}))->sectors(), 300);
    EXPECT_EQ(readDiscTrack(silentWave(files.path("a.wav"), {50000}, 1, {200'001}))->sectors(), 301);
    EXPECT_EQ(readDiscTrack(silentWave(files.path("a.wav"), {50000}, 1, {200'001}))->discFrames().value, 176'401);
}

TEST(DiscTrack, WhatHasLessThanADiscIsRefused)
{
    const SoundFiles files;
    EXPECT_FALSE(readDiscTrack(silentWave(files.path("a.wav"), {44099}, 2, {500'000})));
    EXPECT_FALSE(readDiscTrack(silentWave(files.path("a.wav"), {22050}, 2, {500'000})));
    EXPECT_TRUE(readDiscTrack(silentWave(files.path("a.wav"), {44100}, 2, {500'000})));
}

TEST(DiscTrack, OtherFormatsAndWhatIsNoSoundAreRefused)
{
    const SoundFiles files;
    const TestSound sound = sine(440, 44100, 2, 4410);
    for (const char* name : {"a.flac", "a.m4a", "a.aiff", "a.wv", "a.aac"})
        EXPECT_FALSE(readDiscTrack(files.make(name, sound))) << name;
    EXPECT_FALSE(readDiscTrack(files.write("b.wav", "RIFF\1\1\1\1WAVEfmt and nothing else")));
    EXPECT_FALSE(readDiscTrack(files.write("b.mp3", QByteArray(100'000, 'x'))));
    EXPECT_FALSE(readDiscTrack(files.write("b.wma", "")));
    EXPECT_FALSE(readDiscTrack(files.path("missing.wav")));
    EXPECT_FALSE(readDiscTrack(files.folder()));
    EXPECT_FALSE(readDiscTrack(files.folder() + "/nul\0.wav"));
    EXPECT_FALSE(readDiscTrack("/dev/zero"));
}

TEST(DiscTrack, AFormatIsTheContentsWhateverTheNameSays)
{
    const SoundFiles files;
    const TestSound sound = sine(440, 44100, 2, 4410);
    const std::tuple<const char*, const char*, AudioProject::Format> cases[] = {
        {"a.wav", "a.mp3", AudioProject::Wav}, {"b.mp3", "b.wma", AudioProject::Mp3},
        {"c.wma", "c.ogg", AudioProject::Wma}, {"d.ogg", "d.wav", AudioProject::Ogg},
        {"e.mp3", "e", AudioProject::Mp3},
    };
    for (const auto& [made, named, format] : cases) {
        const QString renamed = files.path(named);
        ASSERT_TRUE(QFile::rename(files.make(made, sound), renamed));
        const auto track = readDiscTrack(renamed);
        ASSERT_TRUE(track) << named;
        EXPECT_EQ(track->format, format) << named;
    }
}

TEST(DiscTrack, WhereTheContentDoesNotTellTheNameDoes)
{
    const SoundFiles files;
    const QByteArray mp3 = contentOf(files.make("a.mp3", sine(440, 44100, 2, 44100)));
    const auto track = readDiscTrack(files.write("b.MP3", QByteArray(3000, '\0') + mp3));
    ASSERT_TRUE(track);
    EXPECT_EQ(track->format, AudioProject::Mp3);
}

TEST(DiscTrack, AFileIsChangedWhenItsLengthOrRateIs)
{
    const SoundFiles files;
    const QString path = silentWave(files.path("a.wav"), {44100}, 2, {200'000});
    const DiscTrack track = *readDiscTrack(path);
    EXPECT_FALSE(changeOf(track));

    silentWave(path, {44100}, 2, {200'000});  // the same once more
    EXPECT_FALSE(changeOf(track));

    silentWave(path, {44100}, 2, {199'999});
    ASSERT_TRUE(changeOf(track));
    EXPECT_EQ(changeOf(track)->kind, DiscWriteError::sourceFile);
    EXPECT_EQ(changeOf(track)->fileError,
              (DiscFileError{-6, "The file has been changed since it was added", path}));

    silentWave(path, {48000}, 2, {200'000});
    EXPECT_TRUE(changeOf(track));

    files.write("a.wav", "no sound");
    ASSERT_TRUE(changeOf(track));
    EXPECT_EQ(changeOf(track)->fileError, (DiscFileError{-6, "The file is no sound any more", path}));

    QFile::remove(path);
    ASSERT_TRUE(changeOf(track));
    EXPECT_EQ(changeOf(track)->fileError, (DiscFileError{ENOENT, "No such file or directory", path}));
}

TEST(TrackSound, SixteenBitsPassAsTheyAre)
{
    const SoundFiles files;
    // All steps there are, one channel up and the other down.
    QByteArray wave;
    for (const std::uint8_t byte : waveHead({44100}, 2, WaveSamples::Pcm16, {65536}))
        wave.append(static_cast<char>(byte));
    std::vector<std::int16_t> steps;
    for (int step = -32768; step <= 32767; ++step) {
        steps.push_back(static_cast<std::int16_t>(step));
        steps.push_back(static_cast<std::int16_t>(-1 - step));
    }
    wave.append(reinterpret_cast<const char*>(steps.data()), static_cast<qsizetype>(2 * steps.size()));
    const DiscTrack track = *readDiscTrack(files.write("a.wav", wave));
    const OpenedTrackSound opened = TrackSound::open(track);
    ASSERT_TRUE(opened.sound);
    std::vector<std::int16_t> got = read(*opened.sound, 1000);
    const std::vector<std::int16_t> rest = read(*opened.sound, steps.size());
    got.insert(got.end(), rest.begin(), rest.end());
    steps.resize(got.size());  // and silence
    EXPECT_TRUE(got == steps);
    EXPECT_EQ(opened.sound->missing().value, 0);
}

TEST(TrackSound, WhatIsConvertedKeepsItsPlaceAndItsLength)
{
    const SoundFiles files;
    // A click at one second of two.
    TestSound click{96000, 1, std::vector<float>(192'000)};
    click.samples[96'000] = 0.5F;
    const DiscTrack track = *readDiscTrack(files.make("a.wav", click, {"-c:a", "pcm_f32le"}));
    const OpenedTrackSound opened = TrackSound::open(track);
    ASSERT_TRUE(opened.sound);
    const std::vector<std::int16_t> got = read(*opened.sound, 2 * 100'000);
    const auto highest = std::max_element(got.begin(), got.end()) - got.begin();
    EXPECT_EQ(highest, 2 * 44'100);
    EXPECT_EQ(got[2 * 44'100], got[2 * 44'100 + 1]);
    const auto silent = [](std::int16_t sample) { return sample == 0; };
    EXPECT_TRUE(std::all_of(got.begin() + 2 * 88'200, got.end(), silent));
}

TEST(TrackSound, MoreThanTwoChannelsAreFoldedAsThePlayerDoes)
{
    const SoundFiles files;
    TestSound sound{44100, 6, {}};
    for (int frame = 0; frame < 20'000; ++frame) {
        for (int channel = 0; channel < 6; ++channel)
            sound.samples.push_back(0.1F * std::sin(0.01F * static_cast<float>(frame * (channel + 1))));
    }
    const DiscTrack track = *readDiscTrack(files.make("a.wav", sound));
    const OpenedTrackSound opened = TrackSound::open(track);
    ASSERT_TRUE(opened.sound);
    const std::vector<std::int16_t> got = read(*opened.sound, 40'000);
    std::vector<float> played;
    const OpenedFrames frames = openFrames(track.file);
    while (frames.stream->next(played)) {
    }
    ASSERT_EQ(played.size(), got.size());
    double worst = 0;
    for (std::size_t index = 0; index < got.size(); ++index)
        worst = std::max(worst, std::abs(got[index] - 32768.0 * played[index]));
    EXPECT_LE(worst, 1.5);  // rounding and dither
    EXPECT_GT(*std::max_element(got.begin(), got.end()), 3000);
}

TEST(TrackSound, WhatIsNoLongerThereWhenItIsReadIsMissingAndSilent)
{
    const SoundFiles files;
    const QString path = files.make("a.wav", sine(440, 44100, 2, 100'000));
    const DiscTrack track = *readDiscTrack(path);
    const OpenedTrackSound opened = TrackSound::open(track);
    ASSERT_TRUE(opened.sound);
    read(*opened.sound, 2 * 1000);
    EXPECT_EQ(opened.sound->missing().value, 0);
    ASSERT_TRUE(QFile::resize(path, QFileInfo(path).size() - 4 * 30'000));
    const std::vector<std::int16_t> rest = read(*opened.sound, 2 * 99'000);
    EXPECT_EQ(opened.sound->missing().value, 30'000);
    const auto silent = [](std::int16_t sample) { return sample == 0; };
    EXPECT_TRUE(std::all_of(rest.begin() + 2 * 69'000, rest.end(), silent));
}

TEST(TrackSound, AFileThatIsAnotherOneNowIsNotOpened)
{
    const SoundFiles files;
    const QString path = silentWave(files.path("a.wav"), {44100}, 2, {200'000});
    const DiscTrack track = *readDiscTrack(path);
    silentWave(path, {44100}, 2, {200'001});
    const OpenedTrackSound changed = TrackSound::open(track);
    EXPECT_FALSE(changed.sound);
    EXPECT_EQ(changed.error, changedSourceError(track));
    QFile::remove(path);
    const OpenedTrackSound gone = TrackSound::open(track);
    EXPECT_FALSE(gone.sound);
    EXPECT_EQ(gone.error.fileError.code, ENOENT);
}

}  // namespace
