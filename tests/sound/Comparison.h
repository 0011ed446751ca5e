#pragma once

#include "sound/units/Frames.h"

#include <span>

/// Checks of whole sounds. One that fails leaves what was wanted, what came, and the difference of the two as WAV
/// files named after the test in the folder that it runs in.
namespace sound::test {

/// The same to the bit.
void expectSame(std::span<const float> actual, std::span<const float> wanted, int channels, SampleRate rate);

/// No sample further than @p tolerance from the wanted one.
void expectClose(std::span<const float> actual, std::span<const float> wanted, double tolerance, int channels,
                 SampleRate rate);

}  // namespace sound::test
