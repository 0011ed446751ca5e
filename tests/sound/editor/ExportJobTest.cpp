#include "sound/editor/ExportJob.h"

#include "sound/SoundFiles.h"
#include "sound/editor/MemoryStream.h"

#include <gtest/gtest.h>
#include <QDir>
#include <chrono>
#include <set>
#include <thread>

using namespace sound;
using namespace sound::test;
using SoundFiles = sound::test::SoundFiles;

namespace {

std::unique_ptr<ExportJob> jobFor(const QString& path, const Changes& changes, const MemorySound& sound,
                                  FrameCount there)
{
    auto stream = std::make_unique<MemoryStream>(sound);
    stream->endAfter(there);
    auto part = std::make_unique<SourcePart>(std::move(stream), FramePosition{0}, sound.length());
    auto rendition = std::make_unique<Rendition>(std::move(part), RenditionSettings{changes, 1, cdRate, 2}, 2);
    return std::make_unique<ExportJob>(std::move(rendition),
                                       SoundFileWriter::create(path, wavFormat(), cdRate, 2).writer);
}

std::set<short> percentsUntilFinished(const ExportJob& job)
{
    std::set<short> percents;
    short last = 0;
    for (bool finished = false; !finished;) {
        finished = job.finished();
        const short percent = job.percent();
        EXPECT_GE(percent, last);
        last = percent;
        percents.insert(percent);
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
    return percents;
}

TEST(ExportJobTest, TellsManyPercentsOfAStretchThatIsOnePieceLong)
{
    const SoundFiles files;
    const auto job = jobFor(files.path("a.wav"), {0.5, 1, 1}, noiseSound(cdRate, 2, {5 * 44100}), {5 * 44100});
    const std::set<short> percents = percentsUntilFinished(*job);
    EXPECT_GT(percents.size(), 40U);
    EXPECT_EQ(*percents.rbegin(), 100);
    EXPECT_EQ(job->error(), EngineError::None);
    EXPECT_TRUE(QFile::exists(files.path("a.wav")));
}

TEST(ExportJobTest, BearsALittleDamageAndRefusesToTakeMuchOfItForSilence)
{
    const SoundFiles files;
    const MemorySound sound = noiseSound(cdRate, 2, {3 * 44100});
    for (const Changes& changes : {Changes{}, Changes{0.8, 1, 1}}) {
        const auto bearable = jobFor(files.path("a.wav"), changes, sound, {3 * 44100 - 20'000});
        percentsUntilFinished(*bearable);
        EXPECT_EQ(bearable->error(), EngineError::None);
        EXPECT_TRUE(QFile::remove(files.path("a.wav")));

        const auto cut = jobFor(files.path("a.wav"), changes, sound, {2 * 44100});
        percentsUntilFinished(*cut);
        EXPECT_EQ(cut->error(), EngineError::InvalidSoundFile);
        EXPECT_TRUE(QDir(files.folder()).isEmpty());
    }
}

TEST(ExportJobTest, ThatGoesBeforeItsEndLeavesNoFile)
{
    const SoundFiles files;
    auto job = jobFor(files.path("a.wav"), {0.5, 1, 1}, noiseSound(cdRate, 2, {20 * 44100}), {20 * 44100});
    job.reset();
    EXPECT_TRUE(QDir(files.folder()).isEmpty());
}

}  // namespace
