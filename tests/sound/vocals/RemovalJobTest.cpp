#include "sound/vocals/RemovalJob.h"

#include "sound/DiscOf.h"
#include "sound/HandMadeWave.h"
#include "sound/vocals/VocalFiles.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

using namespace sound;
using namespace sound::test;
using namespace std::chrono_literals;
using SoundFiles = sound::test::SoundFiles;

namespace {

constexpr VoicePlace everythingPasses{.lowCutOff = 8000, .highCutOff = 200};

constexpr FrameCount onePiece{1 << 30};

/// To its end.
VocalRemoval doJob(const RemovalSettings& settings, int workers = 2, FrameCount segment = {})
{
    RemovalJob job(settings, workers, segment);
    while (!job.waitFor(1s))
        ;
    return job.finish();
}

class RemovalJobTest : public ::testing::Test
{
protected:
    /// Two files that bear these names.
    RemovalSettings settings(const VoicePlace& place = {}) const
    {
        return {files.path("in.wav"), files.path("out.wav"), place};
    }

    void writeInput(const QByteArray& bytes) const { files.write("in.wav", bytes); }

    /// Whether a job has gone beyond the head of its input: something else is open in the folder.
    bool hasOpened(const QString& input) const
    {
        const QDir descriptors("/proc/self/fd");
        const QStringList numbers = descriptors.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
        return std::ranges::any_of(numbers, [&](const QString& number) {
            const QString opened = QFile::symLinkTarget(descriptors.filePath(number));
            return opened.startsWith(files.folder() + '/') && opened != files.path(input);
        });
    }

    void writeOlderOutput() const { files.write("out.wav", "what was there before"); }

