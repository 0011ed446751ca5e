#include "sound/recorder/RecordingChain.h"

#include <algorithm>
#include <utility>

namespace sound {

RecordingChain::RecordingChain(SampleRate captured)
    : rate(captured)
    , watch(captured)
    , gate(captured)
    , files(captured)
{
    limiter.prepare(captured);
}

void RecordingChain::changeRate(SampleRate captured)
{
    if (captured == rate)
        return;
    rate = captured;
    watch = LevelWatch(captured);
    watch.setThreshold(threshold);
    watch.setShortestPause(shortestPause);
    gate = SilenceGate(captured);
    limiter.prepare(captured);
    files.changeRate(captured);
}

void RecordingChain::setThreshold(int level)
{
    threshold = level;
    watch.setThreshold(level);
}

void RecordingChain::watchLevel(bool wanted)
{
    if (wanted && !watching)
        watch.restart();
    watching = wanted;
}

void RecordingChain::setShortestPause(Milliseconds pause)
{
    shortestPause = pause;
    watch.setShortestPause(pause);
}

bool RecordingChain::begin(const QString& path, const RecordingFormat& format)
{
    if (!isRecording()) {
        gate.reset();
        limiter.reset();
        // The silence before the recording has been told of, but nobody could leave it out yet.
        if (leavesSilenceOut())
            watch.restart();
    }
    return files.begin(path, format);
}

bool RecordingChain::end()
{
    bool good = true;
    // What is held of an open gate is the end of the sound; of a closed one it is silence.
    if (isRecording() && gate.isOpen()) {
        kept.clear();
        gate.release(kept);
        good = files.write(kept);
    }
    gate.reset();
    return files.finish() && good;
}

RecordingChain::Step RecordingChain::take(std::span<const float> stereo)
{
    Step step;
    step.taken = {std::min(static_cast<std::int64_t>(stereo.size() / 2), largestStep.value)};
    std::span<const float> part = stereo.first(static_cast<std::size_t>(step.taken.value) * 2);
    if (watching) {
        if (const auto found = watch.watch(part)) {
            step.taken = found->before;
            step.change = found->change;
            part = part.first(static_cast<std::size_t>(step.taken.value) * 2);
        }
    }
    peaks = higher(peaks, peaksOf(part.data(), step.taken));
    step.failed = isRecording() && !write(part, step.change);
    return step;
}

bool RecordingChain::write(std::span<const float> stereo, std::optional<LevelWatch::Change> change)
{
    limited.assign(stereo.begin(), stereo.end());
    if (keepsFromClipping)
        limiter.process(limited.data(), {static_cast<std::int64_t>(limited.size() / 2)});
    kept.clear();
    if (leavesSilenceOut()) {
        gate.pass(limited, kept);
        if (change == LevelWatch::Change::Sound)
            gate.open();
        else if (change == LevelWatch::Change::Silence)
            gate.close(kept);
    } else {
        gate.release(kept);
        kept.insert(kept.end(), limited.begin(), limited.end());
    }
    return files.write(kept);
}

Peaks RecordingChain::takePeaks()
{
    return std::exchange(peaks, {});
}

}  // namespace sound
