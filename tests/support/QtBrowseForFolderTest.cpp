#include "support/dialogs/QtBrowseForFolder.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

namespace {

class FolderDialog : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        ASSERT_TRUE(QDir(folder.path()).mkpath("lessons/monday"));
    }

    static void whenShown(const std::function<void(QFileDialog&)>& answer)
    {
        QTimer::singleShot(0, [answer] {
            if (auto* shown = qobject_cast<QFileDialog*>(QApplication::activeModalWidget()))
                answer(*shown);
            else
                whenShown(answer);
        });
    }

    QTemporaryDir folder;
    QWidget owner;
    QtBrowseForFolder dialog;
};

TEST_F(FolderDialog, AsksForAFolderInFrontOfItsOwner)
{
    whenShown([this](QFileDialog& shown) {
        EXPECT_EQ(shown.windowTitle(), "Add folder with audio files to playlist");
        EXPECT_EQ(shown.parentWidget(), &owner);
        EXPECT_EQ(shown.fileMode(), QFileDialog::Directory);
        EXPECT_EQ(shown.directory().path(), folder.filePath("lessons"));
        shown.reject();
    });
    EXPECT_EQ(dialog.BrowseForFolder(owner, folder.filePath("lessons")), "");
}

TEST_F(FolderDialog, AnswersTheFolderWithoutASeparatorBehindIt)
{
    whenShown([this](QFileDialog& shown) {
        shown.selectFile(folder.filePath("lessons/monday"));
        static_cast<QDialog&>(shown).accept();
    });
    EXPECT_EQ(dialog.BrowseForFolder(owner, folder.filePath("lessons")), folder.filePath("lessons/monday"));
}

TEST_F(FolderDialog, StartsInTheNearestFolderThatIsThere)
{
    EXPECT_EQ(QtBrowseForFolder::nearestFolder(folder.filePath("lessons")), folder.filePath("lessons"));
    EXPECT_EQ(QtBrowseForFolder::nearestFolder(folder.filePath("lessons/")), folder.filePath("lessons"));
    EXPECT_EQ(QtBrowseForFolder::nearestFolder(folder.filePath("lessons/tuesday/first")),
              folder.filePath("lessons"));
    EXPECT_EQ(QtBrowseForFolder::nearestFolder("/no such folder/at all"), "/");
    EXPECT_EQ(QtBrowseForFolder::nearestFolder("/"), "/");
    EXPECT_EQ(QtBrowseForFolder::nearestFolder(""), QDir::homePath());

    QFile file(folder.filePath("lessons/song.wav"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(QtBrowseForFolder::nearestFolder(file.fileName()), folder.filePath("lessons"));
}

}  // namespace
