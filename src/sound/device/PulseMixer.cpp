#include "sound/device/PulseMixer.h"

#include <pulse/context.h>
#include <pulse/introspect.h>
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
    : server(longestWait)
{
}

int PulseMixer::mixerOpen()
{
    return server.connect() ? 0 : failed;
}

bool PulseMixer::mixerGetLineControls()
{
    defaultSink = answerTo([this](TakeSink take, void* taker) {
        return pa_context_get_sink_info_by_name(server.context(), "@DEFAULT_SINK@", take, taker);
    });
    return defaultSink.found;
}

int PulseMixer::mixerGetControlDetails()
{
    const Sink sink = answerTo([this](TakeSink take, void* taker) {
        return pa_context_get_sink_info_by_index(server.context(), defaultSink.index, take, taker);
    });
    return sink.found ? mixerValue(sink.volume) : failed;
}

PulseMixer::Sink PulseMixer::answerTo(const std::function<pa_operation*(TakeSink, void*)>& ask)
{
    Sink answer;
    const auto take = [](pa_context*, const pa_sink_info* info, int, void* taker) {
        if (info != nullptr)
            *static_cast<Sink*>(taker) = {true, info->index, pa_cvolume_max(&info->volume)};
    };
    return server.isAnswered(ask(take, &answer)) ? answer : Sink{};
}

}  // namespace sound
