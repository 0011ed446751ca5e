#include "sound/player/RangeExport.h"

#include "sound/media/DecodedSound.h"
#include "sound/media/WaveWriter.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace sound {
namespace {

constexpr FrameCount pieceFrames{16384};

}  // namespace

RangeExport::RangeExport(std::shared_ptr<const DecodedSound> source, FramePosition first, FramePosition last,
                         QString target)
    : sound(std::move(source))
    , begin(first)
    , end(last)
    , path(std::move(target))
    , worker([this] {
        result = write();
        done.store(true, std::memory_order_release);
    })
{
}

RangeExport::~RangeExport()
{
    cancelled.store(true, std::memory_order_relaxed);
    worker.join();
}

EngineError RangeExport::write()
{
    const std::unique_ptr<WaveWriter> file =
        WaveWriter::create(path, sound->rate(), sound->channels(), WaveSamples::Float32);
    if (!file)
        return EngineError::FileCreationFailed;

    std::vector<float> frames(static_cast<std::size_t>(pieceFrames.value * sound->channels()));
    for (FramePosition place = begin; place < end;) {
        if (cancelled.load(std::memory_order_relaxed))
            return EngineError::Unknown;
        const FrameCount piece = std::min(pieceFrames, end - place);
        if (!sound->waitFor(place + piece - FramePosition{0}))
            return sound->decodeError();
        sound->read(place, piece, frames.data());
        if (!file->write(std::span(frames).first(static_cast<std::size_t>(piece.value * sound->channels()))))
            return EngineError::FileCreationFailed;
        place = place + piece;
        part.store(static_cast<short>((place - begin).value * 100 / (end - begin).value),
                   std::memory_order_relaxed);
    }
    return file->finish();
}

}  // namespace sound
