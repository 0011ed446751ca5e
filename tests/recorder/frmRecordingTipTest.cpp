#include "recorder/frmRecordingTip.h"

#include "Controls.h"
#include "QtPrinters.h"
#include "support/SettingsStore.h"
#include "support/controls/VectorPicture.h"

#include <gtest/gtest.h>
#include <QCheckBox>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

class RecordingTip : public ::testing::Test
{
protected:
    QString stored() const { return store.GetSetting("Options", "Show RecordingTip", "none"); }
    void storeWish(const char* text) { store.SaveSetting("Options", "Show RecordingTip", text); }

    QTemporaryDir folder;
    QSettings backing{folder.filePath("Larkspin.conf"), QSettings::IniFormat};
    SettingsStore store{backing};
};

TEST_F(RecordingTip, IsWantedUntilTheUserSaysOtherwise)
{
    EXPECT_TRUE(frmRecordingTip::wanted(store));
    storeWish("1");
    EXPECT_TRUE(frmRecordingTip::wanted(store));
    storeWish("0");
    EXPECT_FALSE(frmRecordingTip::wanted(store));
}

TEST_F(RecordingTip, ShowsItsPictureUnderItsCaption)
{
    const frmRecordingTip window(store);
    EXPECT_EQ(window.windowTitle(), "Recorder initial settings");
    EXPECT_FALSE(control<VectorPicture>(window, "Picture1").sizeHint().isEmpty());
    EXPECT_EQ(control<QPushButton>(window, "cmdClose").text(), "Close");
    const auto& box = control<QCheckBox>(window, "chkLoadTipsAtStartup");
    EXPECT_EQ(box.text(), "&Show this screen in the future");
    EXPECT_TRUE(box.isChecked());
    EXPECT_EQ(stored(), "none");
}

TEST_F(RecordingTip, TellsAScreenReaderWhatThePictureShows)
{
    const frmRecordingTip window(store);
    const auto& picture = control<VectorPicture>(window, "Picture1");
    EXPECT_NE(picture.accessibleName(), "");
    for (const char* word : {"microphone", "Device", "Monitor of", "Input sensitivity", "Record"})
        EXPECT_TRUE(picture.accessibleDescription().contains(word)) << word;
}

TEST_F(RecordingTip, WritesEachChangeOfTheBoxAtOnce)
{
    const frmRecordingTip window(store);
    auto& box = control<QCheckBox>(window, "chkLoadTipsAtStartup");
    box.click();
    EXPECT_EQ(stored(), "0");
    box.click();
    EXPECT_EQ(stored(), "1");
}

TEST_F(RecordingTip, StandsInTheMiddleOfTheScreenAndBlocksNothing)
{
    frmRecordingTip window(store);
    window.show();
    EXPECT_FALSE(window.isModal());
    const QRect screen = window.screen()->geometry();
    EXPECT_EQ(window.x(), (screen.width() - window.width()) / 2);
    EXPECT_EQ(window.y(), (screen.height() - window.height()) / 2);
}

TEST_F(RecordingTip, TellsOfItsEndInWhateverWayItIsClosed)
{
    const std::function<void(frmRecordingTip&)> ways[] = {
        [](frmRecordingTip& window) { control<QPushButton>(window, "cmdClose").click(); },
        [](frmRecordingTip& window) { QTest::keyClick(&window, Qt::Key_Escape); },
        [](frmRecordingTip& window) { QTest::keyClick(&window, Qt::Key_Return); },
        [](frmRecordingTip& window) { window.close(); }};
    for (const auto& close : ways) {
        frmRecordingTip window(store);
        const QSignalSpy ends(&window, &frmRecordingTip::finished);
        window.show();
        close(window);
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(ends.size(), 1);
    }
}

}  // namespace
