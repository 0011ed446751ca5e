#include "support/modList.h"

#include "QtPrinters.h"
#include "support/MockDialogs.h"
#include "support/controls/ListBox.h"

#include <sys/resource.h>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <csignal>

using ::testing::_;
using ::testing::StrictMock;

namespace {

class ListFile : public ::testing::Test
{
protected:
    QTemporaryDir folder;
    const QString path = folder.filePath("list.pms");
    StrictMock<MockMsgBox> msgBox;
    modList lists{msgBox};
    ListBox list;

    void write(const QByteArray& content) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    QByteArray content() const
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    QStringList items() const
    {
        QStringList texts;
        for (int i = 0; i < list.count(); ++i)
            texts << list.itemText(i);
        return texts;
    }

    QStringList namesInFolder() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }
};

/// No file may grow beyond so many bytes while this lives: what a full disc looks like to a writer.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        handler = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }

private:
    rlimit before{};
    void (*handler)(int) = nullptr;
};

TEST_F(ListFile, IsWrittenAsUtf8WithOneItemALineAndDosLineEnds)
{
    list.addItems({"Für Elise (MP3 file)", "", "Czardas (Wav file)"});
    lists.SaveList(list, path);
    EXPECT_EQ(content(), QByteArray("F\xC3\xBCr Elise (MP3 file)\r\n\r\nCzardas (Wav file)\r\n"));
}

TEST_F(ListFile, OfAnEmptyListIsEmpty)
{
    write("something old\r\n");
    lists.SaveList(list, path);
    EXPECT_EQ(content(), QByteArray());
}

TEST_F(ListFile, ComesBackAsItWasSaved)
{
    const QStringList texts{"Für Elise (MP3 file)", "", "日本の歌. (FLAC file)", "/home/me/Music/Für Elise.mp3"};
    list.addItems(texts);
    lists.SaveList(list, path);
    list.clear();
    lists.LoadList(list, path);
    EXPECT_EQ(items(), texts);
    EXPECT_EQ(list.listIndex(), -1);
}

TEST_F(ListFile, SplitsAnEntryWithAComma)
{
    list.addItems({"Hello, Dolly (MP3 file)", "b"});
    lists.SaveList(list, path);
    list.clear();
    lists.LoadList(list, path);
    EXPECT_EQ(items(), QStringList({"Hello", "Dolly (MP3 file)", "b"}));
}

TEST_F(ListFile, IsAddedBehindWhatTheListHolds)
{
    list.addItem("first");
    write("second\r\n");
    lists.LoadList(list, path);
    EXPECT_EQ(items(), QStringList({"first", "second"}));
}

TEST_F(ListFile, HasNoByteOrderMarkInItsFirstEntry)
{
    write("\xEF\xBB\xBF\"a, b\"\r\nc\r\n");
    lists.LoadList(list, path);
    EXPECT_EQ(items(), QStringList({"a, b", "c"}));
}

TEST_F(ListFile, OfNoBytesGivesNothingAndIsNoFailure)
{
    write("");
    lists.LoadList(list, path);
    EXPECT_EQ(list.count(), 0);
}

TEST_F(ListFile, KeepsLettersWholeThatLieAcrossTwoReads)
{
    QByteArray text;
    QStringList expected;
    for (int i = 0; i < 40000; ++i) {
        text += "\xE6\x97\xA5\xE6\x9C\xAC\r\n";
        expected << QString::fromUtf8("日本");
    }
    write("x\r\n" + text);
    lists.LoadList(list, path);
    EXPECT_EQ(items(), QStringList("x") + expected);
}

TEST_F(ListFile, ThatIsMissingIsToldWithTheSystemsTextAndLeavesTheListEmpty)
{
    EXPECT_CALL(msgBox, show(QString("No such file or directory"), MsgBox::Look::Exclamation, QString("Error")));
    lists.LoadList(list, path);
    EXPECT_EQ(list.count(), 0);
}

TEST_F(ListFile, ThatIsAFolderIsTold)
{
    ASSERT_TRUE(QDir().mkdir(path));
    EXPECT_CALL(msgBox, show(_, MsgBox::Look::Exclamation, QString("Error")));
    lists.LoadList(list, path);
    EXPECT_EQ(list.count(), 0);
}

TEST_F(ListFile, InAFolderThatIsGoneIsToldWhenSaving)
{
    EXPECT_CALL(msgBox, show(QString("No such file or directory"), MsgBox::Look::Exclamation, QString("Error")));
    lists.SaveList(list, folder.filePath("gone/list.pms"));
}

TEST_F(ListFile, KeepsItsOldContentWhenTheDiscIsFull)
{
    write("old\r\n");
    list.addItems(QStringList(10000, "a line of the new list"));
    EXPECT_CALL(msgBox, show(QString("File too large"), MsgBox::Look::Exclamation, QString("Error")));
    {
        const FileSizeLimit full(8192);
        lists.SaveList(list, path);
    }
    EXPECT_EQ(content(), QByteArray("old\r\n"));
    EXPECT_EQ(namesInFolder(), QStringList("list.pms"));
}

TEST_F(ListFile, KeepsItsOldContentWhenOnlyTheLastBytesDoNotFit)
{
    write("old\r\n");
    list.addItems(QStringList(410, "123456789012345678"));  // 410 lines of 20 bytes: 8200
    EXPECT_CALL(msgBox, show(QString("File too large"), MsgBox::Look::Exclamation, QString("Error")));
    {
        const FileSizeLimit full(8192);
        lists.SaveList(list, path);
    }
    EXPECT_EQ(content(), QByteArray("old\r\n"));
    EXPECT_EQ(namesInFolder(), QStringList("list.pms"));
}

TEST_F(ListFile, OfAMillionLinesIsReadWithTimersGoingOn)
{
    constexpr int lines = 1000000;
    QByteArray text;
    text.reserve(lines * 34);
    for (int i = 0; i < lines; ++i)
        text += "/home/me/Music/track" + QByteArray::number(i) + ".mp3\r\n";
    write(text);

    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&ticks] { ++ticks; });
    timer.start(0);
    lists.LoadList(list, path);

    EXPECT_EQ(list.count(), lines);
    EXPECT_EQ(list.itemText(lines - 1), "/home/me/Music/track999999.mp3");
    EXPECT_GT(ticks, 3);
}

}  // namespace
