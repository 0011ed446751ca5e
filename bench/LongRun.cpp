// Figures that take minutes: what an hour of playing, and a thousand passes of a long loop, add up to.

#include "sound/player/RendererBench.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <span>

using namespace sound;
using namespace sound::test;

namespace {

constexpr SampleRate rate{44100};

// The centre of gravity of the energy in a pass, against where the first passes have it.
void loop(const char* name, const Changes& changes, std::int64_t length, int passes)
{
    constexpr std::int64_t begin = 30000;
    RendererBench bench(MemorySound::of(rate, 1, {begin + length + 30000}, [&](std::int64_t frame, int) {
        const double place = static_cast<double>(frame - begin - length / 2) / 600;
        return 0.6 * std::exp(-place * place) * std::sin(static_cast<double>(frame) * 0.1);
    }));
    bench.settings.changes = changes;
    bench.playWindow({{begin}, {begin + length}, true});

    const double period = static_cast<double>(length) / changes.tempo;
    std::vector<double> moments;
    std::vector<float> rest;
    double passBegin = 0;
    for (int pass = 0; pass < passes; ++pass) {
        bench.output.clear();
        const auto needed =
            static_cast<std::int64_t>(std::ceil(period + 2)) - static_cast<std::int64_t>(rest.size());
        bench.render(std::max<std::int64_t>(needed, 0));
        const std::vector<float> left = bench.left();
        rest.insert(rest.end(), left.begin(), left.end());
        double weight = 0;
        double moment = 0;
        const auto count = static_cast<std::size_t>(period);
        for (std::size_t frame = 0; frame < count; ++frame) {
            const double energy = static_cast<double>(rest[frame]) * rest[frame];
            weight += energy;
            moment += energy * static_cast<double>(frame);
        }
        // Passes begin between frames; what is cut off is accounted for.
        const double exactBegin = period * pass;
        moments.push_back(moment / weight + passBegin - exactBegin);
        const auto cut = static_cast<std::int64_t>(exactBegin + period) - static_cast<std::int64_t>(passBegin);
        rest.erase(rest.begin(), rest.begin() + cut);
        passBegin += static_cast<double>(cut);
    }
    const double count = passes - 1;
    double mean = 0;
    for (int pass = 1; pass < passes; ++pass)
        mean += moments[static_cast<std::size_t>(pass)] / count;
    double product = 0;
    double square = 0;
    double spread = 0;
    for (int pass = 1; pass < passes; ++pass) {
        const double place = pass - (count + 1) / 2;
        const double off = moments[static_cast<std::size_t>(pass)] - mean;
        product += place * off;
        square += place * place;
        spread += off * off / count;
    }
    std::printf(
        "loop %-12s %6lld frames, %d passes: drift %+.2f frames in all (uncertain by %.2f), waver %.1f frames\n",
        name, static_cast<long long>(length), passes, product / square * count, std::sqrt(spread * 12 / count),
        std::sqrt(spread));
}

// An hour of output from a sweep that says by its frequency which place is heard; the worst disagreement between
// that and the position that is reported.
void hour(const char* name, const Changes& changes)
{
    constexpr double first = 300;
    constexpr double sweep = 60;
    constexpr std::int64_t passFrames = 60 * 44100;
    RendererBench bench(sweepSound(rate, first, sweep, 61));
    bench.settings.changes = changes;
    bench.playWindow({{0}, {passFrames}, true});
    double worst = 0;
    double sum = 0;
    int measured = 0;
    const auto total = static_cast<std::int64_t>(3600) * rate.hertz;
    for (std::int64_t done = 0; done < total;) {
        const double from = bench.position();
        bench.output.clear();
        bench.render(22050);
        done += bench.frames();
        const double to = bench.position();
        if (to < from || from < 44100 || to > passFrames - 44100)
            continue;  // where the stretcher still hears the seam a sweep says nothing
        const std::vector<float> left = bench.left();
        std::vector<double> crossings;
        for (std::size_t frame = 1; frame < left.size(); ++frame) {
            const double before = left[frame - 1];
            const double after = left[frame];
            if (before < 0 && after >= 0)
                crossings.push_back(static_cast<double>(frame) - after / (after - before));
        }
        const double middle = (crossings.front() + crossings.back()) / 2;
        const double hertz =
            static_cast<double>(crossings.size() - 1) / (crossings.back() - crossings.front()) * rate.hertz;
        const double heard = (hertz / (changes.pitch * changes.rate) - first) / sweep * 1000;
        const double reported =
            (from + (to - from) * middle / static_cast<double>(left.size())) / rate.hertz * 1000;
        worst = std::max(worst, std::abs(heard - reported));
        sum += heard - reported;
        ++measured;
    }
    std::printf("hour %-12s reported position against what is heard: mean %+.2f ms, worst %.2f ms (%d places)\n",
                name, sum / measured, worst, measured);
}

}  // namespace

int main()
{
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    loop("slower 35%", {0.65, 1, 1}, 103415, 1000);
    loop("5 up", {1, std::exp2(5 / 12.0), 1}, 103415, 1000);
    hour("unchanged", {1, 1, 1});
    hour("turntable", {1, 1, 0.83});
    hour("slower 20%", {0.8, 1, 1});
    hour("2 up", {1, std::exp2(2 / 12.0), 1});
    hour("all", {0.73, std::exp2(2 / 12.0), 1.1});
    return 0;
}