    const SoundFiles files;
};

TEST_F(RemovalJobTest, NeitherTheSegmentsNorTheThreadsShowInWhatComesOut)
{
    const VocalCanceller canceller({lowRate}, {});
    const FrameCount segment{4 * canceller.grid().value};
    for (const std::int64_t length : {std::int64_t{0}, std::int64_t{1}, segment.value - 1, segment.value,
                                      segment.value + 1, 3 * segment.value + 17}) {
        writeInput(noisyWave(length));
        ASSERT_EQ(doJob(settings(), 1, onePiece), VocalRemoval::Done);
        const QByteArray whole = contentOf(files.path("out.wav"));
        EXPECT_EQ(whole.size(), contentOf(files.path("in.wav")).size());
        for (const int workers : {1, 2, 5}) {
            ASSERT_EQ(doJob(settings(), workers, segment), VocalRemoval::Done);
            EXPECT_EQ(contentOf(files.path("out.wav")), whole) << length << " frames, " << workers << " threads";
        }
    }
}

TEST_F(RemovalJobTest, NorDoTheSegmentsThatItChoosesItself)
{
    writeInput(noisyWave(200'000));
    ASSERT_EQ(doJob(settings(), 1, onePiece), VocalRemoval::Done);
    const QByteArray whole = contentOf(files.path("out.wav"));
    ASSERT_EQ(doJob(settings(), 3), VocalRemoval::Done);
    EXPECT_EQ(contentOf(files.path("out.wav")), whole);
}

TEST_F(RemovalJobTest, WhatIsNotTouchedStaysTheSameToTheBitInEveryForm)
{
    constexpr qsizetype frames = 5000;
    std::minstd_rand random(1);
    for (const WaveSamples kind :
         {WaveSamples::Pcm8, WaveSamples::Pcm16, WaveSamples::Pcm24, WaveSamples::Pcm32, WaveSamples::Float32}) {
        QByteArray samples(frames * bytesPerFrame(kind), '\0');
        for (char& byte : samples)
            byte = static_cast<char>(random() >> 8);
        if (kind == WaveSamples::Float32) {
            // Any bits, but for those of no finite number.
            for (qsizetype i = 3; i < samples.size(); i += 4)
                samples[i] = static_cast<char>(samples[i] & 0xBF);
        }
        for (const int rate : {8000, 192'000}) {
            writeInput(waveBytes(kind, rate, samples));
            ASSERT_EQ(doJob(settings(everythingPasses), 2, {2048}), VocalRemoval::Done);
            EXPECT_EQ(framesIn(files.path("out.wav")), samples);
            const auto output = WaveInput::open(files.path("out.wav"));
            ASSERT_TRUE(output.input);
            EXPECT_EQ(output.input->samples(), kind);
            EXPECT_EQ(output.input->rate().hertz, rate);
        }
    }
}

TEST_F(RemovalJobTest, SilenceStaysSilenceInEveryForm)
{
    for (const WaveSamples kind :
         {WaveSamples::Pcm8, WaveSamples::Pcm16, WaveSamples::Pcm24, WaveSamples::Pcm32, WaveSamples::Float32}) {
        const char silence = kind == WaveSamples::Pcm8 ? '\x80' : '\0';
        const QByteArray samples(qsizetype{10'000} * bytesPerFrame(kind), silence);
        writeInput(waveBytes(kind, lowRate, samples));
        ASSERT_EQ(doJob(settings()), VocalRemoval::Done);
        EXPECT_EQ(framesIn(files.path("out.wav")), samples);
    }
}

TEST_F(RemovalJobTest, WhatIsNoFiniteNumberIsSilenceAndDoesNotSpread)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    std::vector<float> samples = slideWithNoise(lowRate, 2, 20'000).samples;
    samples[10'001] = infinity;
    samples[20'000] = -infinity;
    samples[20'001] = std::numeric_limits<float>::quiet_NaN();
    writeInput(waveBytes(lowRate, samples));
    ASSERT_EQ(doJob(settings(everythingPasses)), VocalRemoval::Done);
    const QByteArray passed = framesIn(files.path("out.wav"));
    samples[10'001] = samples[20'000] = samples[20'001] = 0;
    EXPECT_EQ(std::memcmp(passed.constData(), samples.data(), samples.size() * sizeof(float)), 0);

    // Nor do numbers so large that reckoning with them ends beyond all numbers.
    samples[30'000] = std::numeric_limits<float>::max();
    samples[30'002] = -std::numeric_limits<float>::max();
    samples[39'999] = infinity;
    writeInput(waveBytes(lowRate, samples));
    ASSERT_EQ(doJob(settings()), VocalRemoval::Done);
    const QByteArray removed = framesIn(files.path("out.wav"));
    ASSERT_EQ(removed.size(), passed.size());
    for (qsizetype i = 0; i < removed.size(); i += 4) {
        float sample = 0;
        std::memcpy(&sample, removed.constData() + i, sizeof(float));
        ASSERT_TRUE(std::isfinite(sample)) << "sample " << i / 4;
    }
}

TEST_F(RemovalJobTest, TheFolderOfTheOutputIsMade)
{
    writeInput(noisyWave(100));
    ASSERT_EQ(doJob({files.path("in.wav"), files.path("new/folders/out.wav"), {}}), VocalRemoval::Done);
    EXPECT_EQ(everythingIn(files.path("new/folders")), QStringList{"out.wav"});
}

TEST_F(RemovalJobTest, TheOutputTakesThePlaceOfAnOlderOneOnlyWhenItIsWhole)
{
    writeInput(noisyWave(1000));
    writeOlderOutput();
    RemovalJob job(settings(everythingPasses), 2);
    while (!job.waitFor(1s))
        ;
    EXPECT_EQ(job.percent(), 100);
    EXPECT_EQ(contentOf(files.path("out.wav")), "what was there before");
    EXPECT_EQ(job.finish(), VocalRemoval::Done);
    EXPECT_EQ(contentOf(files.path("out.wav")), contentOf(files.path("in.wav")));
    EXPECT_EQ(everythingIn(files.folder()), QStringList({"in.wav", "out.wav"}));
}

TEST_F(RemovalJobTest, AnInputThatIsRefusedLeavesNoOutputAlsoNotAnOlderOne)
{
    const QByteArray data = dataChunk(countingBytes(40));
    const std::vector<std::pair<QByteArray, VocalRemoval>> inputs = {
        {"no sound", VocalRemoval::NotRiff},
        {riff(formChunk({.channels = 1}) + data), VocalRemoval::NotStereo},
        {riff(formChunk({.bits = 12}) + data), VocalRemoval::UnknownSampleSize},
    };
    for (const auto& [bytes, reason] : inputs) {
        writeInput(bytes);
        writeOlderOutput();
        EXPECT_EQ(doJob(settings()), reason);
        EXPECT_EQ(everythingIn(files.folder()), QStringList{"in.wav"});
    }
    ASSERT_TRUE(QFile::remove(files.path("in.wav")));
    writeOlderOutput();
    EXPECT_EQ(doJob(settings()), VocalRemoval::CannotOpenInput);
    EXPECT_EQ(everythingIn(files.folder()), QStringList());
}

TEST_F(RemovalJobTest, ADiscThatFillsUpLeavesNoOutputAlsoNotAnOlderOne)
{
    writeInput(noisyWave(100'000));
    writeOlderOutput();
    {
        const DiscOf full(300'000);
        EXPECT_EQ(doJob(settings()), VocalRemoval::CannotWriteOutput);
    }
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"in.wav"});
}

TEST_F(RemovalJobTest, WhereNoOutputCanBeMadeTheJobFails)
{
    writeInput(noisyWave(100));
    for (const QString& output : {files.path("in.wav/out.wav"), QString("/proc/out.wav"), QString(),
                                  files.path("out.wav") + QChar(QChar::Null)})
        EXPECT_EQ(doJob({files.path("in.wav"), output, {}}), VocalRemoval::CannotWriteOutput);
    EXPECT_EQ(doJob({files.path("in.wav"), files.folder(), {}}), VocalRemoval::CannotWriteOutput);
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"in.wav"});
}

TEST_F(RemovalJobTest, AnInputThatIsCutMeanwhileCannotBeRead)
{
    writeOlderOutput();
    endlessFile(files, "in.wav");
    RemovalJob job(settings(), 2);
    while (!hasOpened("in.wav") && !job.waitFor(1ms))
        ;
    ASSERT_FALSE(job.waitFor(0ms));
    ASSERT_TRUE(QFile::resize(files.path("in.wav"), 1000));
    while (!job.waitFor(1s))
        ;
    EXPECT_EQ(job.finish(), VocalRemoval::CannotReadInput);
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"in.wav"});
}

TEST_F(RemovalJobTest, OneThatIsGivenUpOrGoesBeforeItsEndLeavesNoOutput)
{
    endlessFile(files, "in.wav");
    writeOlderOutput();
    {
        RemovalJob job(settings(), 2);
        EXPECT_FALSE(job.waitFor(10ms));
        EXPECT_EQ(job.result(), VocalRemoval::Done);
        job.giveUp();
        while (!job.waitFor(1s))
            ;
        EXPECT_EQ(job.finish(), VocalRemoval::GivenUp);
    }
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"in.wav"});
    writeOlderOutput();
    {
        const RemovalJob job(settings(), 2);
    }
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"in.wav"});
}

TEST_F(RemovalJobTest, OneThatIsGivenUpWhenAllIsDoneLeavesNoOutputEither)
{
    writeInput(noisyWave(100));
    writeOlderOutput();
    RemovalJob job(settings(), 2);
    while (!job.waitFor(1s))
        ;
    job.giveUp();
    EXPECT_EQ(job.finish(), VocalRemoval::GivenUp);
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"in.wav"});
}

TEST_F(RemovalJobTest, AFileMayBeItsOwnOutput)
{
    const QByteArray sound = noisyWave(50'000);
    writeInput(sound);
    const QString path = files.path("in.wav");
    ASSERT_EQ(doJob({path, path, everythingPasses}, 2, {2048}), VocalRemoval::Done);
    EXPECT_EQ(contentOf(path), sound);
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"in.wav"});
}

TEST_F(RemovalJobTest, AnInputIsNeverTakenAwayWhateverItIsCalledAsOutput)
{
    writeInput("no sound");
    const QByteArray path = QFile::encodeName(files.path("in.wav"));
    ASSERT_EQ(::symlink(path.constData(), QFile::encodeName(files.path("symbolic.wav")).constData()), 0);
    ASSERT_EQ(::link(path.constData(), QFile::encodeName(files.path("linked.wav")).constData()), 0);
    for (const QString& name : {QString("in.wav"), "../" + QDir(files.folder()).dirName() + "/in.wav",
                                QString("symbolic.wav"), QString("linked.wav")})
        EXPECT_EQ(doJob({files.path("in.wav"), files.path(name), {}}), VocalRemoval::NotRiff);
    EXPECT_EQ(everythingIn(files.folder()), QStringList({"in.wav", "linked.wav", "symbolic.wav"}));
    EXPECT_EQ(contentOf(files.path("in.wav")), "no sound");
}

}  // namespace
