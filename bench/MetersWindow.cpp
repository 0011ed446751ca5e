// A window as large and as full as the main window, with the level bars. For the wanted time the player reports its
// peaks a hundred times a second, or the same timer runs and it does not; then the program says how much of a core
// it took.

#include "MusicPeaks.h"
#include "app/FakePlayerEngine.h"
#include "playback/MetersPanel.h"
#include "playback/PlaybackState.h"
#include "playback/PositionPanel.h"
#include "playback/TempoPitchPanel.h"
#include "playback/TransportPanel.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <QVBoxLayout>

#include <sys/resource.h>
#include <chrono>
#include <cstdio>
#include <cstring>

using namespace std::chrono_literals;

namespace {

double processorSeconds()
{
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

}  // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const bool moving = argc == 3 && std::strcmp(argv[1], "moving") == 0;
    const int wanted = argc == 3 ? std::atoi(argv[2]) : 0;
    if (wanted <= 0 || (!moving && std::strcmp(argv[1], "still") != 0)) {
        std::fprintf(stderr, "usage: %s moving|still SECONDS\n", argv[0]);
        return 2;
    }

    FakePlayerEngine engine;
    PlaybackState state;
    QWidget window;
    auto* meters = new MetersPanel(engine, &window);
    auto* position = new PositionPanel(engine, state, &window);
    auto* rows = new QVBoxLayout(&window);
    rows->addWidget(meters);
    rows->addWidget(position);
    rows->addWidget(new TransportPanel(engine, state, *position, &window));
    rows->addWidget(new TempoPitchPanel(engine, &window));
    meters->startMeters();
    window.resize(940, 534);
    window.show();

    MusicPeaks music;
    int reports = 0;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        const auto [left, right] = music.next();
        ++reports;
        if (moving)
            emit engine.VuPeaks(0, left, right);
    });
    timer.start(10ms);

    double usedBefore = 0;
    QElapsedTimer clock;
    QTimer::singleShot(1s, [&] {  // the window has come up by then
        usedBefore = processorSeconds();
        reports = 0;
        clock.start();
        QTimer::singleShot(std::chrono::seconds(wanted), &application, &QApplication::quit);
    });
    QApplication::exec();

    const double used = processorSeconds() - usedBefore;
    const double elapsed = static_cast<double>(clock.elapsed()) / 1000;
    std::printf("%-7s %5.1f ticks a second   %6.3f%% of a core\n", argv[1], reports / elapsed,
                100 * used / elapsed);
    return 0;
}
