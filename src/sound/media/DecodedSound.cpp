#include "sound/media/DecodedSound.h"

#include "sound/media/CdTrack.h"
#include "sound/media/DecodeWorker.h"
#include "sound/media/FileDecoder.h"
#include "sound/media/PcmReader.h"
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

std::unique_ptr<FrameStream> openStream(std::shared_ptr<const RegularFile> file)
{
    auto input = AvInput::open(std::move(file));
    if (!input)
        return nullptr;
    if (auto plain = PcmReader::open(*input))
        return plain;
    return FileDecoder::open(std::move(input));
}

OpenedSound storeFrom(std::unique_ptr<FrameStream> stream)
{
    if (!stream)
        return {nullptr, EngineError::InvalidSoundFile};
    auto store = SampleStore::create(stream->rate(), stream->channels(), stream->length());
    if (!store)
        return {nullptr, EngineError::NotEnoughMemory};
    return {std::make_unique<StoredSound>(std::move(store), std::move(stream)), EngineError::None};
}

}  // namespace

OpenedSound DecodedSound::open(const QString& path)
{
    if (path.endsWith(QLatin1String(".cda"), Qt::CaseInsensitive)) {
        auto track = openCdTrack(path);
        return track.stream ? storeFrom(std::move(track.stream)) : OpenedSound{nullptr, track.error};
    }
    auto file = RegularFile::open(path);
    if (!file)
        return {nullptr, EngineError::InvalidSoundFile};
    return storeFrom(openStream(std::move(file)));
}

}  // namespace sound
