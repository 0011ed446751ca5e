#pragma once

#include "sound/media/AvOutput.h"
#include "sound/media/recorded/LengthInHead.h"
#include "sound/media/recorded/RecordedContainer.h"

namespace sound {

/// A container in which one short piece follows the other, each of which can be the last: the library writes it,
/// and every piece goes into the file as soon as it is there. Inside this folder only.
class RecordedStream : public RecordedContainer
{
public:
    static std::unique_ptr<RecordedStream> begin(GrowingFile& file, SoundFormat::Family family,
                                                 const AVCodecContext& codec);

    bool add(AVPacket& packet) override;
    bool finish() override;

private:
    RecordedStream(GrowingFile& file, const AVCodecContext& codec, std::unique_ptr<AvOutput> output);

    bool writeHead(SoundFormat::Family family);
    bool tellLength();
    bool goBack();

    GrowingFile& file;
    const AVCodecContext& codec;
    std::unique_ptr<AvOutput> output;
    std::unique_ptr<LengthInHead> length;  // null where the format tells it nowhere
    Growth given;
    Growth kept;  // in the file, up to a place where it can end
    bool failed = false;
};

}  // namespace sound
