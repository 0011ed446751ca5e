#pragma once

#include "sound/device/Capture.h"
#include "sound/device/Wakeup.h"

#include <atomic>
#include <future>
#include <thread>

struct pa_context;
struct pa_mainloop;
struct pa_stream;

namespace sound {

/// A stream from one source of the user's sound server, with a thread of its own that copies what comes into the
/// ring and does nothing else.
///
/// The server keeps what the thread has no time for, for seconds, and is told not to move the stream: where the
/// source goes, the capture ends.
class PulseCapture : public Capture
{
public:
    /// Waits until the server has made the stream, but not longer than a moment. Null where it made none.
    static std::unique_ptr<PulseCapture> open(const CaptureDevice& device, CaptureRing& ring, Wakeup& reader);

    ~PulseCapture() override;
    PulseCapture(const PulseCapture&) = delete;
    PulseCapture& operator=(const PulseCapture&) = delete;

    bool ended() const override { return over.load(); }

private:
    PulseCapture(const CaptureDevice& device, CaptureRing& ring, Wakeup& reader);

    // The thread's own.
    void run(std::promise<bool> opened);
    void makeStream();
    void copy();
    bool goesOn() const;

    const QByteArray source;
    const SampleRate rate;
    CaptureRing& ring;
    Wakeup& reader;
    Wakeup stop;
    std::atomic<bool> stopping = false;
    std::atomic<bool> over = false;

    pa_mainloop* mainloop = nullptr;
    pa_context* context = nullptr;
    pa_stream* stream = nullptr;

    std::future<bool> isOpen;
    std::thread thread;
};

}  // namespace sound
