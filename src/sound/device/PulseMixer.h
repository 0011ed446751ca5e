#pragma once

#include "engines/OutputMixer.h"
#include "sound/device/PulseServer.h"

#include <chrono>
#include <cstdint>
#include <functional>

struct pa_context;
struct pa_operation;
struct pa_sink_info;

namespace sound {

/// The volume of the default output of the user's sound server (PulseAudio, or PipeWire in its place).
///
/// It only reads: it changes no volume and starts no server. Where none runs it knows at once. One that takes the
/// connection and does not answer is given up when what it was asked for in all, connecting included, has taken the
/// longest wait.
class PulseMixer : public OutputMixer
{
public:
    static constexpr std::chrono::milliseconds usualLongestWait{300};

    explicit PulseMixer(std::chrono::milliseconds longestWait = usualLongestWait);

    /// Connects to the server.
    int mixerOpen() override;

    /// Asks for the default output: a server may have none.
    bool mixerGetLineControls() override;

    /// The server's 100% is the full volume. Where channels differ, the loudest counts, as in the volume controls
    /// of desktops.
    int mixerGetControlDetails() override;

private:
    struct Sink
    {
        bool found = false;
        std::uint32_t index = 0;
        std::uint32_t volume = 0;
    };

    using TakeSink = void (*)(pa_context*, const pa_sink_info*, int last, void* taker);

    /// @p ask sends the question; what it returns is waited for.
    Sink answerTo(const std::function<pa_operation*(TakeSink, void* taker)>& ask);

    PulseServer server;
    Sink defaultSink;
};

}  // namespace sound
