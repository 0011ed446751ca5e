#include "sound/device/PulseStream.h"

#include "sound/device/AudioOutput.h"
#include "sound/device/Wakeup.h"

#include <pulse/context.h>
#include <pulse/mainloop.h>
#include <pulse/operation.h>
#include <pulse/proplist.h>
#include <pulse/stream.h>
#include <algorithm>
#include <cmath>
#include <thread>

namespace sound {
namespace {

constexpr int channels = 2;
constexpr std::chrono::milliseconds pauseAfterFailure{10};
constexpr std::chrono::milliseconds leastRequest{14};
constexpr std::int64_t bytesAFrame = channels * sizeof(float);

void release(pa_operation* operation)
{
    if (operation != nullptr)
        pa_operation_unref(operation);
}

std::uint32_t bytesIn(std::chrono::microseconds time, SampleRate rate)
{
    return static_cast<std::uint32_t>(framesIn(time, rate).value * bytesAFrame);
}

}  // namespace

struct PulseStream::Loop
{
    explicit Loop(Wakeup& toWatch)
        : wakeup(toWatch)
        , mainloop(pa_mainloop_new())
    {
        pa_mainloop_api* api = pa_mainloop_get_api(mainloop);
        watch = api->io_new(
            api, wakeup.descriptor(), PA_IO_EVENT_INPUT,
            [](pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void* loop) {
                static_cast<Loop*>(loop)->wakeup.clear();
            },
            this);
    }

    ~Loop()
    {
        pa_mainloop_get_api(mainloop)->io_free(watch);
        pa_mainloop_free(mainloop);
    }

    Loop(const Loop&) = delete;
    Loop& operator=(const Loop&) = delete;

