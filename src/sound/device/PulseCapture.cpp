#include "sound/device/PulseCapture.h"

#include "sound/device/CaptureRing.h"

#include <pulse/context.h>
#include <pulse/mainloop.h>
#include <pulse/proplist.h>
#include <pulse/stream.h>
#include <span>
#include <utility>

namespace sound {

using namespace std::chrono_literals;

namespace {

constexpr auto longestOpening = 2s;
constexpr auto delivery = 20ms;  // how much the server gathers before it sends
constexpr std::size_t bytesOfFrame = 2 * sizeof(float);

}  // namespace

std::unique_ptr<PulseCapture> PulseCapture::open(const CaptureDevice& device, CaptureRing& ring, Wakeup& reader)
{
    std::unique_ptr<PulseCapture> capture(new PulseCapture(device, ring, reader));
    if (capture->isOpen.wait_for(longestOpening) != std::future_status::ready || !capture->isOpen.get())
        return nullptr;
    return capture;
}

PulseCapture::PulseCapture(const CaptureDevice& device, CaptureRing& target, Wakeup& toNotify)
    : source(device.key.toUtf8())
    , rate(device.rate)
    , ring(target)
    , reader(toNotify)
{
    std::promise<bool> opened;
    isOpen = opened.get_future();
    thread = std::thread([this, promise = std::move(opened)]() mutable { run(std::move(promise)); });
}

PulseCapture::~PulseCapture()
{
    stopping.store(true);
    stop.notify();
    thread.join();
}

void PulseCapture::run(std::promise<bool> opened)
{
    mainloop = pa_mainloop_new();
    pa_mainloop_api* api = pa_mainloop_get_api(mainloop);
    pa_io_event* watch = api->io_new(
        api, stop.descriptor(), PA_IO_EVENT_INPUT,
        [](pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void*) {}, nullptr);
    pa_proplist* properties = pa_proplist_new();
    pa_proplist_sets(properties, PA_PROP_APPLICATION_NAME, "Larkspin");
    pa_proplist_sets(properties, PA_PROP_APPLICATION_ICON_NAME, "larkspin");
    pa_proplist_sets(properties, PA_PROP_MEDIA_ROLE, "production");
    context = pa_context_new_with_proplist(api, "Larkspin", properties);
    pa_proplist_free(properties);
    pa_context_connect(context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);

    bool told = false;
    while (!stopping.load() && goesOn() && pa_mainloop_iterate(mainloop, 1, nullptr) >= 0) {
        makeStream();
        if (!told && stream != nullptr && pa_stream_get_state(stream) == PA_STREAM_READY) {
            told = true;
            opened.set_value(true);
        }
    }
    if (!told)
        opened.set_value(false);

    if (stream != nullptr) {
        pa_stream_set_read_callback(stream, nullptr, nullptr);
        pa_stream_disconnect(stream);
        pa_stream_unref(stream);
    }
    pa_context_disconnect(context);
    pa_context_unref(context);
    api->io_free(watch);
    pa_mainloop_free(mainloop);
    over.store(true);
    reader.notify();
}

bool PulseCapture::goesOn() const
{
    return PA_CONTEXT_IS_GOOD(pa_context_get_state(context)) &&
           (stream == nullptr || PA_STREAM_IS_GOOD(pa_stream_get_state(stream)));
}

void PulseCapture::makeStream()
{
    if (stream != nullptr || pa_context_get_state(context) != PA_CONTEXT_READY)
        return;
    const pa_sample_spec format{PA_SAMPLE_FLOAT32NE, static_cast<std::uint32_t>(rate.hertz), 2};
    stream = pa_stream_new(context, "Recording", &format, nullptr);
    if (stream == nullptr)
        return pa_context_disconnect(context);
    pa_stream_set_read_callback(
        stream, [](pa_stream*, std::size_t, void* self) { static_cast<PulseCapture*>(self)->copy(); }, this);
    pa_buffer_attr buffer{};
    buffer.maxlength = static_cast<std::uint32_t>(-1);
    buffer.fragsize = static_cast<std::uint32_t>(framesIn(delivery, rate).value) * bytesOfFrame;
    const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_DONT_MOVE | PA_STREAM_ADJUST_LATENCY);
    pa_stream_connect_record(stream, source.constData(), &buffer, flags);
}

void PulseCapture::copy()
{
    const void* data = nullptr;
    std::size_t bytes = 0;
    while (pa_stream_readable_size(stream) > 0 && pa_stream_peek(stream, &data, &bytes) >= 0 && bytes > 0) {
        if (data != nullptr)
            ring.push(std::span(static_cast<const float*>(data), bytes / sizeof(float)));
        else
            ring.pushSilence({static_cast<std::int64_t>(bytes / bytesOfFrame)});
        pa_stream_drop(stream);
    }
    reader.notify();
}

}  // namespace sound
