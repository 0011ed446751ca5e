#include "sound/dsp/VariableRate.h"

#include <soxr.h>
#include <algorithm>
#include <array>

namespace sound {
namespace {

constexpr double fastest = 16;  // the library reserves filters for speeds up to this one
constexpr double slowest = 0.4;
constexpr double highest = 1.6;
constexpr std::int64_t framesToSettle = 10000;
constexpr double framesToForget = 1280;

// The library's interpolation filter looks this many output frames back; measured on a sweep at speeds from 0.4
// to 1.6.
constexpr double filterDelay = 1.62;

class Silence : public FrameInput
{
public:
    explicit Silence(int channelCount)
        : channels(channelCount)
    {
    }

    void next(FrameCount count, float* interleaved) override
    {
        std::fill(interleaved, interleaved + count.value * channels, 0.0F);
    }

private:
    int channels;
};

}  // namespace

void VariableRate::Delete::operator()(soxr* resampler) const
{
    soxr_delete(resampler);
}

VariableRate::VariableRate() = default;
VariableRate::~VariableRate() = default;

void VariableRate::prepare(int channelCount, FrameCount blockFrames)
{
    channels = channelCount;
    block = blockFrames;
    const soxr_io_spec_t io = soxr_io_spec(SOXR_FLOAT32_I, SOXR_FLOAT32_I);
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, SOXR_VR);
    soxr_error_t error = nullptr;
    resampler.reset(soxr_create(fastest, 1, static_cast<unsigned>(channels), &error, &io, &quality, nullptr));
    pending.assign(static_cast<size_t>(block.value * channels), 0.0F);
    pendingBegin = pendingEnd = 0;
    fed = produced = origin = 0;
    speed = 1;
    map.start(0, 0, speed);

    // The library's queues grow until they have been filled and emptied for a while; that shall not be while sound
    // is rendered.
    Silence silence(channels);
    std::vector<float> dropped(static_cast<size_t>(block.value * channels));
    for (const double each : {slowest, highest, 1.0}) {
        change(each);
        for (std::int64_t done = 0; done < framesToSettle; done += block.value)
            produce(silence, block, dropped.data());
    }
}

FrameCount VariableRate::lead()
{
    // The library holds 240 frames back and its filters ring: behind these the first frame is right to -80 dB (to
    // -60 in the highest octave at full speed). A stretcher before it takes a millisecond for each 200 of them.
    return {768};
}

void VariableRate::start(FrameInput& input, double newSpeed)
{
    std::array<float, 64 * 2> dropped;
    change(newSpeed);
    pendingBegin = pendingEnd = 0;
    Silence silence(channels);
    for (const double forgotten = fed + framesToForget; fed < forgotten;)
        produce(silence, {64}, dropped.data());
    pendingBegin = pendingEnd = 0;
    origin = fed;

    const double first = origin + static_cast<double>(lead().value) - speed / 2;
    while (map.inputAt(produced - filterDelay) < first) {
        const double missing = (first - map.inputAt(produced - filterDelay)) / speed;
        produce(input, {std::clamp<std::int64_t>(static_cast<std::int64_t>(missing), 1, 64)}, dropped.data());
    }
}

void VariableRate::change(double newSpeed)
{
    if (newSpeed == speed)
        return;
    speed = newSpeed;
    soxr_set_io_ratio(resampler.get(), speed, 0);
    map.bendAtInput(map.inputAt(produced), speed);
}

void VariableRate::render(FrameInput& input, FrameCount count, float* interleaved)
{
    produce(input, count, interleaved);
}

double VariableRate::inputAt(double ahead) const
{
    return map.inputAt(produced + ahead - filterDelay) - origin;
}

void VariableRate::produce(FrameInput& input, FrameCount count, float* interleaved)
{
    auto wanted = static_cast<size_t>(count.value);
    float* to = interleaved;
    // The library takes whatever it is offered and hoards it: it is fed only when it has no more to give.
    bool hungry = false;
    while (wanted > 0) {
        if (hungry && pendingBegin == pendingEnd) {
            const FrameCount piece{std::min<std::int64_t>(block.value, 128)};
            input.next(piece, pending.data());
            pendingBegin = 0;
            pendingEnd = static_cast<size_t>(piece.value);
        }
        size_t consumed = 0;
        size_t given = 0;
        soxr_process(resampler.get(), pending.data() + pendingBegin * static_cast<size_t>(channels),
                     hungry ? pendingEnd - pendingBegin : 0, &consumed, to, wanted, &given);
        hungry = true;
        pendingBegin += consumed;
        fed += static_cast<double>(consumed);
        produced += static_cast<double>(given);
        to += given * static_cast<size_t>(channels);
        wanted -= given;
    }
    map.forgetBefore(produced - 2 * filterDelay);
}

}  // namespace sound
