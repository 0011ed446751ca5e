#include "support/modSpecialFolders.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QStandardPaths>

namespace {

TEST(TheRecordingsFolder, LiesInTheDocumentsAndEndsInASeparator)
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    ASSERT_FALSE(documents.isEmpty());
    EXPECT_EQ(modSpecialFolders::recordingsFolder(), documents + "/Larkspin Recordings/");
}

TEST(TheApplicationFolder, IsMadeWhenItIsMissing)
{
    const QString wanted = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir(wanted).removeRecursively();
    EXPECT_EQ(modSpecialFolders::applicationFolder(), wanted);
    EXPECT_TRUE(QDir(wanted).exists());
    EXPECT_FALSE(wanted.endsWith('/'));
    QDir(wanted).removeRecursively();
}

}  // namespace
