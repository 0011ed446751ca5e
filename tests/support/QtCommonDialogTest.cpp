#include "support/dialogs/QtCommonDialog.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

namespace {

TEST(AFilterWithBars, BecomesOneFilterForEachPairAndMatchesUpperCaseToo)
{
    EXPECT_EQ(
        QtCommonDialog::nameFilters("All supported audio formats|*.mp3;*.wv|WAV sounds (*.wav)|*.wav|"),
        QStringList({"All supported audio formats (*.mp3 *.MP3 *.wv *.WV)", "WAV sounds (*.wav) (*.wav *.WAV)"}));
}

TEST(AFilterWithBars, MayDoWithoutTheLastBar)
{
    EXPECT_EQ(QtCommonDialog::nameFilters("All files|*|"), QStringList("All files (*)"));
    EXPECT_EQ(QtCommonDialog::nameFilters("All files|*"), QStringList("All files (*)"));
    EXPECT_EQ(QtCommonDialog::nameFilters(""), QStringList());
}

TEST(PickedPaths, OfOneFileAreThatPath)
{
    EXPECT_EQ(QtCommonDialog::joinedPaths({"/music/a.mp3"}), "/music/a.mp3");
}

TEST(PickedPaths, OfSeveralFilesAreTheFolderAndTheNames)
{
    EXPECT_EQ(QtCommonDialog::joinedPaths({"/music/a.mp3", "/music/b.mp3"}).split(QChar::Null),
              QStringList({"/music", "a.mp3", "b.mp3"}));
}

TEST(PickedPaths, InTheRootFolderKeepTheirNamesWhole)
{
    EXPECT_EQ(QtCommonDialog::joinedPaths({"/a.mp3", "/b.mp3"}).split(QChar::Null),
              QStringList({"/", "a.mp3", "b.mp3"}));
}

TEST(PickedPaths, FromDifferentFoldersAreToldFromTheRoot)
{
    EXPECT_EQ(QtCommonDialog::joinedPaths({"/music/a.mp3", "/other/b.mp3"}).split(QChar::Null),
              QStringList({"/", "music/a.mp3", "other/b.mp3"}));
}

class FileDialog : public ::testing::Test
{
protected:
    QTemporaryDir folder;
    QtCommonDialog dialog;

    void SetUp() override
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        for (const char* name : {"a.mp3", "b.mp3", "c.wav"}) {
            QFile file(folder.filePath(name));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        }
    }

    FileDialogSetup setup() const
    {
        FileDialogSetup wanted;
        wanted.title = "Open audio";
        wanted.filter = "All|*.mp3;*.wav|WAV sounds (*.wav)|*.wav|";
        wanted.initialFolder = folder.path();
        return wanted;
    }

    static void whenShown(const std::function<void(QFileDialog&)>& answer)
    {
        QTimer::singleShot(0, [answer] {
            auto* shown = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(shown, nullptr);
            answer(*shown);
        });
    }

    static void type(QFileDialog& shown, const QString& names)
    {
        shown.findChild<QLineEdit*>("fileNameEdit")->setText(names);
        shown.findChild<QDialogButtonBox*>("buttonBox")->buttons().first()->click();
    }
};

TEST_F(FileDialog, IsSetUpAsAsked)
{
    FileDialogSetup wanted = setup();
    wanted.filterIndex = 2;
    whenShown([this](QFileDialog& shown) {
        EXPECT_EQ(shown.windowTitle(), "Open audio");
        EXPECT_EQ(shown.directory().path(), folder.path());
        EXPECT_EQ(shown.selectedNameFilter(), "WAV sounds (*.wav)");
        EXPECT_EQ(shown.fileMode(), QFileDialog::ExistingFile);
        EXPECT_EQ(shown.acceptMode(), QFileDialog::AcceptOpen);
        shown.reject();
    });
    dialog.ShowOpen(wanted);
}

TEST_F(FileDialog, AnswersOneFileWithItsPathAndTitle)
{
    whenShown([](QFileDialog& shown) { type(shown, "a.mp3"); });
    const FileDialogAnswer answer = dialog.ShowOpen(setup());
    EXPECT_EQ(answer.error, 0);
    EXPECT_EQ(answer.fileName, folder.filePath("a.mp3"));
    EXPECT_EQ(answer.fileTitle, "a.mp3");
    EXPECT_EQ(answer.filterIndex, 1);
}

TEST_F(FileDialog, AnswersWhichFilterWasChosenLast)
{
    whenShown([](QFileDialog& shown) {
        shown.selectNameFilter("WAV sounds (*.wav) (*.wav *.WAV)");
        type(shown, "c.wav");
    });
    EXPECT_EQ(dialog.ShowOpen(setup()).filterIndex, 2);
}

TEST_F(FileDialog, AnswersSeveralFilesWithTheirFolderFirst)
{
    FileDialogSetup wanted = setup();
    wanted.flags = FileDialogSetup::AllowMultiselect;
    whenShown([](QFileDialog& shown) { type(shown, R"("a.mp3" "b.mp3")"); });
    const FileDialogAnswer answer = dialog.ShowOpen(wanted);
    EXPECT_EQ(answer.fileName.split(QChar::Null), QStringList({folder.path(), "a.mp3", "b.mp3"}));
    EXPECT_EQ(answer.fileTitle, "");
}

TEST_F(FileDialog, AnswersACancelAsAnErrorWhereAsked)
{
    FileDialogSetup wanted = setup();
    wanted.cancelIsError = true;
    whenShown([](QFileDialog& shown) { shown.reject(); });
    const FileDialogAnswer answer = dialog.ShowOpen(wanted);
    EXPECT_EQ(answer.error, 32755);
    EXPECT_EQ(answer.fileName, "");
}

TEST_F(FileDialog, AnswersACancelWithTheOldFileNameWhereNoErrorIsWanted)
{
    FileDialogSetup wanted = setup();
    wanted.fileName = folder.filePath("c.wav");
    whenShown([](QFileDialog& shown) { shown.reject(); });
    const FileDialogAnswer answer = dialog.ShowSave(wanted);
    EXPECT_EQ(answer.error, 0);
    EXPECT_EQ(answer.fileName, wanted.fileName);
}

TEST_F(FileDialog, AnswersANameThatIsToBeWritten)
{
    whenShown([](QFileDialog& shown) {
        EXPECT_EQ(shown.acceptMode(), QFileDialog::AcceptSave);
        type(shown, "new.wav");
    });
    const FileDialogAnswer answer = dialog.ShowSave(setup());
    EXPECT_EQ(answer.fileName, folder.filePath("new.wav"));
    EXPECT_EQ(answer.fileTitle, "new.wav");
}

TEST_F(FileDialog, StartsWhereItWasLeftTheLastTime)
{
    whenShown([](QFileDialog& shown) { type(shown, "a.mp3"); });
    dialog.ShowOpen(setup());
    FileDialogSetup later = setup();
    later.initialFolder.clear();
    whenShown([this](QFileDialog& shown) {
        EXPECT_EQ(shown.directory().path(), folder.path());
        shown.reject();
    });
    dialog.ShowOpen(later);
}

TEST_F(FileDialog, StartsInAFolderThatIsThere)
{
    FileDialogSetup wanted = setup();
    wanted.initialFolder = folder.filePath("gone");
    whenShown([](QFileDialog& shown) {
        EXPECT_NE(shown.directory().path(), QDir::currentPath());
        EXPECT_TRUE(shown.directory().exists());
        shown.reject();
    });
    dialog.ShowOpen(wanted);
}

}  // namespace
