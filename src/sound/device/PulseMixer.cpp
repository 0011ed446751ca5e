#include "sound/device/PulseMixer.h"

#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/mainloop.h>
#include <pulse/operation.h>
#include <pulse/volume.h>
#include <algorithm>

namespace sound {
namespace {

constexpr int failed = -1;
constexpr int full = 65535;

int mixerValue(pa_volume_t volume)
{
    const std::uint64_t scaled = (std::uint64_t{volume} * full + PA_VOLUME_NORM / 2) / PA_VOLUME_NORM;
    return static_cast<int>(std::min<std::uint64_t>(scaled, full));
}

}  // namespace

PulseMixer::PulseMixer(std::chrono::milliseconds longestWait)
    : longestWait(longestWait)
    , mainloop(pa_mainloop_new())
{
}

PulseMixer::~PulseMixer()
{
    if (context != nullptr) {
        pa_context_disconnect(context);
        pa_context_unref(context);
    }
    pa_mainloop_free(mainloop);
}

int PulseMixer::mixerOpen()
{
    deadline = Clock::now() + longestWait;
    context = pa_context_new(pa_mainloop_get_api(mainloop), "Larkspin");
    if (context == nullptr || pa_context_connect(context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
        return failed;
    const auto settled = [this] {
        const pa_context_state_t state = pa_context_get_state(context);
        return state == PA_CONTEXT_READY || !PA_CONTEXT_IS_GOOD(state);
    };
    return waitFor(settled) && pa_context_get_state(context) == PA_CONTEXT_READY ? 0 : failed;
}

bool PulseMixer::mixerGetLineControls()
{
    defaultSink = answerTo([this](TakeSink take, void* taker) {
        return pa_context_get_sink_info_by_name(context, "@DEFAULT_SINK@", take, taker);
    });
    return defaultSink.found;
}

int PulseMixer::mixerGetControlDetails()
{
    const Sink sink = answerTo([this](TakeSink take, void* taker) {
        return pa_context_get_sink_info_by_index(context, defaultSink.index, take, taker);
    });
    return sink.found ? mixerValue(sink.volume) : failed;
}

bool PulseMixer::waitFor(const std::function<bool()>& condition)
{
    while (!condition()) {
        const auto left = std::chrono::duration_cast<std::chrono::microseconds>(deadline - Clock::now());
        if (left.count() <= 0 || pa_mainloop_prepare(mainloop, static_cast<int>(left.count())) < 0 ||
            pa_mainloop_poll(mainloop) < 0 || pa_mainloop_dispatch(mainloop) < 0)
            return false;
    }
    return true;
}

PulseMixer::Sink PulseMixer::answerTo(const std::function<pa_operation*(TakeSink, void*)>& ask)
{
    Sink answer;
    const auto take = [](pa_context*, const pa_sink_info* info, int, void* taker) {
        if (info != nullptr)
            *static_cast<Sink*>(taker) = {true, info->index, pa_cvolume_max(&info->volume)};
    };
    pa_operation* operation = ask(take, &answer);
    if (operation == nullptr)
        return {};
    const bool answered =
        waitFor([operation] { return pa_operation_get_state(operation) != PA_OPERATION_RUNNING; });
    pa_operation_cancel(operation);
    pa_operation_unref(operation);
    return answered ? answer : Sink{};
}

}  // namespace sound
