#include "sound/media/OpenedFrames.h"

#include "sound/SoundFiles.h"

#include <gtest/gtest.h>
#include <algorithm>

using sound::openFrames;
using sound::test::SoundFiles;

namespace {

TEST(OpenedFrames, BringsTheFramesOfASoundInOrderAndThenNoMore)
{
    const SoundFiles files;
    const auto made = sound::test::slideWithNoise(44100, 2, 100'000);
    for (const QStringList& arguments : {QStringList{"-c:a", "pcm_f32le"}, QStringList{"-c:a", "adpcm_ms"}}) {
        const QString path = files.make("a.wav", made, arguments);
        const auto opened = openFrames(path);
        ASSERT_TRUE(opened.stream);
        EXPECT_EQ(opened.error, EngineError::None);
        EXPECT_EQ(opened.stream->rate().hertz, 44100);
        EXPECT_EQ(opened.stream->channels(), 2);
        std::vector<float> samples;
        while (opened.stream->next(samples)) {
        }
        EXPECT_EQ(samples, sound::test::decodedByFfmpeg(path, 2));
        EXPECT_EQ(opened.stream->length().value, static_cast<std::int64_t>(samples.size()) / 2);
        const std::size_t all = samples.size();
        EXPECT_FALSE(opened.stream->next(samples));
        EXPECT_EQ(samples.size(), all);
    }
}

TEST(OpenedFrames, ThePaddingOfAnEncoderIsNotBrought)
{
    const SoundFiles files;
    const auto made = sound::test::slideWithNoise(44100, 2, 100'001);
    const auto opened = openFrames(files.make("a.m4a", made));
    ASSERT_TRUE(opened.stream);
    std::vector<float> samples;
    while (opened.stream->next(samples)) {
    }
    EXPECT_EQ(samples.size(), made.samples.size());
}

TEST(OpenedFrames, AfterAStopBringsNoMore)
{
    const SoundFiles files;
    const auto opened = openFrames(files.make("a.flac", sound::test::slideWithNoise(44100, 2, 100'000)));
    ASSERT_TRUE(opened.stream);
    std::vector<float> samples;
    ASSERT_TRUE(opened.stream->next(samples));
    const std::size_t first = samples.size();
    opened.stream->stop();
    EXPECT_FALSE(opened.stream->next(samples));
    EXPECT_EQ(samples.size(), first);
}

TEST(OpenedFrames, WhatIsNoSoundIsToldAsWhatItIs)
{
    const SoundFiles files;
    const auto errorOf = [](const QString& path) {
        const auto opened = openFrames(path);
        EXPECT_EQ(opened.stream == nullptr, opened.error != EngineError::None);
        return opened.error;
    };
    EXPECT_EQ(errorOf(files.path("missing.wav")), EngineError::InvalidSoundFile);
    EXPECT_EQ(errorOf(files.write("text.mp3", QByteArray(10'000, 'a'))), EngineError::InvalidSoundFile);
    EXPECT_EQ(errorOf(files.write("a.cda", "no stub")), EngineError::InvalidSoundFile);
    const QByteArray stub = QByteArray("RIFF\x24\0\0\0CDDAfmt \x18\0\0\0\1\0\1\0", 24) + QByteArray(20, '\0');
    EXPECT_EQ(errorOf(files.write("Track01.cda", stub)), EngineError::InvalidDrive);
}

}  // namespace
