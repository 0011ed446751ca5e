#pragma once

#include "sound/units/Frames.h"

#include <chrono>
#include <memory>

struct pa_context;
struct pa_mainloop;
struct pa_stream;

namespace sound {

class Wakeup;

/// One playback stream on the user's sound server (PulseAudio, or PipeWire in its place), with an event loop of its
/// own that runs inside wait(). No lock is shared with any other thread, and nothing here waits for the server.
///
/// States: away (no server, or the stream was ended by it) → connecting → ready. connect() leads from the first to
/// the second; a server or a stream that dies leads back to the first.
class PulseStream
{
public:
    explicit PulseStream(Wakeup& wakeup);
    ~PulseStream();
    PulseStream(const PulseStream&) = delete;
    PulseStream& operator=(const PulseStream&) = delete;

    /// Starts to connect, and to make a stream of this rate where one is asked for.
    void connect(SampleRate rate);

    bool away() const;
    bool ready() const;

    void start();
    void stop();

    /// Runs the event loop: sleeps until something happens, at most @p longest (negative: for ever).
    void wait(std::chrono::milliseconds longest);

    FrameCount wanted() const;
    void write(const float* stereo, FrameCount count);
    FrameCount delay() const;

private:
    using Clock = std::chrono::steady_clock;

    /// What the server told last of how far the sound is.
    struct Report
    {
        double heard = 0;  // in frames since the stream was made, at the time below
        Clock::time_point at;
        bool valid = false;
    };

    void makeStream();
    void dropStream();
    void dropContext();
    void askForReport();
    void takeReport();
    double heardNow() const;

    struct Loop;

    std::unique_ptr<Loop> loop;
    pa_context* context = nullptr;
    pa_stream* stream = nullptr;
    SampleRate rate;
    bool started = false;
    Clock::time_point startedAt;
    FrameCount writtenSinceStop;
    Report report;
    int reportsWanted = 0;  // soon after a start one is not enough
};

}  // namespace sound
