#pragma once

#include "sound/media/recorded/RecordedContainer.h"
#include "sound/units/Frames.h"

#include <cstdint>

namespace sound {

/// A RIFF WAVE file of 16 bits, whose head tells with every packet how long it is. Beyond 4 GiB it turns into an
/// RF64. Inside this folder only.
class RecordedWave : public RecordedContainer
{
public:
    static std::unique_ptr<RecordedWave> begin(GrowingFile& file, const AVCodecContext& codec);

    bool add(AVPacket& packet) override;
    bool finish() override { return !failed; }

private:
    RecordedWave(GrowingFile& file, const AVCodecContext& codec);

    bool writeHead();

    GrowingFile& file;
    SampleRate rate;
    int channels;
    FrameCount length;
    bool failed = false;
};

}  // namespace sound
