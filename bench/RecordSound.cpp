// What the recorder costs: captures the default source of the sound server, first for its meters alone, then into
// an MP3 file as well, and prints the part of a core that each took.
//
// usage: record_sound SECONDS FILE.mp3

#include "sound/device/PulseSources.h"
#include "sound/device/SystemOutput.h"
#include "sound/recorder/FakeDevices.h"
#include "sound/recorder/SoundRecorderEngine.h"

#include <sys/resource.h>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <memory>

using namespace sound;

namespace {

double processorSeconds()
{
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

void letPass(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

double coreShareOver(int milliseconds)
{
    letPass(1000);  // what begins, begins
    const double before = processorSeconds();
    QElapsedTimer passed;
    passed.start();
    letPass(milliseconds);
    return (processorSeconds() - before) / (static_cast<double>(passed.nsecsElapsed()) / 1e9);
}

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: record_sound SECONDS FILE.mp3\n");
        return 2;
    }
    const int milliseconds = QString(argv[1]).toInt() * 1000;
    SoundRecorderEngine engine(RecorderParts{std::make_unique<PulseSources>(),
                                             std::make_unique<test::NoBarMeters>(),
                                             [] { return std::make_unique<SystemOutput>(); }, [](bool) {}});
    short loudest = 0;
    QObject::connect(&engine, &RecorderEngine::RecordingPeaks, [&](short left, short right) {
        loudest = std::max({loudest, left, right});
    });
    bool ended = false;
    QObject::connect(&engine, &RecorderEngine::RecorderSessionDone, [&] { ended = true; });
    engine.InitRecorder(0, 0, -1);
    engine.VuMeter().StartVuMeter(0);
    if (engine.OpenRecordingDevice(0) != 0) {
        std::fprintf(stderr, "there is nothing to record from\n");
        return 1;
    }
    const double metering = coreShareOver(milliseconds);

    engine.EncodeFormats().FormatForRecording(RecorderEncodeFormats::Mp3);
    engine.EncodeFormats().SampleRate(44100);
    engine.EncodeFormats().Channels(2);
    engine.EncodeFormats().Mp3Settings().Bitrate(128'000);
    engine.StartRecordingToFile(QString::fromLocal8Bit(argv[2]));
    const double recording = coreShareOver(milliseconds);
    engine.StopRecording();
    std::printf("metering               %6.2f%% of a core\n", 100 * metering);
    std::printf("metering and recording %6.2f%%\n", 100 * recording);
    std::printf("loudest peak %d of 32767%s\n", loudest, ended ? "; the recording has ended by itself" : "");
    return ended ? 1 : 0;
}
