#include "support/controls/VectorPicture.h"

#include <gtest/gtest.h>
#include <QImage>
#include <QTemporaryFile>

namespace {

/// A drawing of 40 by 20: black on the left, white on the right.
class AVectorPicture : public ::testing::Test
{
protected:
    AVectorPicture()
    {
        file.open();
        file.write(
            "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20' viewBox='0 0 40 20'>"
            "<rect width='20' height='20' fill='#000000'/>"
            "<rect x='20' width='20' height='20' fill='#ffffff'/></svg>");
        file.close();
    }

    QImage drawn(const QSize& size, double scale)
    {
        picture.resize(size);
        QImage image(size * scale, QImage::Format_ARGB32);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::transparent);
        picture.render(&image, {}, {}, QWidget::DrawChildren);
        return image;
    }

    QTemporaryFile file;
    VectorPicture picture;
};

TEST_F(AVectorPicture, WantsTheSizeThatItsDrawingNames)
{
    picture.setSource(file.fileName());
    EXPECT_EQ(picture.sizeHint(), QSize(40, 20));
}

TEST_F(AVectorPicture, HasASharpEdgeAtEverySizeAndScale)
{
    picture.setSource(file.fileName());
    for (const double scale : {1.0, 2.0}) {
        const QImage image = drawn({100, 50}, scale);
        const int middle = image.width() / 2;
        EXPECT_EQ(image.pixel(middle - 1, 10), qRgb(0, 0, 0)) << scale;
        EXPECT_EQ(image.pixel(middle, 10), qRgb(255, 255, 255)) << scale;
    }
}

TEST_F(AVectorPicture, KeepsItsProportions)
{
    picture.setSource(file.fileName());
    const QImage image = drawn({40, 60}, 1.0);
    EXPECT_EQ(qAlpha(image.pixel(5, 15)), 0);
    EXPECT_EQ(image.pixel(5, 25), qRgb(0, 0, 0));
    EXPECT_EQ(image.pixel(35, 35), qRgb(255, 255, 255));
    EXPECT_EQ(qAlpha(image.pixel(5, 45)), 0);
}

TEST_F(AVectorPicture, ShowsNothingForASourceThatCannotBeRead)
{
    picture.setSource(file.fileName() + ".none");
    EXPECT_EQ(picture.sizeHint(), QSize(0, 0));
    QImage empty(40, 20, QImage::Format_ARGB32);
    empty.fill(Qt::transparent);
    EXPECT_EQ(drawn({40, 20}, 1.0), empty);
}

TEST_F(AVectorPicture, FindsTheDrawingsOfTheProgram)
{
    for (const char* source : {":/larkspin/larkspin.svg", ":/larkspin/splash.svg"}) {
        picture.setSource(source);
        EXPECT_FALSE(picture.sizeHint().isEmpty()) << source;
    }
}

}  // namespace
