#include "support/SettingsStore.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>
#include <QSettings>
#include <QTemporaryDir>

namespace {

class Settings : public ::testing::Test
{
protected:
    QTemporaryDir folder;
    const QString file = folder.filePath("Larkspin.conf");
    QSettings backing{file, QSettings::IniFormat};
    SettingsStore store{backing};
};

TEST_F(Settings, AnswerTheDefaultForAKeyThatIsAbsent)
{
    EXPECT_EQ(store.GetSetting("Options", "Show Tips at Startup", "1"), "1");
}

TEST_F(Settings, AnswerWhatWasSaved)
{
    store.SaveSetting("Options", "Show Tips at Startup", "0");
    EXPECT_EQ(store.GetSetting("Options", "Show Tips at Startup", "1"), "0");
}

TEST_F(Settings, KeepSectionsApart)
{
    store.SaveSetting("Options", "OutputFolder", "/a/");
    EXPECT_EQ(store.GetSetting("Other", "OutputFolder", "none"), "none");
}

TEST_F(Settings, AreInTheFileAsSoonAsTheyAreSaved)
{
    store.SaveSetting("Options", "OutputFolder", "/home/me/Dökumente/Larkspin Recordings/, etc");
    QSettings other(file, QSettings::IniFormat);
    EXPECT_EQ(SettingsStore(other).GetSetting("Options", "OutputFolder", ""),
              QString("/home/me/Dökumente/Larkspin Recordings/, etc"));
}

TEST_F(Settings, KeepAnEmptyTextApartFromNone)
{
    store.SaveSetting("Options", "DetectionValue", "");
    EXPECT_EQ(store.GetSetting("Options", "DetectionValue", "7"), "");
}

}  // namespace
