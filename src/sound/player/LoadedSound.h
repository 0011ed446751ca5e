#pragma once

#include "sound/dsp/Block.h"
#include "sound/media/SampleSource.h"
#include "sound/player/PlayPath.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace sound {

/// A sound in a player, with all that playing it needs, so that the render thread has nothing to allocate.
///
/// Made and destroyed on the main thread; lent to the render thread through Transport, which tells when it has let
/// go (Snapshot::sound). source() may be read by both.
class LoadedSound
{
public:
    /// @p serial is different for each sound of a player, from 1 on.
    LoadedSound(std::shared_ptr<const SampleSource> source, std::uint64_t serial);

    const SampleSource& source() const { return *samples; }
    std::shared_ptr<const SampleSource> share() const { return samples; }
    std::uint64_t serial() const { return number; }

    /// Frames rendered at a time: about ten milliseconds.
    FrameCount block() const { return blockFrames; }

    PlayPath& path(int index) { return paths[static_cast<std::size_t>(index)]; }
    float* leavingBlock() { return leaving.data(); }
    float* comingBlock() { return coming.data(); }

private:
    std::shared_ptr<const SampleSource> samples;
    std::uint64_t number;
    FrameCount blockFrames;
    PlayPath paths[2];
    std::vector<float> leaving;
    std::vector<float> coming;
};

}  // namespace sound
