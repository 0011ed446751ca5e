#include "sound/media/SampleStore.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <QDir>
#include <QFileInfo>
#include <atomic>
#include <csignal>
#include <limits>
#include <numeric>
#include <random>
#include <thread>

using sound::FrameCount;
using sound::FramePosition;
using sound::SampleRate;
using sound::SampleStore;

namespace {

constexpr std::size_t inMemory = SampleStore::mostInMemory;
constexpr std::size_t inFile = 0;

/// What both tests below hold for: a store in memory and one in a file.
class EitherStore : public ::testing::TestWithParam<std::size_t>
{
protected:
    static std::unique_ptr<SampleStore> make(int channels, std::int64_t frames)
    {
        auto store = SampleStore::create(SampleRate{44100}, channels, FrameCount{frames}, GetParam());
        EXPECT_TRUE(store);
        return store;
    }
};

/// Frame n holds n and -n.
std::vector<float> ramp(std::int64_t from, std::int64_t count)
{
    std::vector<float> samples;
    for (std::int64_t i = from; i < from + count; ++i) {
        samples.push_back(static_cast<float>(i));
        samples.push_back(static_cast<float>(-i));
    }
    return samples;
}

std::vector<float> framesOf(const SampleStore& store, std::int64_t from, std::int64_t count)
{
    std::vector<float> samples(static_cast<std::size_t>(count * store.channels()), 99.0F);
    store.read(FramePosition{from}, FrameCount{count}, samples.data());
    return samples;
}

TEST_P(EitherStore, ReadsBackWhatWasAppended)
{
    const auto store = make(2, 300'000);
    EXPECT_EQ(store->isInFile(), GetParam() == inFile);
    for (std::int64_t at = 0; at < 300'000; at += 1000)
        ASSERT_TRUE(store->append(ramp(at, 1000)));
    EXPECT_TRUE(store->isFull());
    store->finish();
    EXPECT_EQ(store->available().value, 300'000);
    EXPECT_EQ(framesOf(*store, 0, 300'000), ramp(0, 300'000));
    EXPECT_EQ(framesOf(*store, 123'456, 10), ramp(123'456, 10));
}

TEST_P(EitherStore, IsSilentOutsideTheSound)
{
    const auto store = make(2, 4);
    ASSERT_TRUE(store->append(ramp(1, 4)));
    store->finish();
    EXPECT_EQ(framesOf(*store, -2, 3), (std::vector<float>{0, 0, 0, 0, 1, -1}));
    EXPECT_EQ(framesOf(*store, 3, 3), (std::vector<float>{4, -4, 0, 0, 0, 0}));
    EXPECT_EQ(framesOf(*store, -1, 6), (std::vector<float>{0, 0, 1, -1, 2, -2, 3, -3, 4, -4, 0, 0}));
    for (const std::int64_t far : {std::numeric_limits<std::int64_t>::min(),
                                   std::numeric_limits<std::int64_t>::max(), std::int64_t{-5}, std::int64_t{4}})
        EXPECT_EQ(framesOf(*store, far, 2), (std::vector<float>{0, 0, 0, 0})) << far;
}

TEST_P(EitherStore, IsSilentWhereNothingWasDecodedOnceItIsFinished)
{
    const auto store = make(1, 1000);
    ASSERT_TRUE(store->append(std::vector<float>(10, 0.5F)));
    store->finish();
    EXPECT_EQ(store->available().value, 1000);
    EXPECT_EQ(framesOf(*store, 8, 4), (std::vector<float>{0.5F, 0.5F, 0, 0}));
    EXPECT_EQ(framesOf(*store, 998, 4), (std::vector<float>{0, 0, 0, 0}));
}

TEST_P(EitherStore, DropsWhatGoesBeyondItsLength)
{
    const auto store = make(1, 3);
    ASSERT_TRUE(store->append(std::vector<float>{1, 2}));
    ASSERT_TRUE(store->append(std::vector<float>{3, 4, 5}));
    ASSERT_TRUE(store->append(std::vector<float>{6}));
    store->finish();
    EXPECT_EQ(framesOf(*store, 0, 4), (std::vector<float>{1, 2, 3, 0}));
}

TEST_P(EitherStore, ReadersAndTheWriterNeverMeet)
{
    constexpr std::int64_t frames = 400'000;
    const auto store = make(2, frames);
    std::atomic<bool> wrong = false;
    std::vector<std::thread> readers;
    for (unsigned seed = 1; seed <= 3; ++seed) {
        readers.emplace_back([&, seed] {
            std::minstd_rand places(seed);
            std::int64_t there = 0;
            while (there < frames) {
                there = store->available().value;
                if (there < 100)
                    continue;
                const auto from = static_cast<std::int64_t>(places() % static_cast<unsigned>(there - 99));
                store->willReadNear(FramePosition{from});
                if (framesOf(*store, from, 100) != ramp(from, 100))
                    wrong = true;
            }
        });
    }
    for (std::int64_t at = 0; at < frames; at += 500) {
        ASSERT_TRUE(store->append(ramp(at, 500)));
        if (at % 50'000 == 0)
            store->keepNear();
    }
    store->finish();
    for (auto& reader : readers)
        reader.join();
    EXPECT_FALSE(wrong);
}

INSTANTIATE_TEST_SUITE_P(Media, EitherStore, ::testing::Values(inMemory, inFile),
                         [](const auto& info) { return info.param == inFile ? "InAFile" : "InMemory"; });

TEST(SampleStore, ASoundOfMoreBytesThanTheBoundGoesIntoAFile)
{
    EXPECT_FALSE(SampleStore::create(SampleRate{44100}, 2, FrameCount{1000}, 8000)->isInFile());
    EXPECT_TRUE(SampleStore::create(SampleRate{44100}, 2, FrameCount{1001}, 8000)->isInFile());
}

TEST(SampleStore, ThereIsNoneForALengthThatNothingCanHold)
{
    EXPECT_FALSE(SampleStore::create(SampleRate{44100}, 2, FrameCount{0}));
    EXPECT_FALSE(SampleStore::create(SampleRate{44100}, 2, FrameCount{-1}));
    EXPECT_FALSE(SampleStore::create(SampleRate{44100}, 2, FrameCount{std::int64_t{1} << 40}));  // 8 TiB
    EXPECT_FALSE(SampleStore::create(SampleRate{44100}, 2, FrameCount{std::numeric_limits<std::int64_t>::max()}));
    EXPECT_FALSE(SampleStore::create(SampleRate{44100}, 3, FrameCount{10}));
}

// The room on the disc that the one unnamed file of this process has really taken.
std::int64_t bytesTakenByTheUnnamedFile()
{
    for (const QFileInfo& entry : QDir("/proc/self/fd").entryInfoList(QDir::Files | QDir::System)) {
        struct stat status = {};
        const QByteArray name = entry.absoluteFilePath().toLocal8Bit();
        if (::stat(name.constData(), &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink == 0)
            return std::int64_t{status.st_blocks} * 512;
    }
    return -1;
}

TEST(SampleStore, ALengthThatIsOnlyClaimedTakesNoRoomOnTheDisc)
{
    // Six hours of stereo; a file of a few bytes may claim that.
    const auto store = SampleStore::create(SampleRate{44100}, 2, FrameCount{952'560'000}, inFile);
    ASSERT_TRUE(store);
    EXPECT_EQ(bytesTakenByTheUnnamedFile(), 0);
    const std::vector<float> second(88200, 0.5F);
    ASSERT_TRUE(store->append(second));
    EXPECT_GT(bytesTakenByTheUnnamedFile(), 0);
    EXPECT_LT(bytesTakenByTheUnnamedFile(), 1'000'000);
}

TEST(SampleStore, WakesTheWriterOncePerPlaceWhereReadingGoesOn)
{
    constexpr std::int64_t framesOfRegion = 4 * 1024 * 1024 / 4;
    const auto store = SampleStore::create(SampleRate{44100}, 1, FrameCount{20 * framesOfRegion}, inFile);
    ASSERT_TRUE(store);
    store->willReadNear(FramePosition{0});
    store->willReadNear(FramePosition{1});
    store->willReadNear(FramePosition{10 * framesOfRegion});
    store->waitToKeep();
    store->waitToKeep();
    // Nothing more is due: the next wake is the one from elsewhere.
    std::atomic<bool> woken = false;
    std::thread waker([&] {
        woken = true;
        store->wake();
    });
    store->waitToKeep();
    EXPECT_TRUE(woken);
    waker.join();
}

TEST(SampleStore, AFullDiscIsToldAndDoesNotEndTheProgram)
{
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit old = {};
    ::getrlimit(RLIMIT_FSIZE, &old);
    const auto store = SampleStore::create(SampleRate{44100}, 1, FrameCount{10'000'000}, inFile);
    const rlimit small{1'000'000, old.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
    const auto refused = SampleStore::create(SampleRate{44100}, 1, FrameCount{10'000'000}, inFile);
    bool told = false;
    const std::vector<float> block(100'000, 0.25F);
    for (int i = 0; i < 20 && store; ++i)
        told = told || !store->append(block);
    ::setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, oldHandler);

    ASSERT_TRUE(store);
    EXPECT_FALSE(refused);
    EXPECT_TRUE(told);
    EXPECT_EQ(framesOf(*store, 0, 2), (std::vector<float>{0.25F, 0.25F}));
    EXPECT_EQ(framesOf(*store, 5'000'000, 1), std::vector<float>{0});
}

}  // namespace
