#include "sound/editor/ParallelStretcher.h"

#include "sound/dsp/Block.h"
#include "sound/dsp/Stretcher.h"
#include "sound/editor/YieldingThread.h"

#include <algorithm>
#include <cmath>

namespace sound {
namespace {

// The pieces under way, what goes in and what comes out, take no more than this.
constexpr std::int64_t mostMemory = std::int64_t{96} * 1024 * 1024;
constexpr std::int64_t longestPiece = 12;  // seconds
constexpr std::int64_t piecesWaiting = 1;  // beyond those that the workers have

class PieceInput : public FrameInput
{
public:
    PieceInput(const Piece& piece, FramePosition begin, int channelCount)
        : frames(piece.input)
        , channels(static_cast<std::size_t>(channelCount))
        , place(static_cast<std::size_t>((begin - piece.inputBegin).value) * channels)
    {
    }

    void next(FrameCount count, float* interleaved) override
    {
        const auto wanted = static_cast<std::size_t>(count.value) * channels;
        const std::size_t there = std::min(wanted, frames.size() - std::min(place, frames.size()));
        std::copy_n(frames.data() + place, there, interleaved);
        std::fill(interleaved + there, interleaved + wanted, 0.0F);
        place += there;
    }

private:
    const std::vector<float>& frames;
    std::size_t channels;
    std::size_t place;
};

void prepare(Stretcher& stretcher, const SourcePart& source)
{
    stretcher.prepare(source.rate(), source.channels(), blockAt(source.rate()));
}

FrameCount stretched(FrameCount length, double tempo)
{
    return {std::llround(static_cast<double>(length.value) / tempo)};
}

FrameCount fittingPiece(const SourcePart& source, double tempo, std::size_t pieces)
{
    const double bytesAFrame = source.channels() * sizeof(float) * (1 + tempo);
    const auto fitting = static_cast<std::int64_t>(mostMemory / bytesAFrame) / static_cast<std::int64_t>(pieces);
    return {std::clamp(fitting, 4 * SpectralJoin::length(source.rate()).value,
                       longestPiece * std::max(1, source.rate().hertz))};
}

Cutting cuttingOf(const SourcePart& source, double tempo, FrameCount piece)
{
    Stretcher stretcher;
    prepare(stretcher, source);
    const FrameCount lead = stretcher.lead();
    const FrameCount block = blockAt(source.rate());
    return {tempo, stretched(source.length(), tempo), piece, SpectralJoin::length(source.rate()),
            lead + lead + block + block};
}

}  // namespace

ParallelStretcher::ParallelStretcher(SourcePart& part, const Changes& wanted, int workers, FrameCount pieceLength)
    : source(part)
    , changes(wanted)
    , total(stretched(part.length(), wanted.tempo))
    , common(SpectralJoin::length(part.rate()))
    , mostUnderWay(static_cast<std::size_t>(workers + piecesWaiting))
    , reader(part,
             cuttingOf(part, wanted.tempo,
                       pieceLength.value > 0 ? pieceLength : fittingPiece(part, wanted.tempo, mostUnderWay + 1)))
    , joint(part.rate(), part.channels())
{
    for (int count = 0; count < workers; ++count)
        threads.emplace_back([this] { work(); });
}

ParallelStretcher::~ParallelStretcher()
{
    stop();
    for (std::thread& thread : threads)
        thread.join();
}

void ParallelStretcher::stop()
{
    stopped.store(true);
    source.stop();
    const std::lock_guard lock(mutex);
    changed.notify_all();
}

void ParallelStretcher::work()
{
    yieldToOthers();
    Stretcher stretcher;
    prepare(stretcher, source);
    while (true) {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return stopped || reader.atEnd() || begun < fetched + mostUnderWay; });
        if (stopped || reader.atEnd())
            return;
        const std::size_t number = begun++;
        const Piece piece = reader.next();
        lock.unlock();

        std::vector<float> frames = render(stretcher, piece);

        lock.lock();
        rendered[number] = {std::move(frames), piece.last};
        changed.notify_all();
    }
}

std::vector<float> ParallelStretcher::render(Stretcher& stretcher, const Piece& piece) const
{
    const int channels = source.channels();
    PieceInput input(piece, piece.source - stretcher.lead(), channels);
    stretcher.begin(piece.source, 1 / changes.tempo, changes.pitch);
    stretcher.prime(input);

    const FrameCount block = blockAt(source.rate());
    std::vector<float> frames(static_cast<std::size_t>(piece.length.value * channels));
    for (FrameCount done; done < piece.length && !stopped; done = done + block)
        stretcher.render(input, std::min(block, piece.length - done), frames.data() + done.value * channels);
    return frames;
}

bool ParallelStretcher::next(std::vector<float>& interleaved)
{
    if (ended)
        return false;
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return stopped || rendered.contains(fetched) || total.value == 0; });
    if (stopped || total.value == 0)
        return false;
    const Rendered piece = std::move(rendered[fetched]);
    rendered.erase(fetched++);
    changed.notify_all();
    lock.unlock();

    const auto overlap = static_cast<std::ptrdiff_t>(common.value * source.channels());
    auto from = piece.frames.begin();
    if (!leaving.empty()) {
        joint.join(leaving.data(), piece.frames.data(), leaving.data());
        interleaved.insert(interleaved.end(), leaving.begin(), leaving.end());
        from += overlap;
    }
    ended = piece.last;
    const auto to = piece.last ? piece.frames.end() : piece.frames.end() - overlap;
    interleaved.insert(interleaved.end(), from, to);
    leaving.assign(to, piece.frames.end());
    return true;
}

}  // namespace sound
