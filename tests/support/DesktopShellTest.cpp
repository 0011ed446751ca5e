#include "support/DesktopShell.h"

#include <gtest/gtest.h>
#include <QFile>
#include <QTemporaryDir>

namespace {

/// Programs of the desktop that a test makes up, ahead of the real ones.
class TheDesktop : public ::testing::Test
{
protected:
    QTemporaryDir folder;
    const QByteArray path = qgetenv("PATH");
    const DesktopShell shell;

    void SetUp() override { qputenv("PATH", folder.path().toUtf8() + ':' + path); }
    void TearDown() override { qputenv("PATH", path); }

    void writeProgram(const QString& name, const QByteArray& commands) const
    {
        QFile program(folder.filePath(name));
        ASSERT_TRUE(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/sh\n" + commands);
        program.close();
        program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
};

TEST_F(TheDesktop, OpensWhatItHasAProgramFor)
{
    writeProgram("xdg-mime", "[ \"$1 $2 $3\" = 'query default application/pdf' ] && echo viewer.desktop");
    EXPECT_TRUE(shell.canOpen("/music/score.pdf"));
}

TEST_F(TheDesktop, DoesNotOpenWhatItHasNoProgramFor)
{
    writeProgram("xdg-mime", "exit 0");
    EXPECT_FALSE(shell.canOpen("/music/score.pdf"));
}

TEST_F(TheDesktop, DoesNotOpenWhatItCannotBeAskedAbout)
{
    qputenv("PATH", folder.path().toUtf8());
    EXPECT_FALSE(shell.canOpen("/music/score.pdf"));
}

}  // namespace
