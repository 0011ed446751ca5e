#pragma once

#include "wave/StereoSound.h"

#include <filesystem>
#include <string>

namespace practice {

/// Writes an MP3 of variable bit rate with an ID3 tag. Returns what went wrong, empty where nothing did. The same
/// sound gives the same file.
std::string writeMp3(const std::filesystem::path& path, const StereoSound& sound, const std::string& title,
                     const std::string& artist);

}  // namespace practice
