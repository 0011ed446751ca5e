#include "sound/media/GrowingFile.h"

#include "sound/CopyOfProcess.h"
#include "sound/Eventually.h"
#include "sound/SoundFiles.h"

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <QDir>
#include <atomic>
#include <cerrno>
#include <string_view>

using sound::GrowingFile;
using sound::Milliseconds;
using sound::test::contentOf;
using sound::test::eventually;
using sound::test::SoundFiles;

namespace {

std::atomic<int> timesBroughtToDisc = 0;
std::atomic<int> discError = 0;

}  // namespace

/// In place of the library's.
extern "C" int fdatasync(int file)
{
    ++timesBroughtToDisc;
    if (discError != 0) {
        errno = discError;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_fdatasync, file));
}

namespace {

class GrowingFileTest : public ::testing::Test
{
protected:
    GrowingFileTest()
    {
        timesBroughtToDisc = 0;
        discError = 0;
    }
    ~GrowingFileTest() override { discError = 0; }

    static std::span<const std::byte> bytes(std::string_view text) { return std::as_bytes(std::span(text)); }

    QStringList everything() const
    {
        return QDir(files.folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    SoundFiles files;
};

TEST_F(GrowingFileTest, IsThereUnderItsNameWithAllThatIsWritten)
{
    const auto file = GrowingFile::create(files.path("new/a"));
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->writeAt(0, bytes("all that")));
    EXPECT_TRUE(file->takeName());
    EXPECT_EQ(contentOf(files.path("new/a")), "all that");
    EXPECT_TRUE(file->writeAt(8, bytes(" comes")));
    EXPECT_EQ(contentOf(files.path("new/a")), "all that comes");
    EXPECT_TRUE(file->writeAt(0, bytes("ALL")));
    EXPECT_TRUE(file->cutTo(8));
    EXPECT_EQ(contentOf(files.path("new/a")), "ALL that");
    EXPECT_TRUE(file->finish());
    EXPECT_EQ(contentOf(files.path("new/a")), "ALL that");
}

TEST_F(GrowingFileTest, WithoutItsNameLeavesNothingButWhatWasThere)
{
    files.write("a", "what was there before");
    GrowingFile::create(files.path("a"))->writeAt(0, bytes("new"));
    EXPECT_EQ(contentOf(files.path("a")), "what was there before");
    EXPECT_EQ(everything(), QStringList{"a"});
}

TEST_F(GrowingFileTest, TellsWhatWasWritten)
{
    const auto file = GrowingFile::create(files.path("a"));
    ASSERT_TRUE(file && file->writeAt(0, bytes("0123456789")));
    std::array<char, 4> read = {};
    EXPECT_EQ(file->readAt(5, std::as_writable_bytes(std::span(read))), 4U);
    EXPECT_EQ(std::string_view(read.data(), 4), "5678");
    EXPECT_EQ(file->readAt(8, std::as_writable_bytes(std::span(read))), 2U);
    EXPECT_EQ(file->readAt(10, std::as_writable_bytes(std::span(read))), 0U);
}

TEST_F(GrowingFileTest, IsBroughtToTheDiscTimeAndAgainAndAtTheEnd)
{
    const auto file = GrowingFile::create(files.path("a"), Milliseconds(1));
    ASSERT_TRUE(file && file->takeName());
    EXPECT_TRUE(eventually([] { return timesBroughtToDisc >= 3; }));
    const auto other = GrowingFile::create(files.path("b"), std::chrono::hours(1));
    EXPECT_TRUE(file->finish());
    timesBroughtToDisc = 0;
    ASSERT_TRUE(other && other->takeName());
    EXPECT_TRUE(eventually([] { return timesBroughtToDisc >= 1; })) << "that it is there";
    EXPECT_TRUE(other->finish());
    EXPECT_EQ(timesBroughtToDisc, 2);
}

TEST_F(GrowingFileTest, ADiscThatLosesWhatItWasGivenIsTold)
{
    const auto file = GrowingFile::create(files.path("a"), Milliseconds(1));
    ASSERT_TRUE(file && file->takeName());
    EXPECT_TRUE(file->writeAt(0, bytes("given")));
    discError = EIO;
    EXPECT_TRUE(eventually([&] { return !file->writeAt(5, bytes("more")); }));
    discError = 0;
    EXPECT_FALSE(file->finish());
}

TEST_F(GrowingFileTest, AFileSystemThatCannotBeToldToHurryIsGoodEnough)
{
    discError = EINVAL;
    const auto file = GrowingFile::create(files.path("a"), Milliseconds(1));
    ASSERT_TRUE(file && file->takeName());
    EXPECT_TRUE(eventually([] { return timesBroughtToDisc >= 2; }));
    EXPECT_TRUE(file->writeAt(0, bytes("kept")));
    EXPECT_TRUE(file->finish());
    EXPECT_EQ(contentOf(files.path("a")), "kept");
}

}  // namespace
