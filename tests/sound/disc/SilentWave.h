#pragma once

#include "sound/media/WaveHead.h"

#include <gtest/gtest.h>
#include <QFile>
#include <QString>

namespace sound::test {

/// Makes a WAV file of silence, 16 bits, that takes next to no room on the disc however long it is.
inline QString silentWave(const QString& path, SampleRate rate, int channels, FrameCount length)
{
    const std::vector<std::uint8_t> head = waveHead(rate, channels, WaveSamples::Pcm16, length);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(reinterpret_cast<const char*>(head.data()), static_cast<qint64>(head.size()));
    EXPECT_TRUE(file.resize(static_cast<qint64>(head.size()) + length.value * channels * 2));
    return path;
}

}  // namespace sound::test
