#pragma once

#include "engines/EngineSet.h"

#include <QString>
#include <functional>
#include <memory>

class RecorderBarMeters;

namespace sound {

/// The engines that make real sound on the user's default output, and record from what the user has. @p
/// makeBarMeters makes the level bars of a recorder: windows are nothing that sound knows of. Disc
/// images go into @p recordingsFolder.
std::unique_ptr<EngineSet> makeSoundEngines(std::function<std::unique_ptr<RecorderBarMeters>()> makeBarMeters,
                                            const QString& recordingsFolder);

}  // namespace sound
