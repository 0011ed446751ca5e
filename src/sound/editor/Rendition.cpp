#include "sound/editor/Rendition.h"

#include "sound/dsp/Block.h"

#include <algorithm>
#include <cmath>

namespace sound {
namespace {

constexpr FrameCount pieceLength{16384};

}  // namespace

Rendition::Rendition(std::unique_ptr<SourcePart> part, const RenditionSettings& wanted, int workers)
    : source(std::move(part))
    , settings(wanted)
    , limiter(largestBlock)
{
    const Changes& changes = settings.changes;
    // Frames of the stretched sound a second of the result.
    const double drawnRate = source->rate().hertz * changes.rate;
    total = {std::llround(static_cast<double>(source->length().value) / changes.tempo * settings.rate.hertz /
                          drawnRate)};
    if (changes.stretches())
        stretcher = std::make_unique<ParallelStretcher>(*source, changes, workers);
    if (drawnRate != settings.rate.hertz)
        converter = std::make_unique<SampleRateConverter>(drawnRate, settings.rate.hertz, source->channels());
    limiter.prepare(settings.rate);
}

Rendition::~Rendition() = default;

void Rendition::stop()
{
    stopped.store(true);
    source->stop();
    if (stretcher)
        stretcher->stop();
}

double Rendition::progress() const
{
    if (stretcher)
        return stretcher->progress();
    return total.value > 0 ? static_cast<double>(given.load().value) / static_cast<double>(total.value) : 1;
}

// Into piece; false at the end.
bool Rendition::draw()
{
    piece.clear();
    return stretcher ? stretcher->next(piece) : source->read(pieceLength, piece).value > 0;
}

// Into waiting, what comes out of one piece more.
void Rendition::convert()
{
    const bool more = draw();
    if (!converter)
        waiting.insert(waiting.end(), piece.begin(), piece.end());
    else if (more)
        converter->convert(piece, waiting);
    else
        converter->finish(waiting);
    drawn = !more;
}

bool Rendition::next(std::vector<float>& interleaved)
{
    const auto channels = static_cast<std::size_t>(source->channels());
    while (waiting.empty() && !drawn)
        convert();
    const FrameCount left = total - given.load();
    if (stopped || left.value <= 0)
        return false;
    FrameCount count{static_cast<std::int64_t>(waiting.size() / channels)};
    if (waiting.empty())
        count = pieceLength;  // what rounding has made the sound longer by
    count = std::min(count, left);
    waiting.resize(static_cast<std::size_t>(count.value) * channels, 0.0F);

    stereo.clear();
    for (std::size_t frame = 0; frame < waiting.size(); frame += channels) {
        stereo.push_back(waiting[frame]);
        stereo.push_back(waiting[frame + channels - 1]);
    }
    waiting.clear();
    given = given.load() + count;

    if (settings.gain != 1) {
        for (float& sample : stereo)
            sample = static_cast<float>(sample * settings.gain);
    }
    const FrameCount block = blockAt(settings.rate);
    for (FrameCount done; done < count; done = done + block)
        limiter.process(stereo.data() + 2 * done.value, std::min(block, count - done));

    if (settings.channels == 2) {
        interleaved.insert(interleaved.end(), stereo.begin(), stereo.end());
        return true;
    }
    for (std::size_t sample = 0; sample < stereo.size(); sample += 2)
        interleaved.push_back((stereo[sample] + stereo[sample + 1]) / 2);
    return true;
}

}  // namespace sound