    Wakeup& wakeup;
    pa_mainloop* mainloop;
    pa_io_event* watch;
};

PulseStream::PulseStream(Wakeup& wakeup)
    : loop(std::make_unique<Loop>(wakeup))
{
}

PulseStream::~PulseStream()
{
    dropContext();
}

void PulseStream::dropStream()
{
    if (stream == nullptr)
        return;
    pa_stream_disconnect(stream);
    pa_stream_unref(stream);
    stream = nullptr;
    started = false;
    writtenSinceStop = {0};
}

void PulseStream::dropContext()
{
    dropStream();
    if (context == nullptr)
        return;
    pa_context_disconnect(context);
    pa_context_unref(context);
    context = nullptr;
}

void PulseStream::connect(SampleRate newRate)
{
    if (newRate != rate || (stream != nullptr && !PA_STREAM_IS_GOOD(pa_stream_get_state(stream))))
        dropStream();
    rate = newRate;

    if (context != nullptr && !PA_CONTEXT_IS_GOOD(pa_context_get_state(context)))
        dropContext();
    if (context == nullptr) {
        pa_proplist* properties = pa_proplist_new();
        pa_proplist_sets(properties, PA_PROP_APPLICATION_NAME, "Larkspin");
        pa_proplist_sets(properties, PA_PROP_APPLICATION_ICON_NAME, "larkspin");
        pa_proplist_sets(properties, PA_PROP_MEDIA_ROLE, "music");
        context = pa_context_new_with_proplist(pa_mainloop_get_api(loop->mainloop), "Larkspin", properties);
        pa_proplist_free(properties);
        pa_context_connect(context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
    }
    makeStream();
}

void PulseStream::makeStream()
{
    if (stream != nullptr || rate.hertz == 0 || context == nullptr ||
        pa_context_get_state(context) != PA_CONTEXT_READY)
        return;

    const pa_sample_spec format{PA_SAMPLE_FLOAT32NE, static_cast<std::uint32_t>(rate.hertz), channels};
    stream = pa_stream_new(context, "Music", &format, nullptr);
    if (stream == nullptr)
        return;

    pa_buffer_attr buffer{};
    buffer.maxlength = static_cast<std::uint32_t>(-1);
    buffer.tlength = bytesIn(AudioOutput::longestDelay, rate);
    // The server takes half of what two requests leave of the length as the speakers' own buffer: 16 of the 60 ms.
    // Each of its takes is then more than the least request, and asked for at once. Were they equal, one take in
    // two would fall short by a rounding, and be asked for together with the next: the rest would not last until
    // then.
    buffer.minreq = bytesIn(leastRequest, rate);
    // One request's worth starts the sound again after a gap; none at all would let the server skip what comes
    // late.
    buffer.prebuf = buffer.minreq;
    buffer.fragsize = static_cast<std::uint32_t>(-1);
    // The library's own interpolation of the time goes wrong for a tenth of a second after each pause.
    const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_START_CORKED | PA_STREAM_AUTO_TIMING_UPDATE |
                                                      PA_STREAM_ADJUST_LATENCY);
    pa_stream_set_latency_update_callback(
        stream, [](pa_stream*, void* self) { static_cast<PulseStream*>(self)->takeReport(); }, this);
    report = {};
    pa_stream_connect_playback(stream, nullptr, &buffer, flags, nullptr, nullptr);
}

bool PulseStream::away() const
{
    if (context == nullptr || !PA_CONTEXT_IS_GOOD(pa_context_get_state(context)))
        return true;
    return stream != nullptr && !PA_STREAM_IS_GOOD(pa_stream_get_state(stream));
}

bool PulseStream::ready() const
{
    return stream != nullptr && pa_stream_get_state(stream) == PA_STREAM_READY;
}

void PulseStream::start()
{
    if (started || !ready())
        return;
    started = true;
    startedAt = Clock::now();
    report.valid = false;
    release(pa_stream_cork(stream, 0, nullptr, nullptr));
    reportsWanted = 10;
    askForReport();
}

void PulseStream::askForReport()
{
    if (reportsWanted == 0 || !ready())
        return;
    --reportsWanted;
    release(pa_stream_update_timing_info(stream, nullptr, nullptr));
}

void PulseStream::takeReport()
{
    const pa_timing_info* timing = started ? pa_stream_get_timing_info(stream) : nullptr;
    if (timing == nullptr || timing->playing == 0 || timing->read_index_corrupt != 0 ||
        timing->write_index_corrupt != 0)
        return;
    const double framesAMicrosecond = rate.hertz / 1e6;
    report.heard =
        static_cast<double>(timing->read_index) / bytesAFrame +
        (static_cast<double>(timing->transport_usec) - static_cast<double>(timing->sink_usec)) * framesAMicrosecond;
    report.at = Clock::now();
    report.valid = true;
}

double PulseStream::heardNow() const
{
    return report.heard + std::chrono::duration<double>(Clock::now() - report.at).count() * rate.hertz;
}

void PulseStream::stop()
{
    if (!started)
        return;
    started = false;
    writtenSinceStop = {0};
    if (!ready())
        return;
    release(pa_stream_cork(stream, 1, nullptr, nullptr));
    release(pa_stream_flush(stream, nullptr, nullptr));
}

void PulseStream::wait(std::chrono::milliseconds longest)
{
    const int microseconds = longest.count() < 0 ? -1 : static_cast<int>(longest.count() * 1000);
    if (pa_mainloop_prepare(loop->mainloop, microseconds) >= 0 && pa_mainloop_poll(loop->mainloop) >= 0)
        pa_mainloop_dispatch(loop->mainloop);
    else
        std::this_thread::sleep_for(pauseAfterFailure);  // a loop that fails at once must not take the whole core
    makeStream();
    askForReport();
}

FrameCount PulseStream::wanted() const
{
    if (!ready())
        return {0};
    const size_t bytes = pa_stream_writable_size(stream);
    return bytes == static_cast<size_t>(-1) ? FrameCount{0}
                                            : FrameCount{static_cast<std::int64_t>(bytes) / bytesAFrame};
}

void PulseStream::write(const float* stereo, FrameCount count)
{
    if (!ready())
        return;
    pa_stream_write(stream, stereo, static_cast<size_t>(count.value * bytesAFrame), nullptr, 0, PA_SEEK_RELATIVE);
    writtenSinceStop = writtenSinceStop + count;
}

FrameCount PulseStream::delay() const
{
    const pa_timing_info* timing = ready() ? pa_stream_get_timing_info(stream) : nullptr;
    std::int64_t delay = 0;
    if (timing != nullptr && started && report.valid) {
        const double written = static_cast<double>(timing->write_index) / bytesAFrame;
        delay = std::llround(written - heardNow());
    } else {
        // Not told yet: as if each frame were heard when the one before it is over.
        const auto since = started ? Clock::now() - startedAt : Clock::duration{0};
        const auto played = framesIn(std::chrono::duration_cast<std::chrono::microseconds>(since), rate);
        delay = (writtenSinceStop - played).value;
    }
    return {std::max<std::int64_t>(0, delay)};
}

}  // namespace sound
