#include "sound/dsp/Stretcher.h"

#include <rubberband/RubberBandStretcher.h>
#include <algorithm>
#include <cmath>

namespace sound {

using RubberBand::RubberBandStretcher;

namespace {

constexpr double remembered = 4096;  // output frames that a resampler behind may still ask about

}  // namespace

Stretcher::Stretcher() = default;
Stretcher::~Stretcher() = default;

void Stretcher::prepare(SampleRate rate, int channelCount, FrameCount blockFrames)
{
    channels = channelCount;
    block = blockFrames;
    // High consistency lets a pitch change out within milliseconds and keeps the library's own account of its delay
    // right, which the other pitch modes do not.
    stretcher = std::make_unique<RubberBandStretcher>(
        static_cast<size_t>(rate.hertz), static_cast<size_t>(channels),
        RubberBandStretcher::OptionProcessRealTime | RubberBandStretcher::OptionEngineFiner |
            RubberBandStretcher::OptionPitchHighConsistency | RubberBandStretcher::OptionChannelsTogether |
            RubberBandStretcher::OptionThreadingNever);
    stretcher->setMaxProcessSize(static_cast<size_t>(block.value));
    startPad = {static_cast<std::int64_t>(stretcher->getPreferredStartPad())};

    interleavedBlock.assign(static_cast<size_t>(block.value * channels), 0.0F);
    planes.assign(static_cast<size_t>(channels), std::vector<float>(static_cast<size_t>(block.value)));
    planePointers.clear();
    for (std::vector<float>& plane : planes)
        planePointers.push_back(plane.data());
}

FrameCount Stretcher::lead() const
{
    // The pad fills the first window; half as much again lets the windows that overlap it build up to full level.
    return {startPad.value + startPad.value / 2};
}

void Stretcher::begin(FramePosition first, double newTimeRatio, double newPitchScale)
{
    timeRatio = newTimeRatio;
    pitchScale = newPitchScale;
    stretcher->reset();
    stretcher->setTimeRatio(timeRatio);
    stretcher->setPitchScale(pitchScale);

    const FrameCount buildUp = lead() - startPad;
    const auto builtUp = std::llround(static_cast<double>(buildUp.value) * timeRatio);
    toDrop = {static_cast<std::int64_t>(stretcher->getStartDelay()) + builtUp};
    halfOfDrop = {toDrop.value / 2};

    fed = first - lead();
    given = 0;
    const double rounding = static_cast<double>(builtUp) / timeRatio - static_cast<double>(buildUp.value);
    map.start(0, static_cast<double>(first.value) + rounding, 1 / timeRatio);
}

void Stretcher::primeHalf(FrameInput& input)
{
    drop(input, halfOfDrop);
}

void Stretcher::prime(FrameInput& input)
{
    drop(input, {0});
}

// Throws output away until so much of it is left to be thrown away.
void Stretcher::drop(FrameInput& input, FrameCount rest)
{
    while (toDrop.value > rest.value) {
        while (stretcher->available() <= 0)
            feed(input);
        toDrop = toDrop - take({std::min(toDrop.value, block.value)}, interleavedBlock.data());
    }
}

void Stretcher::change(double newTimeRatio, double newPitchScale)
{
    const double pitchStep = newPitchScale / pitchScale;
    if (pitchStep == 1.0 && newTimeRatio == timeRatio)
        return;

    // Pitch is made by resampling what has been stretched: what waits between the two comes out faster by the step.
    const double leaving = given + std::max(0, stretcher->available());
    map.scaleOutputAfter(leaving, 1 / pitchStep);
    // A new ratio holds from the centre of the next window on.
    map.bendAtInput(static_cast<double>((fed - startPad).value), 1 / newTimeRatio);

    timeRatio = newTimeRatio;
    pitchScale = newPitchScale;
    stretcher->setTimeRatio(timeRatio);
    stretcher->setPitchScale(pitchScale);
}

void Stretcher::render(FrameInput& input, FrameCount count, float* interleaved)
{
    FrameCount done;
    while (done < count) {
        while (stretcher->available() <= 0)
            feed(input);
        const FrameCount wanted{std::min((count - done).value, block.value)};
        done = done + take(wanted, interleaved + done.value * channels);
    }
    given += static_cast<double>(count.value);
    map.forgetBefore(given - remembered);
}

double Stretcher::inputAt(double frame) const
{
    return map.inputAt(frame);
}

void Stretcher::feed(FrameInput& input)
{
    input.next(block, interleavedBlock.data());
    fed = fed + block;
    for (int channel = 0; channel < channels; ++channel) {
        float* plane = planePointers[static_cast<size_t>(channel)];
        const float* from = interleavedBlock.data() + channel;
        for (std::int64_t frame = 0; frame < block.value; ++frame)
            plane[frame] = from[frame * channels];
    }
    stretcher->process(planePointers.data(), static_cast<size_t>(block.value), false);
}

FrameCount Stretcher::take(FrameCount count, float* interleaved)
{
    // Asked for more than there is, the library complains on the standard error stream.
    const auto there = static_cast<std::int64_t>(std::max(0, stretcher->available()));
    const auto taken = static_cast<std::int64_t>(
        stretcher->retrieve(planePointers.data(), static_cast<size_t>(std::min(count.value, there))));
    for (int channel = 0; channel < channels; ++channel) {
        const float* plane = planePointers[static_cast<size_t>(channel)];
        float* to = interleaved + channel;
        for (std::int64_t frame = 0; frame < taken; ++frame)
            to[frame * channels] = plane[frame];
    }
    return {taken};
}

}  // namespace sound
