#include "sound/device/PrivatePulse.h"

#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>
#include <algorithm>
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

QProcessEnvironment privateEnvironment(const QString& folder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_RUNTIME_DIR", folder);
    environment.insert("HOME", folder);
    // What a sanitizer build of the test preloads is none of the server's business.
    environment.remove("LD_PRELOAD");
    return environment;
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
    for (const auto* process : {&recorder, &server}) {
        if (*process) {
            (*process)->kill();
            (*process)->waitForFinished();
        }
    }
    qputenv("PULSE_SERVER", serverBefore);
}

bool PrivatePulse::start()
{
    server = std::make_unique<QProcess>();
    server->setProcessEnvironment(privateEnvironment(folder.path()));
    server->setStandardErrorFile(folder.filePath("server.log"));
    server->setStandardOutputFile(QProcess::nullDevice());
    server->start(
        "pulseaudio",
        {"-n", "--daemonize=no", "--exit-idle-time=-1", "--disable-shm=yes", "--use-pid-file=no", "-L",
         QStringLiteral("module-native-protocol-unix auth-anonymous=1 socket=%1/native").arg(folder.path()), "-L",
         QStringLiteral("module-null-sink sink_name=speakers rate=%1 format=float32le norewinds=1")
             .arg(rate.hertz)});
    return waitUntil([this] {
        QProcess question;
        question.setProcessEnvironment(privateEnvironment(folder.path()));
        question.start("pactl", {"get-sink-volume", "speakers"});
        return question.waitForFinished() && question.exitCode() == 0;
    });
}

void PrivatePulse::kill()
{
    server->kill();
    server->waitForFinished();
    server.reset();
}

QString PrivatePulse::recordingPath() const
{
    return folder.filePath("heard.raw");
}

bool PrivatePulse::startRecording()
{
    recorder = std::make_unique<QProcess>();
    recorder->setProcessEnvironment(privateEnvironment(folder.path()));
    recorder->setStandardOutputFile(recordingPath());
    recorder->setStandardErrorFile(QProcess::nullDevice());
    recorder->start("parec", {"-d", "speakers.monitor", "--format=float32le", QString("--rate=%1").arg(rate.hertz),
                              "--channels=2", "--latency-msec=10"});
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
    recorder->terminate();
    recorder->waitForFinished();
    recorder.reset();
    return recordedSoFar();
}

bool PrivatePulse::waitForFrames(std::int64_t count) const
{
    return waitUntil(
        [&] { return QFile(recordingPath()).size() >= count * 2 * static_cast<qint64>(sizeof(float)); });
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
