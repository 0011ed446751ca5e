#include "support/TipOfDay.h"

#include "Controls.h"
#include "QtPrinters.h"
#include "support/SettingsStore.h"

#include <gtest/gtest.h>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

const char* const tips[] = {
    "Use keyboard left and right arrow to change tempo without affecting pitch, while audio is played .",
    "Use keyboard up and down arrow to change pitch by semitones without affecting tempo, while audio is played .",
    "Press PageUp and PageDown keys to change both tempo and pitch together .",
    "Press Enter to play selected audio from the list .",
    "Press Alt-Enter for looping the played audio .",
    "Use spacebar to pause played audio .",
    ("You can record modified audio by choosing Output mode-Sound and recording or Output mode-Soundless recording "
     "from main menu ."),
};

class Tips : public ::testing::Test
{
protected:
    QString stored() const { return store.GetSetting("Options", "Show Tips at Startup", "none"); }
    void storeWish(const char* text) { store.SaveSetting("Options", "Show Tips at Startup", text); }

    static QString number(const TipOfDay& window) { return control<QLabel>(window, "Label2").text(); }
    static QString text(const TipOfDay& window) { return control<QLabel>(window, "LblTip").text(); }
    static void next(const TipOfDay& window) { control<QPushButton>(window, "MyButton1").click(); }

    QTemporaryDir folder;
    QSettings backing{folder.filePath("Larkspin.conf"), QSettings::IniFormat};
    SettingsStore store{backing};
    TipPlace place;
};

TEST_F(Tips, BeginWithTheTipAtTwo)
{
    const TipOfDay window(store, place);
    EXPECT_EQ(control<QLabel>(window, "Label1").text(), "Did you know...");
    EXPECT_EQ(number(window), "2");
    EXPECT_EQ(text(window), tips[0]);
}

TEST_F(Tips, GoRoundFromTwoToEight)
{
    const TipOfDay window(store, place);
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 7; ++i) {
            EXPECT_EQ(number(window), QString::number(i + 2));
            EXPECT_EQ(text(window), tips[i]);
            next(window);
        }
    }
    EXPECT_EQ(number(window), "2");
}

TEST_F(Tips, GoOnWithTheNextInTheNextWindow)
{
    {
        const TipOfDay first(store, place);
        next(first);
    }
    const TipOfDay second(store, place);
    EXPECT_EQ(number(second), "4");
    EXPECT_EQ(text(second), tips[2]);
}

TEST_F(Tips, AreWantedUntilTheUserSaysOtherwise)
{
    EXPECT_TRUE(TipOfDay::wantedAtStartup(store));
    storeWish("1");
    EXPECT_TRUE(TipOfDay::wantedAtStartup(store));
    for (const char* other : {"0", "2", "", "yes"}) {
        storeWish(other);
        EXPECT_FALSE(TipOfDay::wantedAtStartup(store)) << other;
    }
}

TEST_F(Tips, ShowInTheirBoxThatTheyAreWanted)
{
    const TipOfDay window(store, place);
    const auto& box = control<QCheckBox>(window, "chkLoadTipsAtStartup");
    EXPECT_EQ(box.text(), "&Show Tips at Startup");
    EXPECT_TRUE(box.isChecked());
    EXPECT_EQ(stored(), "none");
}

TEST_F(Tips, WriteEachChangeOfTheBoxAtOnce)
{
    const TipOfDay window(store, place);
    auto& box = control<QCheckBox>(window, "chkLoadTipsAtStartup");
    box.click();
    EXPECT_EQ(stored(), "0");
    box.click();
    EXPECT_EQ(stored(), "1");
}

TEST_F(Tips, AreNotSeenWhereTheSettingsSayNone)
{
    storeWish("0");
    TipOfDay window(store, place);
    EXPECT_EQ(window.exec(), 0);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(place.number, 0);
}

TEST_F(Tips, BlockUntilTheyAreClosed)
{
    TipOfDay window(store, place);
    bool seen = false;
    QTimer::singleShot(0, [&] {
        seen = window.isVisible() && window.isModal();
        control<QPushButton>(window, "MyButton2").click();
    });
    window.exec();
    EXPECT_TRUE(seen);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(Tips, StandInTheMiddleOfTheScreen)
{
    TipOfDay window(store, place);
    window.show();
    const QRect screen = window.screen()->geometry();
    EXPECT_EQ(window.x(), (screen.width() - window.width()) / 2);
    EXPECT_EQ(window.y(), (screen.height() - window.height()) / 2);
}

TEST_F(Tips, AreClosedByEscapeAndByEnter)
{
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        TipOfDay window(store, place);
        window.show();
        QTest::keyClick(&window, key);
        EXPECT_FALSE(window.isVisible());
    }
}

TEST_F(Tips, KeepTheirSizeWhileTheyGoBy)
{
    TipOfDay window(store, place);
    window.show();
    QCoreApplication::processEvents();
    const QSize size = window.size();
    for (int i = 0; i < 7; ++i) {
        next(window);
        QCoreApplication::processEvents();
        EXPECT_EQ(window.size(), size);
        const auto& label = control<QLabel>(window, "LblTip");
        EXPECT_GE(label.height(), label.heightForWidth(label.width()));
    }
}

}  // namespace
