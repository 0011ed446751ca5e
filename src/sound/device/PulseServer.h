#pragma once

#include <chrono>
#include <functional>

struct pa_context;
struct pa_mainloop;
struct pa_operation;

namespace sound {

/// A connection to the user's sound server (PulseAudio, or PipeWire in its place) for questions that are answered
/// while the caller waits.
///
/// It starts no server. Where none runs it knows at once. One that takes the connection and does not answer is
/// given up when the longest wait is over, which counts from connect() or from the last startWaiting().
///
/// **Threads.** One at a time.
class PulseServer
{
public:
    explicit PulseServer(std::chrono::milliseconds longestWait);
    ~PulseServer();
    PulseServer(const PulseServer&) = delete;
    PulseServer& operator=(const PulseServer&) = delete;

    /// Whether the server took the connection. Where there was one before, it is dropped.
    bool connect();

    bool isConnected() const;

    /// The longest wait counts from now on.
    void startWaiting();

    /// Whether the longest wait is over.
    bool isOverdue() const { return Clock::now() >= deadline; }

    /// The connection, as the library's questions want it. Null before connect().
    pa_context* context() const { return connection; }

    /// Waits for what was asked, which may be null; false where it was not answered in time.
    bool isAnswered(pa_operation* question);

private:
    using Clock = std::chrono::steady_clock;

    void disconnect();
    bool waitFor(const std::function<bool()>& condition);

    const std::chrono::milliseconds longestWait;
    Clock::time_point deadline;
    pa_mainloop* const mainloop;
    pa_context* connection = nullptr;
};

}  // namespace sound
