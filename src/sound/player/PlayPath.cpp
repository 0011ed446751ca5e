#include "sound/player/PlayPath.h"

#include <cmath>

namespace sound {

PlayPath::PlayPath()
    : stretched(*this)
{
}

void PlayPath::prepare(SampleRate rate, int channels, FrameCount block)
{
    windowReader.prepare(rate, channels);
    stretcher.prepare(rate, channels, block);
    variableRate.prepare(channels, block);
}

void PlayPath::start(const SampleSource& source, const PlayWindow& window, FramePosition first,
                     const Changes& changes)
{
    beginStart(source, window, first, changes);
    finishStart();
}

void PlayPath::beginStart(const SampleSource& source, const PlayWindow& window, FramePosition first,
                          const Changes& changes)
{
    current = changes;
    windowReader.open(source, window, first,
                      changes.stretches() ? WindowReader::stretchedSeam : WindowReader::plainSeam);

    // What a resampler needs before the first frame lies so much further back in the sound.
    begin = first;
    if (changes.resamples())
        begin = first - FrameCount{std::llround(static_cast<double>(VariableRate::lead().value) * changes.tempo)};

    if (changes.stretches()) {
        windowReader.seek(begin - stretcher.lead());
        stretcher.begin(begin, 1 / changes.tempo, changes.pitch);
        stretcher.primeHalf(windowReader);
    } else {
        windowReader.seek(begin);
    }
}

void PlayPath::finishStart()
{
    if (current.stretches())
        stretcher.prime(windowReader);
    if (current.resamples())
        variableRate.start(current.stretches() ? static_cast<FrameInput&>(stretched) : windowReader, current.rate);
}

bool PlayPath::canChangeTo(const Changes& changes) const
{
    return changes.stretches() == current.stretches() && changes.resamples() == current.resamples();
}

void PlayPath::change(const Changes& changes)
{
    current = changes;
    if (changes.stretches())
        stretcher.change(1 / changes.tempo, changes.pitch);
    if (changes.resamples())
        variableRate.change(changes.rate);
}

void PlayPath::replaceWindow(const SampleSource& source, const PlayWindow& window)
{
    windowReader.open(source, window, foldedIn(windowReader.window(), windowReader.position()));
}

void PlayPath::render(FrameCount count, float* interleaved)
{
    if (current.resamples())
        variableRate.render(current.stretches() ? static_cast<FrameInput&>(stretched) : windowReader, count,
                            interleaved);
    else if (current.stretches())
        stretcher.render(windowReader, count, interleaved);
    else
        windowReader.next(count, interleaved);
}

double PlayPath::position(double ahead) const
{
    if (current.resamples()) {
        const double frame = variableRate.inputAt(ahead);
        return current.stretches() ? stretcher.inputAt(frame) : static_cast<double>(begin.value) + frame;
    }
    if (current.stretches())
        return stretcher.inputAt(stretcher.rendered() + ahead);
    return static_cast<double>(windowReader.position().value) + ahead;
}

void PlayPath::Stretched::next(FrameCount count, float* interleaved)
{
    path.stretcher.render(path.windowReader, count, interleaved);
}

}  // namespace sound
