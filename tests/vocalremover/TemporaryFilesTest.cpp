#include "vocalremover/TemporaryFiles.h"

#include "QtPrinters.h"
#include "vocalremover/HomeOfItsOwn.h"

#include <gtest/gtest.h>

namespace {

TEST(TheTemporaryFiles, LieInTheRecordingsFolder)
{
    const HomeOfItsOwn home;
    const TemporaryFiles files;
    EXPECT_EQ(files.in(), home.in());
    EXPECT_EQ(files.out(), home.out());
}

TEST(TheTemporaryFiles, FollowTheFolderEachTimeTheyAreMade)
{
    const HomeOfItsOwn home;
    const TemporaryFiles first;
    const HomeOfItsOwn another;
    EXPECT_EQ(first.in(), home.in());
    EXPECT_EQ(TemporaryFiles().in(), another.in());
}

TEST(TheTemporaryFiles, StayWhenTheyAreCleanedUp)
{
    const HomeOfItsOwn home;
    HomeOfItsOwn::write(home.in());
    HomeOfItsOwn::write(home.out());
    TemporaryFiles().cleanUp();
    EXPECT_TRUE(QFile::exists(home.in()));
    EXPECT_TRUE(QFile::exists(home.out()));
}

TEST(TheTemporaryFiles, AreDeletedInSilenceWhereTheyAreAbsent)
{
    const HomeOfItsOwn home;
    HomeOfItsOwn::write(home.out());
    TemporaryFiles().cleanUp();
    EXPECT_FALSE(QFile::exists(home.in()));
    EXPECT_TRUE(QFile::exists(home.out()));
}

}  // namespace
