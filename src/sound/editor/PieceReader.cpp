#include "sound/editor/PieceReader.h"

#include <algorithm>
#include <cmath>

namespace sound {
namespace {

// So much of a piece before and behind the place where it would end, the calmest one is looked for.
constexpr std::int64_t searchPart = 12;

// How long before and behind the common stretch the sound is to be calm too: a rendering spreads an attack.
constexpr std::int64_t marginHundredths = 5;

FrameCount hundredthAt(SampleRate rate)
{
    return {std::max(1, rate.hertz / 100)};
}

FrameCount marginAt(SampleRate rate)
{
    return {marginHundredths * hundredthAt(rate).value};
}

}  // namespace

PieceReader::PieceReader(SourcePart& part, const Cutting& how)
    : source(part)
    , cutting(how)
    , ended(how.length.value <= 0)
{
}

FramePosition PieceReader::sourceOf(FramePosition output) const
{
    return {std::llround(static_cast<double>(output.value) * cutting.tempo)};
}

Piece PieceReader::next()
{
    Piece piece;
    piece.begin = begin;
    const FramePosition end = endOf(cutting.length);
    const FrameCount search{cutting.piece.value / searchPart};
    regular = regular + cutting.piece;
    piece.last = regular + search + cutting.common + cutting.common >= end;
    ended = piece.last;
    if (piece.last) {
        piece.length = end - begin;
    } else {
        readTo(sourceOf(regular + search + cutting.common) + marginAt(source.rate()));
        begin = calmest(regular - search, regular + search);
        piece.length = begin + cutting.common - piece.begin;
    }

    piece.source = sourceOf(piece.begin);
    piece.inputBegin = piece.source - cutting.around;
    const FramePosition inputEnd = sourceOf(piece.begin + piece.length) + cutting.around;
    readTo(inputEnd);

    const auto channels = static_cast<std::size_t>(source.channels());
    piece.input.assign(static_cast<std::size_t>((inputEnd - piece.inputBegin).value) * channels, 0.0F);
    const FramePosition from = std::max(piece.inputBegin, bufferBegin);
    const auto bufferOffset = static_cast<std::size_t>((from - bufferBegin).value) * channels;
    const auto inputOffset = static_cast<std::size_t>((from - piece.inputBegin).value) * channels;
    const std::size_t count = std::min(buffer.size() - bufferOffset, piece.input.size() - inputOffset);
    std::copy_n(buffer.begin() + static_cast<std::ptrdiff_t>(bufferOffset), count,
                piece.input.begin() + static_cast<std::ptrdiff_t>(inputOffset));

    const FramePosition needed = std::max(FramePosition{0}, sourceOf(begin) - cutting.around);
    const FrameCount done = std::max(FrameCount{0}, needed - bufferBegin);
    const std::size_t samples = std::min(buffer.size(), static_cast<std::size_t>(done.value) * channels);
    buffer.erase(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(samples));
    bufferBegin = bufferBegin + done;
    return piece;
}

void PieceReader::readTo(FramePosition end)
{
    const FramePosition there =
        bufferBegin + FrameCount{static_cast<std::int64_t>(buffer.size()) / source.channels()};
    if (there < end)
        source.read(end - there, buffer);
}

// Where the common stretch may best begin: where the sound rises least within it and around it, from one hundredth
// of a second to the next.
FramePosition PieceReader::calmest(FramePosition earliest, FramePosition latest) const
{
    const auto channels = static_cast<std::size_t>(source.channels());
    const FrameCount margin = marginAt(source.rate());
    const FramePosition first = std::max(sourceOf(earliest) - margin, bufferBegin);
    const auto hundredth = static_cast<std::size_t>(hundredthAt(source.rate()).value);
    const auto offset = static_cast<std::size_t>((first - bufferBegin).value) * channels;

    std::vector<double> powers;
    for (std::size_t at = offset; at + hundredth * channels <= buffer.size(); at += hundredth * channels) {
        double power = 0;
        for (std::size_t sample = at; sample < at + hundredth * channels; ++sample)
            power += static_cast<double>(buffer[sample]) * buffer[sample];
        powers.push_back(power);
    }
    const double commonFrames = static_cast<double>(cutting.common.value) * cutting.tempo;
    const auto span =
        static_cast<std::size_t>(commonFrames / static_cast<double>(hundredth)) + 2 * marginHundredths;

    std::size_t best = 0;
    double least = HUGE_VAL;
    for (std::size_t candidate = 0; candidate + span < powers.size(); ++candidate) {
        double rise = 0;
        for (std::size_t index = candidate; index < candidate + span; ++index)
            rise = std::max(rise, powers[index + 1] - powers[index]);
        if (rise < least) {
            least = rise;
            best = candidate;
        }
    }
    const FramePosition calm = first + FrameCount{static_cast<std::int64_t>(best * hundredth)} + margin;
    const double output = static_cast<double>(calm.value) / cutting.tempo;
    return std::clamp(FramePosition{std::llround(output)}, earliest, latest);
}

}  // namespace sound
