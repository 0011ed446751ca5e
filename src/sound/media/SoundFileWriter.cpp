#include "sound/media/SoundFileWriter.h"

#include "sound/media/AvOutput.h"
#include "sound/media/SoundEncoder.h"
#include "sound/media/WholeFile.h"
#include "sound/media/WrittenContainer.h"
#include "sound/media/WrittenTags.h"

#include <string>

namespace sound {
namespace {

class AvSoundFileWriter : public SoundFileWriter
{
public:
    AvSoundFileWriter(std::unique_ptr<SoundEncoder> openEncoder, std::unique_ptr<WholeFile> newFile,
                      std::unique_ptr<AvOutput> openOutput)
        : encoder(std::move(openEncoder))
        , file(std::move(newFile))
        , output(std::move(openOutput))
    {
    }

    bool begin(SoundFormat::Family family, const SoundTags& tags)
    {
        if (!addSound(*output, encoder->codec()))
            return false;
        WrittenTags written(*output, family, tags);
        return output->writeHead(containerOptions(family, encoder->codec(), !written.isEmpty()).c_str()) &&
               written.writeCover();
    }

    bool write(std::span<const float> interleaved) override
    {
        failed = failed || !encoder->encode(interleaved, sink());
        return !failed;
    }

    EngineError finish() override
    {
        const bool whole = !failed && encoder->drain(sink()) && output->finish() && file->finish();
        return whole ? EngineError::None : EngineError::FileCreationFailed;
    }

private:
    SoundEncoder::Sink sink()
    {
        return [this](AVPacket& packet) {
            return isPadding(packet, encoder->codec()) || output->write(packet, encoder->codec().time_base);
        };
    }

    std::unique_ptr<SoundEncoder> encoder;
    std::unique_ptr<WholeFile> file;
    std::unique_ptr<AvOutput> output;
    bool failed = false;
};

}  // namespace

OpenedSoundFileWriter SoundFileWriter::create(const QString& path, const SoundFormat& format, SampleRate rate,
                                              int channels, const SoundTags& tags)
{
    auto encoder = SoundEncoder::open(format, rate, channels);
    if (!encoder.encoder)
        return {nullptr, encoder.error};
    auto file = WholeFile::create(path);
    if (!file)
        return {nullptr, EngineError::FileCreationFailed};
    auto output = AvOutput::create(*file, containerOf(format.family));
    if (!output)
        return {nullptr, EngineError::NotEnoughMemory};
    auto writer =
        std::make_unique<AvSoundFileWriter>(std::move(encoder.encoder), std::move(file), std::move(output));
    if (!writer->begin(format.family, tags))
        return {nullptr, EngineError::FileCreationFailed};
    return {std::move(writer), EngineError::None};
}

}  // namespace sound
