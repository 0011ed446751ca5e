// Rendering must not wait for the memory allocator. This program counts what its own thread asks of it.

#include "sound/player/RendererBench.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <cstdlib>

namespace {

thread_local bool counting = false;
thread_local int counted = 0;

void count()
{
    if (counting)
        ++counted;
}

}  // namespace

// The C library's own allocator under the names that it keeps for those who stand before it.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t number, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

void* malloc(std::size_t size)
{
    count();
    return __libc_malloc(size);
}

void* calloc(std::size_t number, std::size_t size)
{
    count();
    return __libc_calloc(number, size);
}

void* realloc(void* memory, std::size_t size)
{
    count();
    return __libc_realloc(memory, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size)
{
    count();
    *memory = __libc_memalign(alignment, size);
    return *memory != nullptr ? 0 : ENOMEM;
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    count();
    return __libc_memalign(alignment, size);
}
}

using namespace sound;
using namespace sound::test;

namespace {

class AllocationTest : public ::testing::Test
{
protected:
    // How often memory is asked for while so many blocks are rendered.
    int allocationsIn(int blocks)
    {
        counted = 0;
        counting = true;
        for (int block = 0; block < blocks; ++block)
            bench.renderer.render(output.data());
        counting = false;
        return counted;
    }

    void change(const Changes& changes)
    {
        bench.settings.changes = changes;
        bench.settingsChanged();
    }

    RendererBench bench{noiseSound({44100}, 2, {441000})};
    std::vector<float> output = std::vector<float>(static_cast<std::size_t>(bench.block() * 2));

    // What the stretching library asks for when it begins anew, and gives back at once, and by how many pieces the
    // resampling one's queues may still grow, one a channel.
    static constexpr int ofTheLibrary = 2;
};

TEST_F(AllocationTest, TheCounterCounts)
{
    counted = 0;
    counting = true;
    std::free(std::malloc(10));
    counting = false;
    EXPECT_EQ(counted, 1);
}

TEST_F(AllocationTest, AnUnchangedSoundAsksForNothingFromItsFirstBlockOn)
{
    bench.play();
    EXPECT_EQ(allocationsIn(100), 0);
    bench.seek(200000);
    EXPECT_EQ(allocationsIn(20), 0);
    bench.playWindow({{44100}, {50142}, true});
    EXPECT_EQ(allocationsIn(100), 0);
    bench.pause();
    EXPECT_EQ(allocationsIn(20), 0);
    bench.resume();
    EXPECT_EQ(allocationsIn(20), 0);
    bench.stop();
    EXPECT_EQ(allocationsIn(20), 0);
}

TEST_F(AllocationTest, TurntableSpeedsAskForNothingOnceTheResamplersQueuesHaveGrown)
{
    bench.play();
    change({1, 1, 0.4});
    EXPECT_LE(allocationsIn(50), ofTheLibrary);
    for (const double rate : {0.4, 0.99, 1.01, 1.6}) {
        change({1, 1, rate});
        EXPECT_EQ(allocationsIn(50), 0) << rate;
    }
    bench.seek(10000);
    EXPECT_LE(allocationsIn(50), ofTheLibrary);
    bench.seek(20000);
    EXPECT_EQ(allocationsIn(50), 0);
}

TEST_F(AllocationTest, AStretchedSoundAsksForNothingOnceItRuns)
{
    change({0.8, std::exp2(2 / 12.0), 1});
    bench.playWindow({{44100}, {50142}, true});
    EXPECT_LE(allocationsIn(1), ofTheLibrary);
    EXPECT_EQ(allocationsIn(200), 0);
    bench.seek(45000);
    EXPECT_LE(allocationsIn(1), ofTheLibrary);
    EXPECT_EQ(allocationsIn(100), 0);
}

TEST_F(AllocationTest, EqualizerLevelAndLimiterAskForNothing)
{
    bench.settings.equalizer.enabled = true;
    for (const float frequency : {80.0F, 1000.0F, 16000.0F})
        addBand(bench.settings.equalizer, {frequency, 12, 15});
    bench.settings.gain = 80;
    bench.settings.balance = -20;
    bench.settingsChanged();
    bench.play();
    EXPECT_EQ(allocationsIn(50), 0);
    bench.settings.gain = 20;
    bench.settings.equalizer.enabled = false;
    bench.settingsChanged();
    EXPECT_EQ(allocationsIn(50), 0);
}

}  // namespace
