#include "sound/media/recorded/RecordedContainer.h"

#include "sound/media/recorded/RecordedMp4.h"
#include "sound/media/recorded/RecordedStream.h"
#include "sound/media/recorded/RecordedWave.h"

namespace sound {

std::unique_ptr<RecordedContainer> RecordedContainer::begin(GrowingFile& file, SoundFormat::Family family,
                                                            const AVCodecContext& codec)
{
    switch (family) {
    case SoundFormat::Family::Wav:
        return RecordedWave::begin(file, codec);
    case SoundFormat::Family::Mp4:
        return RecordedMp4::begin(file, codec);
    case SoundFormat::Family::Mp3:
    case SoundFormat::Family::Wma:
    case SoundFormat::Family::OggVorbis:
    case SoundFormat::Family::Aac:
    case SoundFormat::Family::Flac:
        return RecordedStream::begin(file, family, codec);
    }
    return nullptr;
}

}  // namespace sound
