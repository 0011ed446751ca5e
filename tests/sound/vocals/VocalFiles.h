#pragma once

#include "sound/SoundFiles.h"
#include "sound/media/WaveHead.h"
#include "sound/media/WaveSamples.h"
#include "sound/vocals/OpenedBytes.h"

#include <gtest/gtest.h>
#include <QFile>
#include <span>
#include <vector>

/// Files of stereo sound for removals, and what is found in their outputs.
namespace sound::test {

/// Hertz. The lower the rate, the less a voice takes to be removed.
constexpr int lowRate = 8000;

inline QByteArray waveBytes(WaveSamples kind, int rate, const QByteArray& frames)
{
    const auto head = waveHead({rate}, 2, kind, {frames.size() / (2 * bytesPerSample(kind))});
    return QByteArray(reinterpret_cast<const char*>(head.data()), static_cast<qsizetype>(head.size())) + frames;
}

inline QByteArray waveBytes(int rate, const std::vector<float>& samples)
{
    return waveBytes(WaveSamples::Float32, rate,
                     QByteArray(reinterpret_cast<const char*>(samples.data()),
                                static_cast<qsizetype>(samples.size() * sizeof(float))));
}

inline QByteArray noisyWave(std::int64_t frames)
{
    return waveBytes(lowRate, slideWithNoise(lowRate, 2, frames).samples);
}

/// A file with more silence than any removal comes to the end of while a test runs. It takes no room on the disc.
inline QString endlessFile(const SoundFiles& files, const QString& name)
{
    constexpr std::int64_t frames = 8'000'000'000;
    const auto head = waveHead({lowRate}, 2, WaveSamples::Float32, {frames});
    const QString path =
        files.write(name, {reinterpret_cast<const char*>(head.data()), static_cast<qsizetype>(head.size())});
    EXPECT_TRUE(QFile::resize(path, static_cast<qint64>(head.size()) + frames * 8));
    return path;
}

/// What stands in the file as its sound.
inline QByteArray framesIn(const QString& path)
{
    const auto opened = WaveInput::open(path);
    EXPECT_EQ(opened.result, VocalRemoval::Done) << path.toStdString();
    return opened.input ? allFramesOf(*opened.input) : QByteArray();
}

inline std::vector<float> floatsIn(const QString& path)
{
    const QByteArray frames = framesIn(path);
    std::vector<float> samples(static_cast<std::size_t>(frames.size()) / sizeof(float));
    unpackSamples(
        WaveSamples::Float32,
        {reinterpret_cast<const std::uint8_t*>(frames.constData()), static_cast<std::size_t>(frames.size())},
        samples);
    return samples;
}

}  // namespace sound::test
