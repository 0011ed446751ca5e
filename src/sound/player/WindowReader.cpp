#include "sound/player/WindowReader.h"

#include "sound/dsp/Crossfade.h"
#include "sound/media/SampleSource.h"

#include <algorithm>

namespace sound {

void WindowReader::prepare(SampleRate newRate, int channelCount)
{
    rate = newRate;
    channels = channelCount;
    // Two stretches of a seam, when their similarity is taken.
    leadUp.assign(static_cast<size_t>(framesIn(stretchedSeam, rate).value * channels * 2), 0.0F);
}

void WindowReader::open(const SampleSource& newSource, const PlayWindow& window, FramePosition newRunning,
                        std::chrono::milliseconds seamTime)
{
    source = &newSource;
    playWindow = window;
    running = newRunning;
    seam = {0};
    if (!window.repeats)
        return;

    seam = {std::min(framesIn(seamTime, rate).value, window.length().value / 2)};
    const std::int64_t samples = seam.value * channels;
    float* before = leadUp.data();
    float* last = leadUp.data() + samples;
    source->read(window.begin - seam, seam, before);
    source->read(window.end - seam, seam, last);
    seamSimilarity = similarity(before, last, static_cast<size_t>(samples));
}

void WindowReader::seek(FramePosition newRunning)
{
    running = newRunning;
}

void WindowReader::next(FrameCount count, float* interleaved)
{
    FrameCount done;
    while (done < count) {
        const FramePosition place = foldedIn(playWindow, running);
        float* to = interleaved + done.value * channels;
        FrameCount piece = count - done;
        if (!playWindow.repeats) {
            const FrameCount left{std::clamp<std::int64_t>((playWindow.end - place).value, 0, piece.value)};
            source->read(place, left, to);
            std::fill(to + left.value * channels, to + piece.value * channels, 0.0F);
        } else if (place < playWindow.end - seam) {
            piece = std::min(piece, (playWindow.end - seam) - place);
            source->read(place, piece, to);
        } else {
            piece = std::min(piece, playWindow.end - place);
            readSeam(place, piece, to);
        }
        running = running + piece;
        done = done + piece;
    }
}

void WindowReader::readSeam(FramePosition from, FrameCount count, float* interleaved)
{
    source->read(from, count, interleaved);
    source->read(from - playWindow.length(), count, leadUp.data());
    const FrameCount behind = from - (playWindow.end - seam);
    for (std::int64_t frame = 0; frame < count.value; ++frame) {
        const double progress = (static_cast<double>(behind.value + frame) + 0.5) / static_cast<double>(seam.value);
        const FadeWeights weights = fadeWeights(progress, seamSimilarity);
        for (int channel = 0; channel < channels; ++channel) {
            const std::int64_t index = frame * channels + channel;
            interleaved[index] =
                interleaved[index] * weights.leaving + leadUp[static_cast<size_t>(index)] * weights.coming;
        }
    }
}

bool WindowReader::ready(const SampleSource& source, const PlayWindow& window, FramePosition from, FrameCount count)
{
    const FramePosition last = foldedIn(window, from) + count;
    return endOf(source.available()) >= std::min(last, window.end);
}

bool WindowReader::inSeam(FramePosition place) const
{
    return playWindow.repeats && foldedIn(playWindow, place) >= playWindow.end - seam;
}

}  // namespace sound
