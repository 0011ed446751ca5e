#include "sound/vocals/SegmentRemover.h"

#include <algorithm>

namespace sound {
namespace {

std::size_t samplesIn(FrameCount count)
{
    return static_cast<std::size_t>(count.value) * 2;
}

}  // namespace

SegmentRemover::SegmentRemover(const WaveInput& from, WaveOutput& to, const VoicePlace& place)
    : input(from)
    , output(to)
    , canceller(from.rate(), place)
{
}

VocalRemoval SegmentRemover::remove(FramePosition from, FrameCount count)
{
    if (!readAround(from, count))
        return VocalRemoval::CannotReadInput;
    without.resize(samplesIn(count));
    canceller.remove(around, without);
    const auto before = std::span(around).subspan(samplesIn(canceller.surroundings()), without.size());
    changeSamples(input.samples(), before, without, segment);
    return output.write(from, segment) ? VocalRemoval::Done : VocalRemoval::CannotWriteOutput;
}

bool SegmentRemover::readAround(FramePosition from, FrameCount count)
{
    const FramePosition begin = from - canceller.surroundings();
    const FramePosition end = from + count + canceller.surroundings();
    const FramePosition first = std::max(begin, FramePosition{0});
    const FramePosition last = std::min(end, endOf(input.length()));
    const auto bytesIn = [this](FrameCount frames) {
        return static_cast<std::size_t>(frames.value * bytesPerFrame(input.samples()));
    };
    packed.resize(bytesIn(last - first));
    if (!input.read(first, packed))
        return false;
    segment = std::span(packed).subspan(bytesIn(from - first), bytesIn(count));
    around.assign(samplesIn(end - begin), 0.0F);
    const auto there = std::span(around).subspan(samplesIn(first - begin), samplesIn(last - first));
    unpackSamples(input.samples(), packed, there);
    return true;
}

}  // namespace sound
