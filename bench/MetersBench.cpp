// What one report of the player's peaks costs: both bars put and painted. A hundred a second are a whole core at
// ten milliseconds each; the counter "core" says how much of one they take.

#include "MusicPeaks.h"
#include "app/FakePlayerEngine.h"
#include "playback/MetersPanel.h"

#include <benchmark/benchmark.h>
#include <QApplication>

namespace {

void report(benchmark::State& state, bool moving)
{
    FakePlayerEngine engine;
    MetersPanel panel(engine);
    panel.startMeters();
    panel.resize(430, 60);
    panel.show();
    QApplication::processEvents();

    MusicPeaks music;
    for (auto _ : state) {
        const auto [left, right] = music.next();
        if (moving)
            emit engine.VuPeaks(0, left, right);
        else
            benchmark::DoNotOptimize(left + right);
        QApplication::processEvents();
    }
    constexpr double reportTime = 0.01;  // seconds
    state.counters["core"] =
        benchmark::Counter(reportTime, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

BENCHMARK_CAPTURE(report, bars, true)->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(report, eventLoopAlone, false)->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
