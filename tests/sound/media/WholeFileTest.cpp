#include "sound/media/WholeFile.h"

#include "sound/DiscOf.h"
#include "sound/SoundFiles.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <QDir>
#include <QFile>

using sound::WholeFile;
using sound::test::contentOf;
using sound::test::DiscOf;
using sound::test::SoundFiles;

namespace {

std::span<const std::byte> bytes(std::string_view text)
{
    return std::as_bytes(std::span(text));
}

QStringList everythingIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

TEST(WholeFile, TakesItsNameOnlyWhenItIsWhole)
{
    const SoundFiles files;
    const QString path = files.write("a", "what was there before");
    const auto file = WholeFile::create(path);
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->writeAt(0, bytes("new, ")));
    EXPECT_TRUE(file->writeAt(5, bytes("and whole")));
    EXPECT_EQ(contentOf(path), "what was there before");
    EXPECT_TRUE(file->finish());
    EXPECT_EQ(contentOf(path), "new, and whole");
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"a"});
}

TEST(WholeFile, UnfinishedLeavesNothingBehind)
{
    const SoundFiles files;
    WholeFile::create(files.path("new/a"))->writeAt(0, bytes("half of"));
    EXPECT_EQ(everythingIn(files.path("new")), QStringList());
}

TEST(WholeFile, OnceTheDiscWasFullCannotBeFinished)
{
    const SoundFiles files;
    const auto file = WholeFile::create(files.path("a"));
    ASSERT_TRUE(file);
    {
        const DiscOf full(4);
        EXPECT_FALSE(file->writeAt(0, bytes("too long")));
    }
    EXPECT_FALSE(file->writeAt(0, bytes("now")));
    EXPECT_FALSE(file->finish());
    EXPECT_FALSE(QFile::exists(files.path("a")));
}

TEST(WholeFile, NeverTakesThePlaceOfAnythingButARegularFile)
{
    const SoundFiles files;
    const QString pipe = files.path("pipe");
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    ASSERT_TRUE(QDir().mkpath(files.path("folder")));
    for (const QString& path : {pipe, files.path("folder"), QString("/dev/null"), QString("/dev/full")})
        EXPECT_FALSE(WholeFile::create(path)) << path.toStdString();
    EXPECT_EQ(everythingIn(files.folder()), QStringList({"folder", "pipe"}));
}

}  // namespace
