#include "sound/device/PulseStream.h"

#include "sound/device/AudioOutput.h"
#include "sound/device/Wakeup.h"

#include <pulse/context.h>
#include <pulse/mainloop.h>
#include <pulse/operation.h>
#include <pulse/proplist.h>
#include <pulse/stream.h>

namespace sound {
namespace {

constexpr int channels = 2;
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
    buffer.minreq = bytesIn(AudioOutput::longestDelay / 5, rate);
    // One request's worth starts the sound again after a gap; none at all would let the server skip what comes
    // late.
    buffer.prebuf = buffer.minreq;
    buffer.fragsize = static_cast<std::uint32_t>(-1);
    const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_START_CORKED | PA_STREAM_INTERPOLATE_TIMING |
                                                      PA_STREAM_AUTO_TIMING_UPDATE | PA_STREAM_ADJUST_LATENCY);
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
    release(pa_stream_cork(stream, 0, nullptr, nullptr));
}

void PulseStream::stop()
{
    if (!started)
        return;
    started = false;
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
    makeStream();
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
    if (ready())
        pa_stream_write(stream, stereo, static_cast<size_t>(count.value * bytesAFrame), nullptr, 0,
                        PA_SEEK_RELATIVE);
}

FrameCount PulseStream::delay() const
{
    pa_usec_t latency = 0;
    int negative = 0;
    if (!ready() || pa_stream_get_latency(stream, &latency, &negative) < 0)
        return framesIn(AudioOutput::longestDelay, rate);  // not measured yet: what was asked for
    return negative != 0 ? FrameCount{0} : framesIn(std::chrono::microseconds{latency}, rate);
}

}  // namespace sound
