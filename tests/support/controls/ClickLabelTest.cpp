#include "support/controls/ClickLabel.h"

#include <gtest/gtest.h>
#include <QSignalSpy>
#include <QTest>

namespace {

class AClickLabel : public ::testing::Test
{
protected:
    ClickLabel label;
    QSignalSpy clicks{&label, &ClickLabel::Click};

    void SetUp() override { label.resize(100, 20); }
};

TEST_F(AClickLabel, IsClickedWithTheLeftButton)
{
    QTest::mouseClick(&label, Qt::LeftButton);
    EXPECT_EQ(clicks.size(), 1);
    QTest::mouseClick(&label, Qt::RightButton);
    EXPECT_EQ(clicks.size(), 1);
}

TEST_F(AClickLabel, IsNotClickedWhereTheButtonGoesUpElsewhere)
{
    QTest::mousePress(&label, Qt::LeftButton);
    QTest::mouseRelease(&label, Qt::LeftButton, {}, QPoint(200, 10));
    EXPECT_EQ(clicks.size(), 0);
}

}  // namespace
