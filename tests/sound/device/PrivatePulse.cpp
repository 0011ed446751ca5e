#include "sound/device/PrivatePulse.h"

#include <gtest/gtest.h>
#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>
#include <algorithm>
#include <csignal>
#include <cstring>
#include <thread>

namespace sound::test {
namespace {

using namespace std::chrono_literals;

constexpr int patience = 15000;  // milliseconds until a condition counts as never to come

template <typename Condition>
bool waitUntil(Condition condition)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > patience)
            return false;
        std::this_thread::sleep_for(5ms);
    }
    return true;
}

QStringList privateEnvironment(const QString& folder)
{
    return {"XDG_RUNTIME_DIR=" + folder, "HOME=" + folder};
}

}  // namespace

PrivatePulse::PrivatePulse(SampleRate sinkRate)
    : rate(sinkRate)
    , serverBefore(qgetenv("PULSE_SERVER"))
{
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("PULSE_SERVER", QStringLiteral("unix:%1/native").arg(folder.path()).toLocal8Bit());
}

PrivatePulse::~PrivatePulse()
{
    recorder.reset();
    server.reset();
    qputenv("PULSE_SERVER", serverBefore);
}

bool PrivatePulse::start()
{
    const QStringList environment = privateEnvironment(folder.path());
    const QStringList arguments = {
        "-n",
        "--daemonize=no",
        "--exit-idle-time=-1",
        "--disable-shm=yes",
        "--use-pid-file=no",
        "-L",
        QStringLiteral("module-native-protocol-unix auth-anonymous=1 socket=%1/native").arg(folder.path()),
        "-L",
        QStringLiteral("module-null-sink sink_name=speakers rate=%1 format=float32le norewinds=1").arg(rate.hertz)};
    server =
        std::make_unique<ChildProcess>("pulseaudio", arguments, environment, "", "", folder.filePath("server.log"));
    server->makeUrgent();
    return waitUntil([&] {
        return ChildProcess("pactl", {"get-sink-volume", "speakers"}, environment, "", "", "").succeeds();
    });
}

void PrivatePulse::kill()
{
    server.reset();
}

void PrivatePulse::suspend()
{
    server->signal(SIGSTOP);
}

void PrivatePulse::resume()
{
    server->signal(SIGCONT);
}

QString PrivatePulse::recordingPath() const
{
    return folder.filePath("heard.raw");
}

bool PrivatePulse::startRecording()
{
    const QStringList arguments = {
        "-d",           "speakers.monitor", "--format=float32le", QString("--rate=%1").arg(rate.hertz),
        "--channels=2", "--latency-msec=10"};
    recorder = std::make_unique<ChildProcess>("parec", arguments, privateEnvironment(folder.path()), "",
                                              recordingPath(), "");
    recorder->makeUrgent();
    return waitForFrames(1);
}

std::vector<float> PrivatePulse::recordedSoFar() const
{
    QFile file(recordingPath());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    std::vector<float> samples(static_cast<std::size_t>(bytes.size()) / sizeof(float) / 2 * 2);
    std::memcpy(samples.data(), bytes.constData(), samples.size() * sizeof(float));
    return samples;
}

std::vector<float> PrivatePulse::stopRecording()
{
    recorder->signal(SIGTERM);
    recorder->succeeds();
    recorder.reset();
    return recordedSoFar();
}

bool PrivatePulse::waitForFrames(std::int64_t count) const
{
    return waitUntil(
        [&] { return QFile(recordingPath()).size() >= count * 2 * static_cast<qint64>(sizeof(float)); });
}

std::string pactl(const QStringList& arguments)
{
    const QTemporaryDir folder;
    const QString output = folder.filePath("output");
    EXPECT_TRUE(ChildProcess("pactl", arguments, {"LC_ALL=C"}, "", output, "").succeeds())
        << arguments.join(' ').toStdString();
    QFile file(output);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "";
}

// Without rewinds it plays from the first moment on, and delivers what it plays.
QString addOutput(const QString& name, SampleRate rate)
{
    const std::string module =
        pactl({"load-module", "module-null-sink", "sink_name=" + name, QString("rate=%1").arg(rate.hertz),
               "format=float32le", "norewinds=1", "sink_properties=device.description=" + name.toUpper()});
    return QString::fromStdString(module).trimmed();
}

// A second lies ready at the server, so that a busy machine is not heard.
std::unique_ptr<ChildProcess> playInto(const QString& output, const QString& rawFile, SampleRate rate)
{
    const QStringList arguments = {"--playback",
                                   "--raw",
                                   "--device=" + output,
                                   "--format=float32le",
                                   QString("--rate=%1").arg(rate.hertz),
                                   "--channels=2",
                                   "--latency-msec=1000"};
    return std::make_unique<ChildProcess>("pacat", arguments, QStringList{}, rawFile, "", "");
}

std::int64_t frameOfMatch(const std::vector<float>& heard, const float* wanted, std::size_t probeSamples)
{
    for (std::size_t begin = 0; begin + probeSamples <= heard.size(); begin += 2) {
        if (std::equal(wanted, wanted + probeSamples, heard.begin() + static_cast<std::ptrdiff_t>(begin)))
            return static_cast<std::int64_t>(begin / 2);
    }
    return -1;
}

std::int64_t firstSound(const std::vector<float>& heard)
{
    const auto found = std::find_if(heard.begin(), heard.end(), [](float sample) { return sample != 0; });
    return found == heard.end() ? -1 : (found - heard.begin()) / 2;
}

}  // namespace sound::test
