#include "sound/media/SampleStore.h"

#include "sound/media/UnnamedFile.h"

#include <sys/mman.h>
#include <unistd.h>
#include <algorithm>
#include <cstring>

namespace sound {
namespace {

// A region is the stretch of the mapping that is kept or let go as one; round a place where reading goes on, the
// region it is in, the one before and the two after it are kept. At 44.1 kHz stereo a region lasts 12 seconds.
constexpr std::int64_t regionBytes = std::int64_t{4} * 1024 * 1024;
constexpr std::int64_t regionsBefore = 1;
constexpr std::int64_t regionsAfter = 2;

constexpr std::int64_t noRegion = -1000;

void bringIn(std::byte* from, std::size_t size)
{
    if (::madvise(from, size, MADV_POPULATE_READ) == 0)
        return;
    // A kernel that cannot do it in one call: every page is touched.
    constexpr std::size_t pageSize = 4096;
    for (std::size_t offset = 0; offset < size; offset += pageSize)
        static_cast<void>(*const_cast<const volatile std::byte*>(from + offset));
}

}  // namespace

std::unique_ptr<SampleStore> SampleStore::create(SampleRate rate, int channels, FrameCount length,
                                                 std::size_t mostBytesInMemory)
{
    constexpr std::int64_t mostFrames = std::int64_t{1} << 40;
    if (length.value <= 0 || length.value > mostFrames || channels < 1 || channels > 2)
        return nullptr;
    std::unique_ptr<SampleStore> store(new SampleStore(rate, channels, length));
    const bool allocated = store->bytes <= mostBytesInMemory ? store->allocate() : store->allocateInFile();
    return allocated ? std::move(store) : nullptr;
}

SampleStore::SampleStore(SampleRate rate, int channels, FrameCount length)
    : frameRate(rate)
    , channelCount(channels)
    , frames(length)
    , bytes(static_cast<std::size_t>(length.value) * static_cast<std::size_t>(channels) * sizeof(float))
{
    for (auto& region : recentRegions)
        region.store(noRegion, std::memory_order_relaxed);
}

SampleStore::~SampleStore()
{
    if (memory != nullptr)
        ::munmap(memory, bytes);
    if (file >= 0)
        ::close(file);
}

bool SampleStore::allocate()
{
    void* mapped = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED)
        return false;
    memory = static_cast<std::byte*>(mapped);
    ::madvise(memory, bytes, MADV_HUGEPAGE);
    return true;
}

bool SampleStore::allocateInFile()
{
    file = openUnnamedFile(static_cast<std::int64_t>(bytes));
    if (file < 0)
        return false;
    void* mapped = ::mmap(nullptr, bytes, PROT_READ, MAP_SHARED, file, 0);
    if (mapped == MAP_FAILED)
        return false;
    memory = static_cast<std::byte*>(mapped);
    return true;
}

void SampleStore::read(FramePosition from, FrameCount count, float* interleaved) const
{
    if (count.value <= 0)
        return;
    const std::int64_t there = published.load(std::memory_order_acquire);
    const std::int64_t begin = std::clamp<std::int64_t>(from.value, 0, there);
    const std::int64_t end = from.value > there - count.value ? there : std::max(from.value + count.value, begin);
    const std::size_t perFrame = bytesPerFrame();
    if (begin >= end) {
        std::memset(interleaved, 0, static_cast<std::size_t>(count.value) * perFrame);
        return;
    }
    auto* out = reinterpret_cast<std::byte*>(interleaved);
    const auto silentBefore = static_cast<std::size_t>(begin - from.value) * perFrame;
    const auto sounding = static_cast<std::size_t>(end - begin) * perFrame;
    const std::size_t silentAfter = static_cast<std::size_t>(count.value) * perFrame - silentBefore - sounding;
    std::memset(out, 0, silentBefore);
    std::memcpy(out + silentBefore, memory + static_cast<std::size_t>(begin) * perFrame, sounding);
    std::memset(out + silentBefore + sounding, 0, silentAfter);
    if (isInFile())
        willReadNear({begin});
}

void SampleStore::willReadNear(FramePosition position) const
{
    if (!isInFile())
        return;
    const std::int64_t inside = std::clamp<std::int64_t>(position.value, 0, frames.value - 1);
    const std::int64_t region = inside * static_cast<std::int64_t>(bytesPerFrame()) / regionBytes;
    for (const auto& known : recentRegions) {
        if (known.load(std::memory_order_relaxed) == region)
            return;
    }
    const std::size_t place = nextPlace.fetch_add(1, std::memory_order_relaxed) % keptPlaces;
    recentRegions[place].store(region, std::memory_order_relaxed);
    moved.release();
}

bool SampleStore::append(std::span<const float> interleaved)
{
    const std::int64_t before = published.load(std::memory_order_relaxed);
    const auto offered = static_cast<std::int64_t>(interleaved.size()) / channelCount;
    const std::int64_t taken = std::min(offered, frames.value - before);
    if (taken == 0)
        return true;
    const std::size_t offset = static_cast<std::size_t>(before) * bytesPerFrame();
    const auto bytesTaken = std::as_bytes(interleaved).first(static_cast<std::size_t>(taken) * bytesPerFrame());
    if (!isInFile())
        std::memcpy(memory + offset, bytesTaken.data(), bytesTaken.size());
    else if (!writeAt(file, static_cast<std::int64_t>(offset), bytesTaken))
        return false;
    published.store(before + taken, std::memory_order_release);
    return true;
}

void SampleStore::keepNear()
{
    if (!isInFile())
        return;
    std::array<std::int64_t, keptPlaces> places;
    for (std::size_t i = 0; i < keptPlaces; ++i)
        places[i] = recentRegions[i].load(std::memory_order_relaxed);

    const auto writtenBytes = static_cast<std::size_t>(available().value) * bytesPerFrame();
    const std::int64_t regions = (static_cast<std::int64_t>(writtenBytes) + regionBytes - 1) / regionBytes;
    const auto isKept = [&places](std::int64_t region) {
        return std::ranges::any_of(places, [region](std::int64_t place) {
            return region >= place - regionsBefore && region <= place + regionsAfter;
        });
    };
    for (std::int64_t region = 0; region < regions; ++region) {
        const auto offset = static_cast<std::size_t>(region * regionBytes);
        const std::size_t size = std::min(static_cast<std::size_t>(regionBytes), writtenBytes - offset);
        if (isKept(region))
            bringIn(memory + offset, size);
        else
            ::madvise(memory + offset, size, MADV_DONTNEED);
    }
}

}  // namespace sound
