#include "support/dialogs/QtCommonDialog.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
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

struct SuffixRow
{
    const char* name;
    const char* typed;
    const char* patterns;
    const char* written;
};

class ANameToBeWritten : public ::testing::TestWithParam<SuffixRow>
{
};

TEST_P(ANameToBeWritten, HasTheSuffixOfItsFormat)
{
    EXPECT_EQ(QtCommonDialog::withSuffix(GetParam().typed, GetParam().patterns), GetParam().written);
}

INSTANTIATE_TEST_SUITE_P(
    Names, ANameToBeWritten,
    ::testing::Values(SuffixRow{"WithoutOneGetsIt", "/music/take", "*.mp3", "/music/take.mp3"},
                      SuffixRow{"WithOneKeepsIt", "/music/take.wav", "*.mp3", "/music/take.wav"},
                      SuffixRow{"InCapitalsKeepsIt", "/music/take.MP3", "*.wav", "/music/take.MP3"},
                      SuffixRow{"WithAnUnknownOneKeepsIt", "/music/take.flac", "*.mp3", "/music/take.flac"},
                      SuffixRow{"WithADotInItsFolderGetsIt", "/Op. 12.d/take", "*.mp3", "/Op. 12.d/take.mp3"},
                      SuffixRow{"WithANumberBehindItsDotGetsIt", "/take 1.5", "*.mp3", "/take 1.5.mp3"},
                      SuffixRow{"WithAWordBehindItsDotGetsIt", "/No. 3 (slow)", "*.mp3", "/No. 3 (slow).mp3"},
                      SuffixRow{"ThatEndsInADotGetsNoSecondOne", "/take.", "*.mp3", "/take.mp3"},
                      SuffixRow{"GetsTheFirstOfSeveral", "/take", "*.ogg;*.oga", "/take.ogg"},
                      SuffixRow{"GetsNoneFromAllFiles", "/take", "*", "/take"},
                      SuffixRow{"GetsNoneFromAllFilesWithADot", "/take", "*.*", "/take"},
                      SuffixRow{"GetsNoneWhereNoFilterIsChosen", "/take", "", "/take"}),
    [](const auto& info) { return std::string(info.param.name); });

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

    static void whenShown(const std::function<void(QFileDialog&)>& answer) { whenModal<QFileDialog>(answer); }
    static void whenAsked(const std::function<void(QMessageBox&)>& answer) { whenModal<QMessageBox>(answer); }

    /// Answers the next window of this kind that blocks.
    template <typename Dialog>
    static void whenModal(const std::function<void(Dialog&)>& answer)
    {
        QTimer::singleShot(0, [answer] {
            if (auto* shown = qobject_cast<Dialog*>(QApplication::activeModalWidget()))
                answer(*shown);
            else
                whenModal<Dialog>(answer);
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

TEST_F(FileDialog, LeavesTheFolderOfSeveralFilesAsTheCurrentOne)
{
    const QString before = QDir::currentPath();
    const auto back = qScopeGuard([&] { QDir::setCurrent(before); });
    FileDialogSetup wanted = setup();
    wanted.flags = FileDialogSetup::AllowMultiselect;
    whenShown([](QFileDialog& shown) { type(shown, R"("a.mp3" "b.mp3")"); });
    const FileDialogAnswer answer = dialog.ShowOpen(wanted);
    EXPECT_EQ(QDir::currentPath(), QDir(folder.path()).canonicalPath());
    for (const QString& name : answer.fileName.split(QChar::Null).mid(1))
        EXPECT_TRUE(QFile::exists(name)) << qPrintable(name);
}

TEST_F(FileDialog, LeavesTheCurrentFolderAloneForOneFileAndForACancel)
{
    const QString before = QDir::currentPath();
    FileDialogSetup wanted = setup();
    wanted.flags = FileDialogSetup::AllowMultiselect;
    whenShown([](QFileDialog& shown) { type(shown, "a.mp3"); });
    EXPECT_EQ(dialog.ShowOpen(wanted).fileName, folder.filePath("a.mp3"));
    EXPECT_EQ(QDir::currentPath(), before);
    wanted.fileName = folder.path() + QChar::Null + "a.mp3" + QChar::Null + "b.mp3";
    whenShown([](QFileDialog& shown) { shown.reject(); });
    EXPECT_EQ(dialog.ShowOpen(wanted).fileName, wanted.fileName);
    EXPECT_EQ(QDir::currentPath(), before);
}

TEST_F(FileDialog, StartsInTheFolderOfSeveralFilesThatWerePickedBefore)
{
    QTemporaryDir elsewhere;
    FileDialogSetup wanted = setup();
    wanted.initialFolder = elsewhere.path();
    wanted.fileName = folder.path() + QChar::Null + "a.mp3" + QChar::Null + "b.mp3";
    whenShown([this](QFileDialog& shown) {
        EXPECT_EQ(shown.directory().path(), folder.path());
        EXPECT_EQ(shown.findChild<QLineEdit*>("fileNameEdit")->text(), "");
        shown.reject();
    });
    dialog.ShowOpen(wanted);
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

TEST_F(FileDialog, CompletesANameByTheFilterThatIsChosenWhenItIsAnswered)
{
    FileDialogSetup wanted = setup();
    wanted.filter = "MP3 files (*.mp3)|*.mp3|WAV files (*.wav)|*.wav";
    wanted.filterIndex = 1;
    whenShown([](QFileDialog& shown) { type(shown, "take"); });
    FileDialogAnswer answer = dialog.ShowSave(wanted);
    EXPECT_EQ(answer.fileName, folder.filePath("take.mp3"));
    EXPECT_EQ(answer.fileTitle, "take.mp3");

    whenShown([](QFileDialog& shown) {
        shown.selectNameFilter("WAV files (*.wav) (*.wav *.WAV)");
        type(shown, "take");
    });
    EXPECT_EQ(dialog.ShowSave(wanted).fileName, folder.filePath("take.wav"));
}

TEST_F(FileDialog, KeepsANameAsItWasTypedWhereThatIsWanted)
{
    FileDialogSetup wanted = setup();
    wanted.filterIndex = 2;
    wanted.keepsTypedName = true;
    whenShown([](QFileDialog& shown) { type(shown, "c"); });
    const FileDialogAnswer answer = dialog.ShowSave(wanted);
    EXPECT_EQ(answer.fileName, folder.filePath("c"));
    EXPECT_EQ(answer.fileTitle, "c");
    EXPECT_EQ(answer.filterIndex, 2);
}

TEST_F(FileDialog, AsksBeforeACompletedNameReplacesAFileAndComesBackWhereItMayNot)
{
    FileDialogSetup wanted = setup();
    wanted.filterIndex = 2;
    QStringList order;
    whenShown([&](QFileDialog& shown) {
        whenAsked([&](QMessageBox& box) {
            order << box.text();
            whenShown([&](QFileDialog& again) {
                order << again.findChild<QLineEdit*>("fileNameEdit")->text();
                whenAsked([&](QMessageBox& second) {
                    order << second.text();
                    second.button(QMessageBox::Yes)->click();
                });
                type(again, "c");
            });
            box.button(QMessageBox::No)->click();
        });
        type(shown, "c");
    });
    EXPECT_EQ(dialog.ShowSave(wanted).fileName, folder.filePath("c.wav"));
    const QString question = "There is a file named \"c.wav\" already. Replace it?";
    EXPECT_EQ(order, QStringList({question, "c", question}));
}

TEST_F(FileDialog, ThatIsCancelledBehindSuchAQuestionIsCancelled)
{
    FileDialogSetup wanted = setup();
    wanted.filterIndex = 2;
    wanted.cancelIsError = true;
    whenShown([&](QFileDialog& shown) {
        whenAsked([&](QMessageBox& box) {
            whenShown([](QFileDialog& again) { again.reject(); });
            box.button(QMessageBox::No)->click();
        });
        type(shown, "c");
    });
    const FileDialogAnswer answer = dialog.ShowSave(wanted);
    EXPECT_EQ(answer.error, FileDialogAnswer::cancelled);
    EXPECT_EQ(answer.fileName, "");
}

TEST_F(FileDialog, OpensAFileUnderTheNameThatWasTyped)
{
    FileDialogSetup wanted = setup();
    QFile file(folder.filePath("c"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    wanted.filter = "All files|*|WAV files|*.wav";
    wanted.filterIndex = 2;
    whenShown([](QFileDialog& shown) { type(shown, "c"); });
    EXPECT_EQ(dialog.ShowOpen(wanted).fileName, folder.filePath("c"));
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
