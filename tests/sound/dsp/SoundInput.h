#pragma once

#include "sound/dsp/FrameInput.h"
#include "sound/media/SampleSource.h"

namespace sound::test {

/// Gives a sound's frames from a place on, silence outside it.
class SoundInput : public FrameInput
{
public:
    explicit SoundInput(const SampleSource& source, FramePosition from = {})
        : source(source)
        , position(from)
    {
    }

    void next(FrameCount count, float* interleaved) override
    {
        source.read(position, count, interleaved);
        position = position + count;
    }

private:
    const SampleSource& source;
    FramePosition position;
};

}  // namespace sound::test
