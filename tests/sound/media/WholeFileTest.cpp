#include "sound/media/WholeFile.h"

#include "sound/CopyOfProcess.h"
#include "sound/DiscOf.h"
#include "sound/NamelessFiles.h"
#include "sound/SoundFiles.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <array>
#include <cerrno>
#include <cstddef>

using sound::WholeFile;
using sound::test::contentOf;
using sound::test::DiscOf;
using sound::test::everythingIn;
using sound::test::knowsNamelessFiles;
using sound::test::SoundFiles;

namespace {

std::span<const std::byte> bytes(std::string_view text)
{
    return std::as_bytes(std::span(text));
}

/// From now on the file systems of this process know no files without a name, as that of many a memory stick.
bool forgetNamelessFiles()
{
    constexpr unsigned onlyInFlag = O_TMPFILE & ~O_DIRECTORY;
    std::array<sock_filter, 6> rules = {{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args) + 2 * sizeof(std::uint64_t)),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, onlyInFlag, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EOPNOTSUPP),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog program = {rules.size(), rules.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program, 0, 0) == 0;
}

/// From now on they know no renaming that does not replace either, as those on a network.
bool forgetRenamingToFreeNames()
{
    std::array<sock_filter, 4> rules = {{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_renameat2, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EINVAL),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog program = {rules.size(), rules.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program, 0, 0) == 0;
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

TEST(WholeFile, TakesAnotherNameOnlyWhereNothingBearsIt)
{
    const auto takes = [] {
        const SoundFiles files;
        files.write("b", "somebody else's");
        const auto file = WholeFile::create(files.path("a"));
        return file && file->writeAt(0, bytes("whole")) && !file->finishAs("b") && errno == EEXIST &&
               contentOf(files.path("b")) == "somebody else's" && file->finishAs("c") &&
               contentOf(files.path("c")) == "whole" && everythingIn(files.folder()) == QStringList{"b", "c"};
    };
    EXPECT_TRUE(takes());
    EXPECT_TRUE(sound::test::trueInCopy([&] { return forgetNamelessFiles() && takes(); }));
    EXPECT_TRUE(
        sound::test::trueInCopy([&] { return forgetNamelessFiles() && forgetRenamingToFreeNames() && takes(); }));
}

TEST(WholeFile, OnTheDiscItIsStillWithoutItsNameAndMayGrow)
{
    const SoundFiles files;
    const QString path = files.write("a", "what was there before");
    const auto file = WholeFile::create(path);
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->writeAt(0, bytes("new, ")));
    EXPECT_TRUE(file->bringToDisc());
    EXPECT_EQ(contentOf(path), "what was there before");
    EXPECT_TRUE(file->writeAt(5, bytes("and whole")));
    EXPECT_TRUE(file->finish());
    EXPECT_EQ(contentOf(path), "new, and whole");
}

TEST(WholeFile, UnfinishedLeavesNothingBehind)
{
    const SoundFiles files;
    WholeFile::create(files.path("new/a"))->writeAt(0, bytes("half of"));
    EXPECT_EQ(everythingIn(files.path("new")), QStringList());
}

TEST(WholeFile, BearsNoNameWhileItGrows)
{
    const SoundFiles files;
    if (!knowsNamelessFiles(files.folder()))
        GTEST_SKIP() << "the file system of " << files.folder().toStdString() << " knows no files without a name";
    const auto file = WholeFile::create(files.path("a"));
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->writeAt(0, bytes("half of")));
    EXPECT_EQ(everythingIn(files.folder()), QStringList());
}

TEST(WholeFile, AProgramThatIsKilledLeavesTheFolderAsItWas)
{
    const SoundFiles files;
    if (!knowsNamelessFiles(files.folder()))
        GTEST_SKIP() << "the file system of " << files.folder().toStdString() << " knows no files without a name";
    const QString path = files.write("a", "what was there before");
    sound::test::doAndBeKilled<std::unique_ptr<WholeFile>>([&path] {
        auto file = WholeFile::create(path);
        return file && file->writeAt(0, bytes("half of")) ? std::move(file) : nullptr;
    });
    EXPECT_EQ(contentOf(path), "what was there before");
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"a"});
}

TEST(WholeFile, WhereFilesMustHaveANameItGrowsUnderAHiddenOne)
{
    const SoundFiles files;
    const QString path = files.write("a", "what was there before");
    EXPECT_TRUE(sound::test::trueInCopy([&] {
        if (!forgetNamelessFiles() || knowsNamelessFiles(files.folder()))
            return false;
        const auto file = WholeFile::create(path);
        const bool grows = file && file->writeAt(0, bytes("new, and whole"));
        return grows && everythingIn(files.folder()).size() == 2 && file->finish();
    }));
    EXPECT_EQ(contentOf(path), "new, and whole");
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"a"});
}

TEST(WholeFile, UnfinishedUnderAHiddenNameLeavesNothingBehindEither)
{
    const SoundFiles files;
    EXPECT_TRUE(sound::test::trueInCopy([&] {
        if (!forgetNamelessFiles())
            return false;
        const auto file = WholeFile::create(files.path("a"));
        return file && file->writeAt(0, bytes("half of")) && everythingIn(files.folder()).size() == 1;
    }));
    EXPECT_EQ(everythingIn(files.folder()), QStringList());
}

TEST(WholeFile, MayBeReadByWhomTheUserWishes)
{
    const SoundFiles files;
    const mode_t before = ::umask(0027);
    const auto file = WholeFile::create(files.path("a"));
    ::umask(before);
    ASSERT_TRUE(file && file->finish());
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(files.path("a")).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST(WholeFile, ANameThatNoFileCanBearIsRefusedBeforeAnythingIsWritten)
{
    const SoundFiles files;
    EXPECT_FALSE(WholeFile::create(files.path(QString(256, 'x'))));
    EXPECT_EQ(everythingIn(files.folder()), QStringList());
    const auto longest = WholeFile::create(files.path(QString(255, 'x')));
    ASSERT_TRUE(longest);
    EXPECT_TRUE(longest->finish());
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
    EXPECT_FALSE(file->bringToDisc());
    EXPECT_FALSE(file->finish());
    EXPECT_FALSE(QFile::exists(files.path("a")));
}

TEST(WholeFile, WhatNoLongerFitsBehindWhatIsOnTheDiscKeepsItFromBeingFinished)
{
    const SoundFiles files;
    const auto file = WholeFile::create(files.path("a"));
    ASSERT_TRUE(file && file->writeAt(0, bytes("half of")) && file->bringToDisc());
    {
        const DiscOf full(8);
        EXPECT_FALSE(file->writeAt(7, bytes("the other half")));
    }
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
