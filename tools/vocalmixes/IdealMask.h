#pragma once

#include "vocalmixes/Mix.h"

namespace vocalmixes {

/// What a remover would leave that knows the parts, and can only weaken what is in the mix: between the cut-offs,
/// every moment of every frequency of each channel by the accompaniment's part in its energy. No remover that has
/// to find out the parts comes near it.
StereoSound idealResult(const Mix& mix, double lowCutOff, double highCutOff);

}  // namespace vocalmixes
