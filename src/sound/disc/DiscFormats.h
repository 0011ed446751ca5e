#pragma once

#include "engines/AudioProject.h"

#include <QString>
#include <optional>

namespace sound {

/// Which of the formats that discs are made from the file has: what its first bytes say, or else its name's ending.
/// Nothing where it is another or no file. Whether it can be decoded is not looked at.
std::optional<AudioProject::Format> discFormatOf(const QString& path);

}  // namespace sound
