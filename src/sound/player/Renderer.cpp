#include "sound/player/Renderer.h"

#include "sound/dsp/Crossfade.h"
#include "sound/player/LoadedSound.h"
#include "sound/player/WindowReader.h"

#include <algorithm>
#include <cmath>

namespace sound {
namespace {

using namespace std::chrono_literals;

constexpr auto fadeTime = 5ms;

// A change of tempo or pitch starts the path anew, which brings it out at once. While a slider is being dragged the
// changes come faster than that is good for the sound: then they go into the running path, which follows them a
// little late and by some frames less exactly, and is started anew when the slider has come to rest.
constexpr auto restartInterval = 150ms;

// How long a stretcher's start is rested from: as long as it may take, so that starts in a row leave half of the
// time.
constexpr auto restAfterStart = 30ms;

// More than any stretcher and resampler look ahead of the frame that is heard, for each kilohertz of the rate.
constexpr std::int64_t lookAheadPerKilohertz = 400;

}  // namespace

Renderer::Renderer()
    : limiter(largestBlock)
{
}

PlayPath& Renderer::path() const
{
    return current.sound->path(activePath);
}

void Renderer::update(const Transport& transport, const Settings& newSettings)
{
    renderThread.expect();
    settings = newSettings;
    equalizer.set(settings.equalizer);
    level.set(settings.gain, settings.balance);
    wanted = transport;
    if (state != State::Sounding && wanted.serial != current.serial)
        adopt();
}

// Puts into force what is wanted, where nothing sounds that would have to be faded.
void Renderer::adopt()
{
    halfStart.done = false;
    const bool newSound = wanted.sound != current.sound;
    if (newSound || wanted.jump != current.jump) {
        held = static_cast<double>(wanted.position.value);
        resuming = false;
        ended = false;
    } else {
        held = foldedIn(current.window, held);
    }
    current = wanted;
    if (newSound && current.sound != nullptr) {
        outputRate = current.sound->source().rate();
        blockFrames = current.sound->block();
        equalizer.prepare(outputRate);
        level.prepare(outputRate);
        limiter.prepare(outputRate);
    }
    const bool plays = current.sound != nullptr && current.motion == Transport::Motion::Playing && !ended;
    state = plays ? State::Waiting : State::Silent;
    timeline.append(entryAt(held, 0), {0});
}

void Renderer::render(float* stereo, bool hurried)
{
    renderThread.expect();
    if (state == State::Waiting && decodedAt({std::llround(held)})) {
        renderStart(stereo);
        return;
    }
    if (state != State::Sounding) {
        renderSilence(stereo);
        return;
    }

    const bool goesOn = wanted.sound == current.sound && wanted.motion == Transport::Motion::Playing;
    const FramePosition next = wanted.jump != current.jump ? wanted.position : place();
    if (!goesOn || !decodedAt(next)) {
        renderLeaving(stereo);
        return;
    }
    if (wanted.jump != current.jump) {
        renderRestart(next, stereo, hurried);
        return;
    }
    if (wanted.window != current.window) {
        const bool sameSamples = !path().changes().stretches() && !path().changes().resamples() &&
                                 !path().reader().inSeam(path().reader().position());
        if (!sameSamples) {
            renderRestart(next, stereo, hurried);
            return;
        }
        path().replaceWindow(current.sound->source(), wanted.window);
    }
    const Changes& inForce = path().changes();
    const bool rested = sinceChange >= framesIn(restartInterval, outputRate);
    const bool stretchDiffers = settings.changes.tempo != inForce.tempo || settings.changes.pitch != inForce.pitch;
    if (!path().canChangeTo(settings.changes) || (rested && (stretchDiffers || dragged))) {
        renderRestart(next, stereo, hurried);
        return;
    }
    if (settings.changes != inForce) {
        if (stretchDiffers) {
            dragged = true;
            sinceChange = {0};
        }
        path().change(settings.changes);
    }
    current = wanted;
    halfStart.done = false;
    renderSounding(stereo);
}

// The place in the sound that comes next, as a running position of the window that is wanted.
FramePosition Renderer::place() const
{
    return foldedIn(current.window, FramePosition{std::llround(path().position())});
}

bool Renderer::decodedAt(FramePosition first) const
{
    const SampleSource& source = wanted.sound != nullptr ? wanted.sound->source() : current.sound->source();
    const FrameCount lookAhead{lookAheadPerKilohertz * source.rate().hertz / 1000};
    return WindowReader::ready(source, wanted.window, first, lookAhead);
}

TimelineEntry Renderer::entryAt(double position, double slope) const
{
    TimelineEntry entry;
    entry.position = position;
    entry.slope = slope;
    entry.window = current.window;
    entry.jump = current.jump;
    entry.ended = ended;
    return entry;
}

void Renderer::renderSilence(float* stereo)
{
    std::fill(stereo, stereo + blockFrames.value * 2, 0.0F);
    timeline.append(entryAt(held, 0), blockFrames);
}

void Renderer::renderStart(float* stereo)
{
    path().start(current.sound->source(), current.window, {std::llround(held)}, settings.changes);
    equalizer.settle();
    level.settle();
    limiter.reset();
    state = State::Sounding;
    sinceChange = framesIn(restartInterval, outputRate);
    sinceStart = framesIn(restAfterStart, outputRate);
    dragged = false;
    const bool fade = resuming;
    resuming = false;
    renderSounding(stereo);
    if (fade)
        fadeIn(stereo, std::min(framesIn(fadeTime, outputRate), blockFrames), 2);
}

void Renderer::renderSounding(float* stereo)
{
    const double from = path().position();
    path().render(blockFrames, current.sound->comingBlock());
    const double to = path().position();
    finish(current.sound->comingBlock(), stereo,
           entryAt(from, (to - from) / static_cast<double>(blockFrames.value)));
    sinceChange = sinceChange + blockFrames;
    sinceStart = sinceStart + blockFrames;
    current.sound->source().willReadNear(path().reader().position());

    const auto end = static_cast<double>(current.window.end.value);
    if (!current.window.repeats && to >= end) {
        state = State::Silent;
        held = end;
        ended = true;
        timeline.append(entryAt(held, 0), {0});
    }
}

// Lets the sound go with a short fade; what is wanted instead comes into force behind it.
void Renderer::renderLeaving(float* stereo)
{
    const double from = path().position();
    path().render(blockFrames, current.sound->leavingBlock());
    fadeOut(current.sound->leavingBlock(), framesIn(fadeTime, outputRate), blockFrames,
            current.sound->source().channels());
    finish(current.sound->leavingBlock(), stereo, entryAt(from, 0));
    held = from;
    resuming = true;
    adopt();
}

// Goes over to the idle path, started at @p first. To start a stretcher takes longer than a block may where the
// output's buffer is short, so half of it is done one block ahead, while the running path sounds on. What has been
// begun is finished, whatever is wanted by then, so that a change in each block is heard all the same and no block
// has more to do than half a start; what is wanted instead comes next. Starts that follow each other without a
// rest, or that begin when time is short already, would take more than there is.
void Renderer::renderRestart(FramePosition first, float* stereo, bool hurried)
{
    LoadedSound& sound = *current.sound;
    PlayPath& idle = sound.path(1 - activePath);
    const bool jumps = wanted.jump != current.jump;
    const FramePosition predicted =
        jumps ? first
              : foldedIn(current.window,
                         FramePosition{std::llround(path().position(static_cast<double>(blockFrames.value)))});
    const bool endsBefore = !current.window.repeats && predicted >= current.window.end;
    const bool rests = (hurried && !halfStart.done) || sinceStart < framesIn(restAfterStart, outputRate);
    if (rests && settings.changes.stretches() && !endsBefore) {
        renderSounding(stereo);
        return;
    }
    const bool begun = halfStart.done && (halfStart.jumps || halfStart.first == place());
    if (begun) {
        idle.finishStart();
        current = halfStart.transport;
    } else if (!halfStart.done && settings.changes.stretches() && !endsBefore && decodedAt(predicted)) {
        halfStart = {true, jumps, wanted, predicted};
        idle.beginStart(sound.source(), wanted.window, predicted, settings.changes);
        renderSounding(stereo);
        return;
    } else {
        idle.start(sound.source(), wanted.window, first, settings.changes);
        current = wanted;
    }
    halfStart.done = false;
    ended = false;
    renderCrossover(stereo);
}

// One block from the path that sounds to the other one, which is started.
void Renderer::renderCrossover(float* stereo)
{
    LoadedSound& sound = *current.sound;
    PlayPath& leaving = path();
    activePath = 1 - activePath;
    const double from = path().position();
    path().render(blockFrames, sound.comingBlock());
    const double to = path().position();
    leaving.render(blockFrames, sound.leavingBlock());
    crossfade(sound.leavingBlock(), sound.comingBlock(), blockFrames, sound.source().channels());
    finish(sound.comingBlock(), stereo, entryAt(from, (to - from) / static_cast<double>(blockFrames.value)));
    sinceChange = blockFrames;
    sinceStart = {0};
    dragged = false;
}

// From the path's channels to stereo, and through what holds for every sound.
void Renderer::finish(const float* frames, float* stereo, TimelineEntry entry)
{
    if (current.sound->source().channels() == 2) {
        std::copy(frames, frames + blockFrames.value * 2, stereo);
    } else {
        for (std::int64_t frame = 0; frame < blockFrames.value; ++frame)
            stereo[2 * frame] = stereo[2 * frame + 1] = frames[frame];
    }
    equalizer.process(stereo, blockFrames);
    level.process(stereo, blockFrames);
    limiter.process(stereo, blockFrames);
    entry.peaks = peaksOf(stereo, blockFrames);
    timeline.append(entry, blockFrames);
    soundEnd = timeline.end();
}

Snapshot Renderer::heard(FrameCount delay) const
{
    const std::int64_t frame = timeline.end() - delay.value;
    const TimelineEntry& entry = timeline.at(frame);
    const std::int64_t inEntry = std::clamp<std::int64_t>(frame - entry.begin, 0, entry.end - entry.begin);

    Snapshot snapshot;
    snapshot.serial = current.serial;
    snapshot.jump = entry.jump;
    snapshot.sound = current.sound != nullptr ? current.sound->serial() : 0;
    snapshot.position = entry.position + static_cast<double>(inEntry) * entry.slope;
    snapshot.framesASecond = frame < timeline.end() ? entry.slope * outputRate.hertz : 0;
    snapshot.window = entry.window;
    snapshot.ended = entry.ended;
    return snapshot;
}

bool Renderer::allHeard(FrameCount delay) const
{
    return timeline.end() - delay.value >= soundEnd;
}

Peaks Renderer::takePeaks(FrameCount delay)
{
    const std::int64_t now = timeline.end() - delay.value;
    const Peaks peaks = timeline.peaksBetween(peaksTakenTo, now);
    peaksTakenTo = std::max(peaksTakenTo, now);
    return peaks;
}

}  // namespace sound
