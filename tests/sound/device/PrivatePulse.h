#pragma once

#include "sound/ChildProcess.h"
#include "sound/units/Frames.h"

#include <QTemporaryDir>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace sound::test {

/// That of most sound servers.
inline constexpr SampleRate serverRate{48000};

/// How long to wait for servers that do answer, on a machine as busy as it likes.
inline constexpr std::chrono::seconds patient{20};

/// A sound server of the test's own, on a socket of its own, whose one output is a null sink in floating point at a
/// rate of the test's choice. While it lives, this process and its children talk to it.
class PrivatePulse
{
public:
    explicit PrivatePulse(SampleRate rate);
    ~PrivatePulse();

    /// Whether the server answers; waits for it.
    bool start();

    /// Ends the server as a crash would.
    void kill();

    /// Keeps the server from doing anything, and lets it go on where it was.
    void suspend();
    void resume();

    /// Records what the output plays, from now on.
    bool startRecording();

    /// Left and right interleaved.
    std::vector<float> recordedSoFar() const;
    std::vector<float> stopRecording();

    /// Waits until the recording holds this many frames.
    bool waitForFrames(std::int64_t count) const;

private:
    QString recordingPath() const;

    SampleRate rate;
    QTemporaryDir folder;
    QByteArray serverBefore;
    std::unique_ptr<ChildProcess> server;
    std::unique_ptr<ChildProcess> recorder;
};

/// Runs pactl with the private server and returns what it writes, in English. The test fails where it is refused.
std::string pactl(const QStringList& arguments);

/// Adds an output in floating point of this name, whose monitor is a source without ports: as a microphone that
/// hears what is played into it. Its readable name is the same in capitals. Returns its module.
QString addOutput(const QString& name, SampleRate rate);

/// Plays stereo into an output from now on, once.
std::unique_ptr<ChildProcess> playInto(const QString& output, const QString& rawFile, SampleRate rate);

/// Where the first @p probe samples of @p wanted stand in @p heard, both interleaved stereo; -1 where they don't.
std::int64_t frameOfMatch(const std::vector<float>& heard, const float* wanted, std::size_t probeSamples);

/// The first frame that is not silent, or -1.
std::int64_t firstSound(const std::vector<float>& heard);

}  // namespace sound::test
