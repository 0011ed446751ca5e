#include "sound/vocals/WaveInput.h"

#include <utility>

namespace sound {

OpenedWaveInput WaveInput::open(const QString& path)
{
    auto file = RegularFile::open(path);
    if (!file)
        return {nullptr, VocalRemoval::CannotOpenInput};
    const ReadWaveLayout read = readWaveLayout(*file);
    if (read.result != VocalRemoval::Done)
        return {nullptr, read.result};
    return {std::unique_ptr<const WaveInput>(new WaveInput(std::move(file), read.layout)), VocalRemoval::Done};
}

WaveInput::WaveInput(std::shared_ptr<const RegularFile> openFile, const WaveLayout& readLayout)
    : file(std::move(openFile))
    , layout(readLayout)
{
}

bool WaveInput::read(FramePosition from, std::span<std::uint8_t> packed) const
{
    const std::int64_t offset = layout.begin + from.value * bytesPerFrame(layout.samples);
    return file->readAt(offset, packed) == packed.size();
}

}  // namespace sound
