#include "sound/editor/ParallelStretcher.h"

#include "sound/editor/PieceStretcher.h"
#include "sound/units/YieldingThread.h"

#include <algorithm>
#include <cmath>

namespace sound {
namespace {

// The pieces under way, what goes in and what comes out, take no more than this.
constexpr std::int64_t mostMemory = std::int64_t{96} * 1024 * 1024;
constexpr std::int64_t piecesWaiting = 1;  // beyond those that the workers have
constexpr std::int64_t longestPiece = 20;  // seconds

// The best join is none: a sound that is no longer than this stays in one piece.
constexpr std::int64_t shortestPiece = 12;  // seconds

FrameCount stretched(FrameCount length, double tempo)
{
    return {std::llround(static_cast<double>(length.value) / tempo)};
}

// Pieces of one length, as many for each worker where they are long enough, none longer than what fits.
FrameCount fittingPiece(const SourcePart& source, double tempo, int workers)
{
    const double bytesAFrame = source.channels() * sizeof(float) * (1 + tempo);
    const auto fitting = static_cast<std::int64_t>(mostMemory / bytesAFrame) / (workers + piecesWaiting + 1);
    const std::int64_t longest = std::clamp(fitting, 4 * SpectralJoin::length(source.rate()).value,
                                            longestPiece * std::max(1, source.rate().hertz));
    const std::int64_t total = stretched(source.length(), tempo).value;
    const std::int64_t rounds = total / (longest * workers) + 1;
    const std::int64_t shortest = std::min(longest, shortestPiece * std::max(1, source.rate().hertz));
    return {std::max(total / (rounds * workers) + 1, shortest)};
}

Cutting cuttingOf(const SourcePart& source, double tempo, FrameCount piece)
{
    return {tempo, stretched(source.length(), tempo), piece, SpectralJoin::length(source.rate()),
            PieceStretcher::around(source.rate())};
}

}  // namespace

ParallelStretcher::ParallelStretcher(SourcePart& part, const Changes& wanted, int workers, FrameCount pieceLength)
    : source(part)
    , changes(wanted)
    , total(stretched(part.length(), wanted.tempo))
    , common(SpectralJoin::length(part.rate()))
    , mostUnderWay(static_cast<std::size_t>(workers + piecesWaiting))
    , reader(part, cuttingOf(part, wanted.tempo,
                             pieceLength.value > 0 ? pieceLength : fittingPiece(part, wanted.tempo, workers)))
    , continuation(part.rate(), part.channels())
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
    PieceStretcher stretcher(source.rate(), source.channels(), changes);
    while (true) {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return stopped || reader.atEnd() || begun < fetched + mostUnderWay; });
        if (stopped || reader.atEnd())
            return;
        const std::size_t number = begun++;
        const Piece piece = reader.next();
        lock.unlock();

        std::vector<float> frames = stretcher.render(piece, stopped, framesRendered);

        lock.lock();
        rendered[number] = {std::move(frames), piece.last};
        changed.notify_all();
    }
}

double ParallelStretcher::progress() const
{
    return framesRendered < total.value ? static_cast<double>(framesRendered) / static_cast<double>(total.value)
                                        : 1;
}

// The next piece into ready; false at the end.
bool ParallelStretcher::fetch()
{
    if (ended)
        return false;
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return stopped || rendered.contains(fetched) || total.value == 0; });
    if (stopped || total.value == 0)
        return false;
    auto piece = rendered.extract(fetched++);
    changed.notify_all();
    lock.unlock();

    ready = std::move(piece.mapped().frames);
    given = 0;
    ended = piece.mapped().last;
    if (!leaving.empty()) {
        continuation.carryOn(leaving.data(), ready);
        joint.join(leaving.data(), ready.data(), ready.data());
    }
    if (!ended) {
        const auto overlap = static_cast<std::ptrdiff_t>(common.value * source.channels());
        leaving.assign(ready.end() - overlap, ready.end());
        ready.resize(ready.size() - leaving.size());
    }
    return true;
}

bool ParallelStretcher::next(std::vector<float>& interleaved)
{
    if (stopped || (given == ready.size() && !fetch()))
        return false;
    const std::size_t second =
        static_cast<std::size_t>(source.rate().hertz) * static_cast<std::size_t>(source.channels());
    const std::size_t count = std::min(second, ready.size() - given);
    const auto from = ready.begin() + static_cast<std::ptrdiff_t>(given);
    interleaved.insert(interleaved.end(), from, from + static_cast<std::ptrdiff_t>(count));
    given += count;
    return true;
}

}  // namespace sound
