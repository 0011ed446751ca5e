#pragma once

#include "engines/EngineSet.h"

#include <memory>

namespace sound {

/// The engines that make real sound on the user's default output.
std::unique_ptr<EngineSet> makeSoundEngines();

}  // namespace sound
