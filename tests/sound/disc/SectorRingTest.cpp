#include "sound/disc/SectorRing.h"

#include "sound/disc/DiscPlan.h"

#include <gtest/gtest.h>
#include <cstring>
#include <thread>

using namespace sound;
using namespace std::chrono_literals;

namespace {

std::vector<std::byte> sectors(std::int64_t first, std::int64_t count)
{
    std::vector<std::byte> bytes(static_cast<std::size_t>(count * Sectors::bytes));
    for (std::int64_t sector = 0; sector < count; ++sector)
        std::memset(bytes.data() + sector * Sectors::bytes, static_cast<int>((first + sector) % 251),
                    Sectors::bytes);
    return bytes;
}

TEST(SectorRing, BringsAllInOrderWhateverTheSizesInWhichItIsPutAndRead)
{
    constexpr std::int64_t total = 5000;
    SectorRing ring(100, {});
    std::jthread writer([&ring](const std::stop_token& givenUp) {
        for (std::int64_t put = 0; put < total;) {
            const std::int64_t count = std::min<std::int64_t>(1 + put % 170, total - put);
            ASSERT_TRUE(ring.put(sectors(put, count), givenUp));
            put += count;
        }
        ring.close(true);
    });
    for (std::int64_t read = 0; read < total;) {
        const std::int64_t count = std::min<std::int64_t>(1 + read % 230, total - read);
        std::vector<std::byte> got(static_cast<std::size_t>(count * Sectors::bytes));
        ASSERT_TRUE(ring.read(got));
        ASSERT_TRUE(got == sectors(read, count)) << read;
        read += count;
    }
    std::vector<std::byte> one(Sectors::bytes);
    EXPECT_FALSE(ring.read(one));
}

TEST(SectorRing, IsFullWhenNothingMoreFitsOrNothingMoreComes)
{
    SectorRing ring(10, {});
    EXPECT_FALSE(ring.waitUntilFull(1ms));
    EXPECT_TRUE(ring.put(sectors(0, 9), {}));
    EXPECT_FALSE(ring.waitUntilFull(1ms));
    EXPECT_EQ(ring.percentFull(), 90);
    EXPECT_TRUE(ring.put(sectors(9, 1), {}));
    EXPECT_TRUE(ring.waitUntilFull(1ms));
    EXPECT_EQ(ring.percentFull(), 100);

    SectorRing closed(10, {});
    closed.close(true);
    EXPECT_TRUE(closed.waitUntilFull(1ms));
}

TEST(SectorRing, EndsTheWaitingOfWhoeverIsToGiveUp)
{
    std::stop_source reader;
    SectorRing ring(10, reader.get_token());
    std::jthread giver([&reader] { reader.request_stop(); });
    std::vector<std::byte> one(Sectors::bytes);
    EXPECT_FALSE(ring.read(one));

    std::stop_source writer;
    EXPECT_TRUE(ring.put(sectors(0, 10), writer.get_token()));
    std::jthread other([&writer] { writer.request_stop(); });
    EXPECT_FALSE(ring.put(sectors(10, 1), writer.get_token()));

    SectorRing withRoom(10, {});
    EXPECT_FALSE(withRoom.put(sectors(0, 1), writer.get_token()));
}

TEST(SectorRing, OfADiscThatFailedNothingMoreIsRead)
{
    SectorRing ring(10, {});
    EXPECT_TRUE(ring.put(sectors(0, 5), {}));
    ring.close(false);
    std::vector<std::byte> one(Sectors::bytes);
    EXPECT_FALSE(ring.read(one));
}

}  // namespace
