#include "sound/editor/SourcePart.h"

#include <algorithm>

namespace sound {

SourcePart::SourcePart(std::unique_ptr<FrameStream> openStream, FramePosition begin, FrameCount length)
    : stream(std::move(openStream))
    , toSkip(begin - FramePosition{0})
    , count(length)
{
}

FrameCount SourcePart::read(FrameCount wanted, std::vector<float>& interleaved)
{
    const FrameCount due = std::min(wanted, count - given);
    const auto samples = static_cast<std::size_t>(due.value * channels());
    const std::size_t end = interleaved.size() + samples;
    while (interleaved.size() < end && !ended) {
        if (used == decoded.size())
            fill();
        const std::size_t piece = std::min(end - interleaved.size(), decoded.size() - used);
        const auto from = decoded.begin() + static_cast<std::ptrdiff_t>(used);
        interleaved.insert(interleaved.end(), from, from + static_cast<std::ptrdiff_t>(piece));
        used += piece;
    }
    lacking = lacking + FrameCount{static_cast<std::int64_t>(end - interleaved.size()) / channels()};
    interleaved.resize(end, 0.0F);
    given = given + due;
    return due;
}

void SourcePart::fill()
{
    decoded.clear();
    used = 0;
    ended = !stream->next(decoded);
    const auto here = static_cast<std::int64_t>(decoded.size()) / channels();
    const FrameCount skipped = std::min(toSkip, FrameCount{here});
    used = static_cast<std::size_t>(skipped.value * channels());
    toSkip = toSkip - skipped;
}

}  // namespace sound
