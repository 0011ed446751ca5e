#pragma once

#include "sound/disc/DiscPlan.h"
#include "sound/media/SoundTags.h"

#include <vector>

namespace sound {

/// What a track is called, by its file.
DiscTexts trackTexts(const SoundTags& tags);

/// What a disc of tracks of these files is called: as their album, where all are of one.
DiscTexts discTexts(const std::vector<SoundTags>& tracks);

}  // namespace sound
