#include "sound/media/DecodedSound.h"

#include "sound/media/DecodeWorker.h"
#include "sound/media/OpenedFrames.h"
#include "sound/media/SampleStore.h"

namespace sound {
namespace {

class StoredSound : public DecodedSound
{
public:
    StoredSound(std::unique_ptr<SampleStore> emptyStore, std::unique_ptr<FrameStream> stream)
        : store(std::move(emptyStore))
        , worker(std::move(stream), *store)
    {
    }

    SampleRate rate() const override { return store->rate(); }
    int channels() const override { return store->channels(); }
    FrameCount length() const override { return store->length(); }
    FrameCount available() const override { return store->available(); }
    void read(FramePosition from, FrameCount count, float* interleaved) const override
    {
        store->read(from, count, interleaved);
    }
    void willReadNear(FramePosition position) const override { store->willReadNear(position); }
    bool finished() const override { return worker.finished(); }
    bool waitFor(FrameCount count) const override { return worker.waitFor(count); }
    EngineError decodeError() const override { return worker.error(); }

private:
    std::unique_ptr<SampleStore> store;
    DecodeWorker worker;  // writes into the store until it goes
};

}  // namespace

OpenedSound DecodedSound::open(const QString& path)
{
    auto frames = openFrames(path);
    if (!frames.stream)
        return {nullptr, frames.error};
    auto store = SampleStore::create(frames.stream->rate(), frames.stream->channels(), frames.stream->length());
    if (!store)
        return {nullptr, EngineError::NotEnoughMemory};
    return {std::make_unique<StoredSound>(std::move(store), std::move(frames.stream)), EngineError::None};
}

}  // namespace sound
