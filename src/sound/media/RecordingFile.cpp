#include "sound/media/RecordingFile.h"

#include "sound/media/GrowingFile.h"
#include "sound/media/SoundEncoder.h"
#include "sound/media/WrittenContainer.h"
#include "sound/media/recorded/RecordedContainer.h"

namespace sound {
namespace {

class EncodedRecordingFile : public RecordingFile
{
public:
    EncodedRecordingFile(std::unique_ptr<SoundEncoder> openEncoder, std::unique_ptr<GrowingFile> newFile,
                         std::unique_ptr<RecordedContainer> begunContainer)
        : encoder(std::move(openEncoder))
        , file(std::move(newFile))
        , container(std::move(begunContainer))
    {
    }

    ~EncodedRecordingFile() override
    {
        if (!finished)
            end();
    }

    bool write(std::span<const float> interleaved) override
    {
        failed = failed || !encoder->encode(interleaved, sink());
        return !failed;
    }

    EngineError finish() override { return end(); }

private:
    EngineError end()
    {
        finished = true;
        const bool drained = !failed && encoder->drain(sink());
        const bool whole = container->finish();
        const bool onDisc = file->finish();
        return drained && whole && onDisc ? EngineError::None : EngineError::FileCreationFailed;
    }

    SoundEncoder::Sink sink()
    {
        return [this](AVPacket& packet) { return isPadding(packet, encoder->codec()) || container->add(packet); };
    }

    std::unique_ptr<SoundEncoder> encoder;
    std::unique_ptr<GrowingFile> file;
    std::unique_ptr<RecordedContainer> container;
    bool failed = false;
    bool finished = false;
};

}  // namespace

OpenedRecordingFile RecordingFile::create(const QString& path, const SoundFormat& format, SampleRate rate,
                                          int channels)
{
    auto encoder = SoundEncoder::open(format, rate, channels);
    if (!encoder.encoder)
        return {nullptr, encoder.error};
    auto file = GrowingFile::create(path);
    if (!file)
        return {nullptr, EngineError::FileCreationFailed};
    auto container = RecordedContainer::begin(*file, format.family, encoder.encoder->codec());
    if (!container || !file->takeName())
        return {nullptr, EngineError::FileCreationFailed};
    return {
        std::make_unique<EncodedRecordingFile>(std::move(encoder.encoder), std::move(file), std::move(container)),
        EngineError::None};
}

}  // namespace sound
