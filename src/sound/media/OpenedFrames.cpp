#include "sound/media/OpenedFrames.h"

#include "sound/media/CdTrack.h"
#include "sound/media/FileDecoder.h"
#include "sound/media/PcmReader.h"

namespace sound {
namespace {

std::unique_ptr<FrameStream> openFile(std::shared_ptr<const RegularFile> file)
{
    if (!file)
        return nullptr;
    auto input = AvInput::open(std::move(file));
    if (!input)
        return nullptr;
    if (auto plain = PcmReader::open(*input))
        return plain;
    return FileDecoder::open(std::move(input));
}

}  // namespace

OpenedFrames openFrames(const QString& path)
{
    if (path.endsWith(QLatin1String(".cda"), Qt::CaseInsensitive))
        return openCdTrack(path);
    auto stream = openFile(RegularFile::open(path));
    const auto error = stream ? EngineError::None : EngineError::InvalidSoundFile;
    return {std::move(stream), error};
}

}  // namespace sound
