#include "support/controls/ElidedLabel.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>
#include <QHelpEvent>
#include <QToolTip>

namespace {

class AnElidedLabel : public ::testing::Test
{
protected:
    ElidedLabel label;

    void SetUp() override { label.resize(120, label.minimumSizeHint().height()); }

    QString toolTip()
    {
        QHelpEvent asked(QEvent::ToolTip, QPoint(5, 5), label.mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(&label, &asked);
        return QToolTip::text();
    }

    /// What a plain label of the same size looks like.
    QImage plainLabel(const QString& text) const
    {
        QLabel plain(text);
        plain.resize(label.size());
        return plain.grab().toImage();
    }
};

TEST_F(AnElidedLabel, LooksLikeAnyOtherWhereItsTextFits)
{
    label.setText("Status");
    EXPECT_EQ(label.grab().toImage(), plainLabel("Status"));
    EXPECT_EQ(toolTip(), "");
}

TEST_F(AnElidedLabel, LosesTheMiddleOfALongTextAndShowsItWholeToThePointer)
{
    const QString path = "File Warning:/home/musician/Documents/Larkspin Recordings/take.wav";
    label.setText(path);
    const QString shown = label.fontMetrics().elidedText(path, Qt::ElideMiddle, label.width());
    EXPECT_LT(shown.size(), path.size());
    EXPECT_EQ(label.grab().toImage(), plainLabel(shown));
    EXPECT_EQ(label.text(), path);
    EXPECT_TRUE(toolTip().contains("Larkspin Recordings/take.wav"));
}

TEST_F(AnElidedLabel, AsksForNoMoreRoomHoweverLongItsTextIs)
{
    const QSize before = label.minimumSizeHint();
    label.setText(QString(1000, u'm') + "\nsecond line");
    EXPECT_EQ(label.minimumSizeHint(), before);
    EXPECT_EQ(label.sizeHint(), before);
}

}  // namespace
