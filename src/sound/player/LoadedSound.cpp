#include "sound/player/LoadedSound.h"

#include <utility>

namespace sound {

LoadedSound::LoadedSound(std::shared_ptr<const SampleSource> source, std::uint64_t serial)
    : samples(std::move(source))
    , number(serial)
    , blockFrames(blockAt(samples->rate()))
{
    for (PlayPath& path : paths)
        path.prepare(samples->rate(), samples->channels(), blockFrames);
    const auto blockSamples = static_cast<size_t>(blockFrames.value * samples->channels());
    leaving.assign(blockSamples, 0.0F);
    coming.assign(blockSamples, 0.0F);
}

}  // namespace sound
