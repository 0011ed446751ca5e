#pragma once

#include "wave/StereoSound.h"

#include <filesystem>
#include <optional>

/// Reads a RIFF WAVE file of one or two channels, 16-bit integers or 32-bit floats; a single channel comes back on
/// both sides. Nothing where the file cannot be read or is of another kind. A file whose recorder was interrupted
/// before it could write the length is read to its end.
std::optional<StereoSound> readWav(const std::filesystem::path& path);

/// Writes 16-bit RIFF WAVE. Samples beyond full scale are cut to it. Returns whether all of it was written.
bool writeWav(const std::filesystem::path& path, const StereoSound& sound);

/// Writes 32-bit floats, every sample as it is.
bool writeFloatWav(const std::filesystem::path& path, const StereoSound& sound);
