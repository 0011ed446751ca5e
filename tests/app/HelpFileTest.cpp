#include "app/HelpFile.h"

#include "QtPrinters.h"
#include "support/MockShell.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using ::testing::InSequence;
using ::testing::Return;
using ::testing::StrictMock;

namespace {

class TheManual : public ::testing::Test
{
protected:
    QTemporaryDir folder;
    const QString compiled = folder.filePath("Larkspin.chm");
    const QString pages = folder.filePath("manual/index.html");
    StrictMock<MockShell> shell;
    const HelpFile help{shell, folder.path()};

    void SetUp() override { QDir(folder.path()).mkdir("manual"); }

    static void make(const QString& path) { ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly)); }
};

TEST_F(TheManual, IsTheCompiledOneWhereTheDesktopOpensIt)
{
    make(compiled);
    make(pages);
    const InSequence order;
    EXPECT_CALL(shell, canOpen(compiled)).WillOnce(Return(true));
    EXPECT_CALL(shell, ShellExecute(compiled)).WillOnce(Return(true));
    help.open();
}

TEST_F(TheManual, IsThePagesWhereTheDesktopHasNoProgramForTheCompiledOne)
{
    make(compiled);
    make(pages);
    const InSequence order;
    EXPECT_CALL(shell, canOpen(compiled)).WillOnce(Return(false));
    EXPECT_CALL(shell, ShellExecute(pages)).WillOnce(Return(true));
    help.open();
}

TEST_F(TheManual, IsThePagesWhereThatProgramDoesNotStart)
{
    make(compiled);
    make(pages);
    const InSequence order;
    EXPECT_CALL(shell, canOpen(compiled)).WillOnce(Return(true));
    EXPECT_CALL(shell, ShellExecute(compiled)).WillOnce(Return(false));
    EXPECT_CALL(shell, ShellExecute(pages)).WillOnce(Return(true));
    help.open();
}

TEST_F(TheManual, IsThePagesWhereThereIsNoCompiledOne)
{
    make(pages);
    EXPECT_CALL(shell, ShellExecute(pages)).WillOnce(Return(false));
    help.open();
}

TEST_F(TheManual, OpensAtThePageOfTheVocalRemover)
{
    make(pages);
    const QString page = folder.filePath("manual/vocals.html");
    make(page);
    EXPECT_CALL(shell, ShellExecute(page)).WillOnce(Return(true));
    help.open(160);
}

TEST_F(TheManual, OpensAtItsBeginningForAContextThatHasNoPage)
{
    make(pages);
    EXPECT_CALL(shell, ShellExecute(pages)).Times(2).WillRepeatedly(Return(true));
    help.open(160);
    help.open(7);
}

TEST_F(TheManual, IsTheCompiledOneAlsoForAContext)
{
    make(compiled);
    make(folder.filePath("manual/vocals.html"));
    const InSequence order;
    EXPECT_CALL(shell, canOpen(compiled)).WillOnce(Return(true));
    EXPECT_CALL(shell, ShellExecute(compiled)).WillOnce(Return(true));
    help.open(160);
}

TEST_F(TheManual, IsNothingWhereItIsMissing)
{
    help.open();
}

}  // namespace
