#include "support/DesktopShell.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>
#include <QDesktopServices>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

namespace {

/// Programs of the desktop that a test makes up, ahead of the real ones.
class TheDesktop : public ::testing::Test
{
protected:
    QTemporaryDir folder;
    const QByteArray path = qgetenv("PATH");
    const DesktopShell shell{};

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

/// Takes what the desktop would be asked to open.
class TheDesktopsPrograms : public QObject, public ::testing::Test
{
    Q_OBJECT

public slots:
    void open(const QUrl& url) { opened << url.toEncoded(); }

protected:
    void SetUp() override
    {
        for (const char* scheme : {"file", "https"})
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }

    void TearDown() override
    {
        for (const char* scheme : {"file", "https"})
            QDesktopServices::unsetUrlHandler(scheme);
    }

    QList<QByteArray> opened;
    DesktopShell shell;
};

TEST_F(TheDesktopsPrograms, OpenAFileByItsPathToTheLetter)
{
    EXPECT_TRUE(shell.ShellExecute("/music/50% slower #1?.html"));
    EXPECT_EQ(opened, QList<QByteArray>{"file:///music/50%25%20slower%20%231%3F.html"});
}

TEST_F(TheDesktopsPrograms, OpenAnAddress)
{
    EXPECT_TRUE(shell.ShellExecute("https://maker.example/support?from=player#top"));
    EXPECT_EQ(opened, QList<QByteArray>{"https://maker.example/support?from=player#top"});
}

}  // namespace

#include "DesktopShellTest.moc"
