#pragma once

#include "sound/device/Capture.h"
#include "sound/device/PulseServer.h"

#include <chrono>
#include <functional>

struct pa_context;
struct pa_operation;
struct pa_source_info;

namespace sound {

/// The sources of the user's sound server (PulseAudio, or PipeWire in its place): microphones and line inputs, and
/// the monitors of outputs, which hear what the computer plays.
///
/// It connects with the first question, and again where the server has been away. A server that let it wait in vain
/// is not asked again for a second, so that whoever asks many things waits once.
class PulseSources : public CaptureDevices
{
public:
    static constexpr std::chrono::milliseconds usualLongestWait{1000};

    explicit PulseSources(std::chrono::milliseconds longestWait = usualLongestWait);

    std::vector<CaptureDevice> devices() override;
    CaptureDevice device(const QString& key) override;
    void selectLine(const QString& key, const QString& line) override;
    void setVolume(const QString& key, int volume) override;
    void setMuted(const QString& key, bool muted) override;
    std::unique_ptr<Capture> capture(const CaptureDevice& device, CaptureRing& ring, Wakeup& reader) override;

private:
    using Clock = std::chrono::steady_clock;
    using Question = std::function<pa_operation*(pa_context*)>;
    using TakeSource = std::function<void(const pa_source_info&)>;

    void ask(const Question& question);
    void askForSource(const QString& key, const TakeSource& take);
    bool isThere();
    void restWhereItWaited();
    QString defaultKey();

    PulseServer server;
    Clock::time_point askAgainAt;
};

}  // namespace sound
