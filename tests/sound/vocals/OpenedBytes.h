#pragma once

#include "sound/SoundFiles.h"
#include "sound/vocals/WaveInput.h"

#include <gtest/gtest.h>
#include <QByteArray>
#include <vector>

namespace sound::test {

/// Stands for a length that was not known when it was written.
constexpr std::uint32_t allOnes = 0xFFFFFFFF;

constexpr auto done = VocalRemoval::Done;

/// Opens a file that holds these bytes.
inline OpenedWaveInput openBytes(const QByteArray& bytes)
{
    const SoundFiles files;
    return WaveInput::open(files.write("a.wav", bytes));
}

inline QByteArray framesOf(const WaveInput& input, FramePosition from, FrameCount count)
{
    std::vector<std::uint8_t> packed(static_cast<std::size_t>(count.value * bytesPerFrame(input.samples())));
    EXPECT_TRUE(input.read(from, packed));
    return {reinterpret_cast<const char*>(packed.data()), static_cast<qsizetype>(packed.size())};
}

inline QByteArray allFramesOf(const WaveInput& input)
{
    return framesOf(input, {0}, input.length());
}

}  // namespace sound::test
