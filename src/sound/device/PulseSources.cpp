#include "sound/device/PulseSources.h"

#include "sound/device/PulseCapture.h"

#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/volume.h>
#include <algorithm>
#include <cmath>

namespace sound {

using namespace std::chrono_literals;

namespace {

constexpr auto restAfterSilence = 1s;

int percentOf(const pa_cvolume& volume)
{
    const double part = static_cast<double>(pa_cvolume_max(&volume)) / PA_VOLUME_NORM;
    return static_cast<int>(std::min(100L, std::lround(part * 100)));
}

CaptureDevice deviceOf(const pa_source_info& source)
{
    CaptureDevice device;
    device.key = QString::fromUtf8(source.name);
    device.name = QString::fromUtf8(source.description != nullptr ? source.description : source.name);
    device.rate = {static_cast<int>(source.sample_spec.rate)};
    device.volume = percentOf(source.volume);
    for (std::uint32_t port = 0; port < source.n_ports; ++port) {
        device.lines.push_back(
            {QString::fromUtf8(source.ports[port]->name), QString::fromUtf8(source.ports[port]->description)});
        if (source.ports[port] == source.active_port)
            device.currentLine = static_cast<int>(port);
    }
    if (device.lines.empty())
        device.lines.push_back({{}, device.name});
    return device;
}

/// For the library, which is given a TakeSource.
template <typename TakeSource>
void passOn(pa_context*, const pa_source_info* source, int, void* take)
{
    if (source != nullptr)
        (*static_cast<const TakeSource*>(take))(*source);
}

}  // namespace

PulseSources::PulseSources(std::chrono::milliseconds longestWait)
    : server(longestWait)
{
}

bool PulseSources::isThere()
{
    if (Clock::now() < askAgainAt)
        return false;
    server.startWaiting();
    if (server.isConnected() || server.connect())
        return true;
    restWhereItWaited();
    return false;
}

void PulseSources::restWhereItWaited()
{
    if (server.isOverdue())
        askAgainAt = Clock::now() + restAfterSilence;
}

// That the server has ended since the last question shows only with this one: another may be there meanwhile.
void PulseSources::ask(const Question& question)
{
    const int attempts = server.isConnected() ? 2 : 1;
    for (int attempt = 0; attempt < attempts && isThere(); ++attempt) {
        if (server.isAnswered(question(server.context())))
            return;
        if (server.isConnected())
            return restWhereItWaited();
    }
}

void PulseSources::askForSource(const QString& key, const TakeSource& take)
{
    if (!key.isEmpty())
        ask([&, name = key.toUtf8()](pa_context* context) {
            return pa_context_get_source_info_by_name(context, name, passOn<TakeSource>,
                                                      const_cast<TakeSource*>(&take));
        });
}

QString PulseSources::defaultKey()
{
    QString key;
    const auto take = [](pa_context*, const pa_server_info* info, void* taker) {
        if (info != nullptr && info->default_source_name != nullptr)
            *static_cast<QString*>(taker) = QString::fromUtf8(info->default_source_name);
    };
    ask([&](pa_context* context) { return pa_context_get_server_info(context, take, &key); });
    return key;
}

std::vector<CaptureDevice> PulseSources::devices()
{
    std::vector<CaptureDevice> found;
    TakeSource take = [&](const pa_source_info& source) { found.push_back(deviceOf(source)); };
    ask([&](pa_context* context) {
        found.clear();
        return pa_context_get_source_info_list(context, passOn<TakeSource>, &take);
    });
    const QString first = found.empty() ? QString() : defaultKey();
    std::stable_partition(found.begin(), found.end(),
                          [&](const CaptureDevice& device) { return device.key == first; });
    return found;
}

CaptureDevice PulseSources::device(const QString& key)
{
    CaptureDevice found;
    askForSource(key, [&](const pa_source_info& source) { found = deviceOf(source); });
    return found;
}

void PulseSources::selectLine(const QString& key, const QString& line)
{
    if (!key.isEmpty() && !line.isEmpty())
        ask([name = key.toUtf8(), port = line.toUtf8()](pa_context* context) {
            return pa_context_set_source_port_by_name(context, name, port, nullptr, nullptr);
        });
}

void PulseSources::setVolume(const QString& key, int percent)
{
    pa_cvolume volume{};
    askForSource(key, [&](const pa_source_info& source) { volume = source.volume; });
    const int wanted = std::clamp(percent, 0, 100);
    if (volume.channels == 0 || percentOf(volume) == wanted)
        return;
    pa_cvolume_scale(&volume, static_cast<pa_volume_t>(std::lround(PA_VOLUME_NORM / 100.0 * wanted)));
    ask([&, name = key.toUtf8()](pa_context* context) {
        return pa_context_set_source_volume_by_name(context, name, &volume, nullptr, nullptr);
    });
}

void PulseSources::setMuted(const QString& key, bool muted)
{
    if (!key.isEmpty())
        ask([muted, name = key.toUtf8()](pa_context* context) {
            return pa_context_set_source_mute_by_name(context, name, muted ? 1 : 0, nullptr, nullptr);
        });
}

std::unique_ptr<Capture> PulseSources::capture(const CaptureDevice& device, CaptureRing& ring, Wakeup& reader)
{
    return PulseCapture::open(device, ring, reader);
}

}  // namespace sound
