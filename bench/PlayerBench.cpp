// What playing costs: the player's renderer beside the bare stretching library for the same sound. A time of one
// second an iteration would be a whole core; the counter "core" says how much of one.

#include "sound/player/RendererBench.h"

#include <benchmark/benchmark.h>

#include <rubberband/RubberBandStretcher.h>
#include <cmath>
#include <numbers>

using namespace sound;
using namespace sound::test;
using RubberBand::RubberBandStretcher;

namespace {

constexpr SampleRate rate{44100};
constexpr std::int64_t second = 44100;

// A chord over noise in stereo, ten seconds of it: to a stretcher all sounds cost about the same, but silence.
MemorySound music()
{
    const MemorySound noise = noiseSound(rate, 2, {10 * second});
    return MemorySound::of(rate, 2, noise.length(), [&](std::int64_t frame, int channel) {
        double sum = 0.2 * static_cast<double>(noise.sample(frame, channel));
        for (const double hertz : {110.0, 220.5, 330.8, 659.0, 1320.0})
            sum += 0.1 * std::sin(2 * std::numbers::pi * hertz * static_cast<double>(frame) / rate.hertz + channel);
        return sum;
    });
}

void reportCore(benchmark::State& state)
{
    // Each iteration is one second of output.
    state.counters["core"] =
        benchmark::Counter(1, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void playing(benchmark::State& state, const Changes& changes)
{
    RendererBench player(music());
    player.settings.changes = changes;
    player.playWindow({{0}, {10 * second}, true});
    player.render(second);
    for (auto _ : state) {
        player.output.clear();
        player.render(second);
    }
    reportCore(state);
}

void bareLibrary(benchmark::State& state, const Changes& changes)
{
    constexpr std::size_t block = 512;
    const MemorySound sound = music();
    const std::vector<float> left = channelOf(sound.interleaved(), 2, 0);
    const std::vector<float> right = channelOf(sound.interleaved(), 2, 1);
    RubberBandStretcher stretcher(
        rate.hertz, 2,
        RubberBandStretcher::OptionProcessRealTime | RubberBandStretcher::OptionEngineFiner |
            RubberBandStretcher::OptionPitchHighConsistency | RubberBandStretcher::OptionChannelsTogether |
            RubberBandStretcher::OptionThreadingNever,
        1 / changes.tempo, changes.pitch);
    stretcher.setMaxProcessSize(block);
    std::vector<float> outLeft(8192);
    std::vector<float> outRight(8192);
    float* out[2] = {outLeft.data(), outRight.data()};
    std::size_t place = 0;
    for (auto _ : state) {
        for (std::int64_t given = 0; given < second;) {
            const float* in[2] = {left.data() + place, right.data() + place};
            stretcher.process(in, block, false);
            place = place + 2 * block <= left.size() ? place + block : 0;
            while (stretcher.available() > 0)
                given += static_cast<std::int64_t>(stretcher.retrieve(
                    out, std::min<std::size_t>(8192, static_cast<std::size_t>(stretcher.available()))));
        }
        benchmark::DoNotOptimize(outLeft.data());
    }
    reportCore(state);
}

const Changes unchanged{1, 1, 1};
const Changes slower20{0.8, 1, 1};
const Changes slower60{0.4, 1, 1};
const Changes faster60{1.6, 1, 1};
const Changes higher2{1, 1.122462048309373, 1};
const Changes turntable{1, 1, 0.8};

BENCHMARK_CAPTURE(playing, unchanged, unchanged)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(playing, turntable, turntable)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(playing, slower20, slower20)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(bareLibrary, slower20, slower20)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(playing, slower60, slower60)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(bareLibrary, slower60, slower60)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(playing, faster60, faster60)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(bareLibrary, faster60, faster60)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(playing, higher2, higher2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(bareLibrary, higher2, higher2)->Unit(benchmark::kMillisecond);

// A seek while the sound is stretched: the block that starts a second path, primes it and cross-fades to it.
void restart(benchmark::State& state)
{
    RendererBench player(music());
    player.settings.changes = slower20;
    player.play(0);
    player.render(second);
    std::int64_t place = 0;
    for (auto _ : state) {
        place = (place + 12345) % (8 * second);
        player.seek(place);
        player.output.clear();
        player.render(player.block());
    }
}
BENCHMARK(restart)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
