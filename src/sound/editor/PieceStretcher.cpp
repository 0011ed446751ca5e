#include "sound/editor/PieceStretcher.h"

#include <rubberband/RubberBandStretcher.h>
#include <algorithm>
#include <cmath>

namespace sound {

using RubberBand::RubberBandStretcher;

namespace {

constexpr std::size_t block = 1024;  // of input, and of output

}  // namespace

PieceStretcher::PieceStretcher(SampleRate rate, int channelCount, const Changes& changes)
    : channels(static_cast<std::size_t>(channelCount))
    , tempo(changes.tempo)
    , stretcher(std::make_unique<RubberBandStretcher>(
          static_cast<std::size_t>(rate.hertz), channels,
          RubberBandStretcher::OptionProcessOffline | RubberBandStretcher::OptionEngineFiner |
              RubberBandStretcher::OptionPitchHighQuality | RubberBandStretcher::OptionChannelsTogether |
              RubberBandStretcher::OptionThreadingNever,
          1 / changes.tempo, changes.pitch))
    , planes(channels, std::vector<float>(block))
{
    stretcher->setMaxProcessSize(block);
    for (std::vector<float>& plane : planes)
        planePointers.push_back(plane.data());
}

PieceStretcher::~PieceStretcher() = default;

FrameCount PieceStretcher::around(SampleRate rate)
{
    return {rate.hertz / 10};
}

std::vector<float> PieceStretcher::render(const Piece& piece, const std::atomic<bool>& stop,
                                          std::atomic<std::int64_t>& framesRendered)
{
    const std::size_t frames = piece.input.size() / channels;
    stretcher->reset();
    stretcher->setExpectedInputDuration(frames);

    // Out comes, from its very first frame on, what went in, longer by the ratio.
    const auto lead = static_cast<double>((piece.source - piece.inputBegin).value);
    auto toDrop = static_cast<std::size_t>(std::llround(lead / tempo));
    const auto wanted = static_cast<std::size_t>(piece.length.value) * channels;
    std::vector<float> output;
    output.reserve(wanted + block * channels);
    for (std::size_t done = 0; done < frames && output.size() < wanted && !stop; done += block) {
        pass(piece.input, done, std::min(block, frames - done));
        const std::size_t before = output.size();
        take(toDrop, wanted, output);
        framesRendered += static_cast<std::int64_t>((output.size() - before) / channels);
    }
    output.resize(wanted, 0.0F);
    return output;
}

void PieceStretcher::pass(const std::vector<float>& interleaved, std::size_t first, std::size_t frames)
{
    for (std::size_t channel = 0; channel < channels; ++channel) {
        const float* from = interleaved.data() + first * channels + channel;
        for (std::size_t frame = 0; frame < frames; ++frame)
            planes[channel][frame] = from[frame * channels];
    }
    const bool last = (first + frames) * channels == interleaved.size();
    stretcher->process(planePointers.data(), frames, last);
}

// All that is there, without the frames to drop and those beyond the wanted ones.
void PieceStretcher::take(std::size_t& toDrop, std::size_t wanted, std::vector<float>& interleaved)
{
    while (stretcher->available() > 0 && interleaved.size() < wanted) {
        const auto there = static_cast<std::size_t>(stretcher->available());
        const std::size_t taken = stretcher->retrieve(planePointers.data(), std::min(there, block));
        const std::size_t dropped = std::min(toDrop, taken);
        toDrop -= dropped;
        const std::size_t kept = std::min(taken - dropped, (wanted - interleaved.size()) / channels);
        for (std::size_t frame = dropped; frame < dropped + kept; ++frame) {
            for (const std::vector<float>& plane : planes)
                interleaved.push_back(plane[frame]);
        }
    }
}

}  // namespace sound
