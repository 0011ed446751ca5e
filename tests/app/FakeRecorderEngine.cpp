#include "app/FakeRecorderEngine.h"

#include <QStringList>
#include <cmath>

namespace {

const QStringList& devices()
{
    static const QStringList names{"Built-in Audio Analog Stereo", "Monitor of Built-in Audio Analog Stereo",
                                   "USB Microphone"};
    return names;
}

}  // namespace

FakeRecorderEngine::FakeRecorderEngine()
{
    connect(&metering, &QTimer::timeout, this, [this] {
        const double seconds = static_cast<double>(sinceStart.elapsed()) / 1000.0;
        emit RecordingPeaks(static_cast<short>(19000 + 9000 * std::sin(3.1 * seconds)),
                            static_cast<short>(17000 + 9000 * std::sin(3.7 * seconds + 1)));
    });
}

short FakeRecorderEngine::GetRecordingDeviceCount()
{
    return static_cast<short>(devices().size());
}

QString FakeRecorderEngine::GetRecordingDeviceName(short device)
{
    return devices().value(device);
}

QString FakeRecorderEngine::GetRecordingInputName(short, short input)
{
    return input == 0 ? QStringLiteral("Microphone") : QStringLiteral("Line In");
}

void FakeRecorderEngine::StartVuMeter(int)
{
    sinceStart.start();
    metering.start(30);
}
