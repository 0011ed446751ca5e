#include "support/modFileExists.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using modFileExists::FileExists;

namespace {

class FileTest : public ::testing::Test
{
protected:
    QTemporaryDir folder;

    QString path(const QString& name) const { return folder.filePath(name); }

    QString makeFile(const QString& name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return path(name);
    }
};

TEST_F(FileTest, FindsAFile)
{
    EXPECT_TRUE(FileExists(makeFile("song.mp3")));
}

TEST_F(FileTest, FindsHiddenAndReadOnlyFiles)
{
    EXPECT_TRUE(FileExists(makeFile(".hidden.wav")));
    const QString readOnly = makeFile("locked.wav");
    QFile::setPermissions(readOnly, QFileDevice::ReadOwner);
    EXPECT_TRUE(FileExists(readOnly));
}

TEST_F(FileTest, SaysNoToAFileThatIsMissing)
{
    EXPECT_FALSE(FileExists(path("gone.wav")));
}

TEST_F(FileTest, SaysNoToAFileWhoseMountIsGone)
{
    EXPECT_FALSE(FileExists("/media/nobody/NO SUCH DISC/Track01.cda"));
}

TEST_F(FileTest, SaysNoToAnEmptyPath)
{
    EXPECT_FALSE(FileExists(""));
    EXPECT_FALSE(FileExists("", true));
}

TEST_F(FileTest, SaysNoToAPathThatIsNotAbsoluteThoughItsFileIsThere)
{
    makeFile("song.mp3");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(folder.path()));
    EXPECT_TRUE(QFile::exists("song.mp3"));
    EXPECT_FALSE(FileExists("song.mp3"));
    EXPECT_FALSE(FileExists("./song.mp3"));
    QDir::setCurrent(before);
}

TEST_F(FileTest, FindsFoldersOnlyWhenAsked)
{
    EXPECT_FALSE(FileExists(folder.path()));
    EXPECT_TRUE(FileExists(folder.path(), true));
    EXPECT_TRUE(FileExists(makeFile("song.mp3"), true));
}

TEST_F(FileTest, FollowsLinksAndRefusesBrokenOnes)
{
    const QString target = makeFile("song.mp3");
    QFile::link(target, path("link.mp3"));
    EXPECT_TRUE(FileExists(path("link.mp3")));
    QFile::remove(target);
    EXPECT_FALSE(FileExists(path("link.mp3")));
}

TEST_F(FileTest, RefusesAPipeThatWouldNeverEnd)
{
    ASSERT_EQ(mkfifo(path("pipe.mp3").toLocal8Bit().constData(), 0600), 0);
    EXPECT_FALSE(FileExists(path("pipe.mp3")));
}

}  // namespace
