#include "sound/vocals/RemovalJob.h"

#include "sound/units/YieldingThread.h"

#include <sys/stat.h>
#include <unistd.h>
#include <QFile>
#include <algorithm>
#include <utility>
#include <vector>

namespace sound {
namespace {

/// Where nothing is removed, segments have no surroundings.
constexpr std::int64_t leastFrames = 32 * 1024;

/// Segments of one length, as many for each worker. Their surroundings are worked through once more with each, and
/// all that a worker has in hand takes memory: so they are neither short nor long.
FrameCount fittingSegment(FrameCount sound, FrameCount surroundings, int workers)
{
    const std::int64_t shortest = std::max(surroundings.value, leastFrames);
    const std::int64_t longest = 4 * shortest;
    const std::int64_t rounds = sound.value / (longest * workers) + 1;
    return {std::clamp(sound.value / (rounds * workers) + 1, shortest, longest)};
}

FrameCount roundedUp(FrameCount length, FrameCount grid)
{
    return {(length.value + grid.value - 1) / grid.value * grid.value};
}

bool isSameFile(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Whoever reads there is not to take what he finds for the result.
void takeOutputAway(const RemovalSettings& settings)
{
    const QByteArray output = QFile::encodeName(settings.output);
    struct stat there = {};
    if (output.contains('\0') || ::stat(output.constData(), &there) != 0 || !S_ISREG(there.st_mode))
        return;
    struct stat source = {};
    if (::stat(QFile::encodeName(settings.input).constData(), &source) == 0 && isSameFile(there, source))
        return;
    ::unlink(output.constData());
}

}  // namespace

RemovalJob::RemovalJob(RemovalSettings wanted, int threads, FrameCount segment)
    : settings(std::move(wanted))
    , workers(threads)
    , wantedSegment(segment)
    , thread([this] {
        yieldToOthers();
        const VocalRemoval how = removeAll();
        const std::lock_guard lock(mutex);
        if (outcome == VocalRemoval::Done)
            outcome = how;
        ended = true;
        changed.notify_all();
    })
{
}

RemovalJob::~RemovalJob()
{
    if (!finished) {
        giveUp();
        finish();
    }
}

bool RemovalJob::waitFor(std::chrono::milliseconds time)
{
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, time, [this] { return ended; });
}

short RemovalJob::percent() const
{
    const std::lock_guard lock(mutex);
    if (ended)
        return 100;
    return total.value == 0 ? short{0} : static_cast<short>(removed.value * 99 / total.value);
}

void RemovalJob::giveUp()
{
    const std::lock_guard lock(mutex);
    outcome = VocalRemoval::GivenUp;
}

VocalRemoval RemovalJob::result() const
{
    const std::lock_guard lock(mutex);
    return outcome;
}

VocalRemoval RemovalJob::finish()
{
    thread.join();
    finished = true;
    if (outcome == VocalRemoval::Done && !output->finish())
        outcome = VocalRemoval::CannotWriteOutput;
    output.reset();
    if (outcome != VocalRemoval::Done)
        takeOutputAway(settings);
    return outcome;
}

VocalRemoval RemovalJob::removeAll()
{
    const OpenedWaveInput opened = WaveInput::open(settings.input);
    if (!opened.input)
        return opened.result;
    const WaveInput& input = *opened.input;
    auto file = WaveOutput::create(settings.output, input.samples(), input.rate(), input.length());
    if (!file)
        return VocalRemoval::CannotWriteOutput;
    removeSegments(input, *file);
    if (const VocalRemoval how = result(); how != VocalRemoval::Done)
        return how;
    if (!file->bringToDisc())
        return VocalRemoval::CannotWriteOutput;
    output = std::move(file);
    return VocalRemoval::Done;
}

void RemovalJob::removeSegments(const WaveInput& input, WaveOutput& file)
{
    SegmentRemover remover(input, file, settings.place);
    const VocalCanceller& canceller = remover.voiceCanceller();
    const FrameCount wanted =
        wantedSegment.value > 0 ? wantedSegment : fittingSegment(input.length(), canceller.surroundings(), workers);
    const FrameCount length = roundedUp(wanted, canceller.grid());
    {
        const std::lock_guard lock(mutex);
        total = input.length();
        segmentLength = length;
    }
    const std::int64_t segments = (input.length().value + length.value - 1) / length.value;
    std::vector<std::jthread> others;
    for (std::int64_t count = 1; count < std::min<std::int64_t>(workers, segments); ++count) {
        others.emplace_back([this, &input, &file] {
            yieldToOthers();
            SegmentRemover another(input, file, settings.place);
            work(another);
        });
    }
    work(remover);
}

void RemovalJob::work(SegmentRemover& remover)
{
    while (const auto segment = nextSegment())
        segmentEnded(*segment, remover.remove(segment->begin, segment->length));
}

std::optional<RemovalJob::Segment> RemovalJob::nextSegment()
{
    const std::lock_guard lock(mutex);
    const FrameCount left = endOf(total) - taken;
    if (outcome != VocalRemoval::Done || left.value == 0)
        return std::nullopt;
    const Segment next{taken, std::min(segmentLength, left)};
    taken = taken + next.length;
    return next;
}

void RemovalJob::segmentEnded(const Segment& segment, VocalRemoval how)
{
    const std::lock_guard lock(mutex);
    removed = removed + segment.length;
    if (outcome == VocalRemoval::Done)
        outcome = how;
}

}  // namespace sound
