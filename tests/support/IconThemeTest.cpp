#include "support/IconTheme.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QIcon>
#include <QPalette>

namespace {

/// How light the ink of an icon is, 0 to 255.
int lightness(const QIcon& icon)
{
    const QImage image = icon.pixmap(22, 22).toImage();
    int ink = 0;
    int sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (const QColor color = image.pixelColor(x, y); color.alpha() > 200) {
                ++ink;
                sum += color.lightness();
            }
        }
    }
    return ink == 0 ? -1 : sum / ink;
}

class Icons : public ::testing::Test
{
protected:
    void SetUp() override { QIcon::setThemeName("hicolor"); }

    void TearDown() override
    {
        QApplication::setPalette(before);
        QIcon::setThemeName(theme);
    }

    const QString theme = QIcon::themeName();
    const QPalette before = QApplication::palette();
    const QPalette light{QColor(240, 240, 240), QColor(239, 239, 239)};
    const QPalette dark{QColor(49, 54, 59), QColor(42, 46, 50)};
};

TEST_F(Icons, ThatTheUsersThemeLacksComeFromTheBreezeThatFitsThePalette)
{
    QApplication::setPalette(light);
    const IconTheme icons;
    const int onLight = lightness(QIcon::fromTheme("media-playback-start"));
    EXPECT_GE(onLight, 0);
    EXPECT_LT(onLight, 100);
}

TEST_F(Icons, FollowThePaletteWhileTheProgramRuns)
{
    QApplication::setPalette(light);
    const IconTheme icons;
    const QIcon icon = QIcon::fromTheme("media-playback-pause");
    ASSERT_LT(lightness(icon), 100);
    QApplication::setPalette(dark);
    EXPECT_GT(lightness(icon), 180);
    QApplication::setPalette(light);
    EXPECT_LT(lightness(icon), 100);
}

TEST_F(Icons, OfTheProgramsOwnDrawingFollowThePaletteToo)
{
    QApplication::setPalette(light);
    const IconTheme icons;
    for (const char* name :
         {"larkspin-metronome", "larkspin-transpose", "larkspin-vocal-remover", "larkspin-encode"}) {
        SCOPED_TRACE(name);
        const QIcon icon = QIcon::fromTheme(name);
        QApplication::setPalette(light);
        EXPECT_GE(lightness(icon), 0);
        EXPECT_LT(lightness(icon), 130);
        QApplication::setPalette(dark);
        EXPECT_GT(lightness(icon), 180);
    }
}

}  // namespace
