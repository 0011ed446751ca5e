#include "sound/vocals/WaveOutput.h"

#include "sound/DiscOf.h"
#include "sound/HandMadeWave.h"
#include "sound/SoundFiles.h"
#include "sound/vocals/OpenedBytes.h"

#include <gtest/gtest.h>
#include <QFile>

using namespace sound;
using namespace sound::test;
using SoundFiles = sound::test::SoundFiles;

namespace {

std::span<const std::uint8_t> bytesOf(const QByteArray& bytes, qsizetype from, qsizetype count)
{
    return {reinterpret_cast<const std::uint8_t*>(bytes.constData()) + from, static_cast<std::size_t>(count)};
}

TEST(WaveOutput, PartsThatAreWrittenInAnyOrderMakeOneFile)
{
    const SoundFiles files;
    for (const WaveSamples kind :
         {WaveSamples::Pcm8, WaveSamples::Pcm16, WaveSamples::Pcm24, WaveSamples::Pcm32, WaveSamples::Float32}) {
        const qsizetype frame = bytesPerFrame(kind);
        const QByteArray samples = countingBytes(100 * frame);
        const QString path = files.path("new/folders/a.wav");
        const auto output = WaveOutput::create(path, kind, {22050}, {100});
        ASSERT_TRUE(output);
        EXPECT_TRUE(output->write({60}, bytesOf(samples, 60 * frame, 40 * frame)));
        EXPECT_TRUE(output->write({0}, bytesOf(samples, 0, 25 * frame)));
        EXPECT_TRUE(output->write({25}, bytesOf(samples, 25 * frame, 35 * frame)));
        EXPECT_TRUE(output->bringToDisc());
        EXPECT_FALSE(QFile::exists(path));
        EXPECT_TRUE(output->finish());

        const auto read = WaveInput::open(path);
        ASSERT_EQ(read.result, VocalRemoval::Done);
        EXPECT_EQ(read.input->samples(), kind);
        EXPECT_EQ(read.input->rate().hertz, 22050);
        EXPECT_EQ(allFramesOf(*read.input), samples);
        EXPECT_EQ(decodedByFfmpeg(path, 2).size(), 200U);
        ASSERT_TRUE(QFile::remove(path));
    }
}

TEST(WaveOutput, AFullDiscIsToldAndLeavesTheOldFileUntouched)
{
    const SoundFiles files;
    const QString path = files.write("a.wav", "what was there before");
    {
        const auto output = WaveOutput::create(path, WaveSamples::Pcm16, {44100}, {100'000});
        ASSERT_TRUE(output);
        const DiscOf full(1000);
        EXPECT_FALSE(output->write({0}, bytesOf(countingBytes(4000), 0, 4000)));
        EXPECT_FALSE(output->bringToDisc());
        EXPECT_FALSE(output->finish());
    }
    EXPECT_EQ(contentOf(path), "what was there before");
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"a.wav"});
}

TEST(WaveOutput, WhereNoFileCanBeMadeThereIsNone)
{
    const SoundFiles files;
    const QString file = files.write("plain", "a file, no folder");
    for (const QString& path : {file + "/a.wav", files.folder(), QString("/proc/a.wav"), QString()})
        EXPECT_FALSE(WaveOutput::create(path, WaveSamples::Pcm16, {44100}, {1})) << path.toStdString();
}

}  // namespace
