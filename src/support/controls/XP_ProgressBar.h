#pragma once

#include <QColor>
#include <QPalette>
#include <QWidget>

/// The light shade of a colour: @p shade 0 is the colour itself, 255 is white.
QColor lightShade(const QColor& color, int shade);

/// A progress bar that draws itself alike on every desktop: black text and a bar in Color() on white.
///
/// It knows nothing of the job whose progress it shows; whoever runs the job writes the value. Any value may be
/// written: beyond the range the bar is full or empty.
///
/// A write of the value or of ShowText() redraws the bar before it returns, so that it can be seen moving while the
/// main thread works. The other properties show with the next draw, whatever causes that.
///
/// The end of the bar moves by whole chunks, so values that are close to each other can look the same.
class XP_ProgressBar : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor Color READ Color WRITE setColor)
    Q_PROPERTY(int Min READ Min WRITE setMin)
    Q_PROPERTY(int Max READ Max WRITE setMax)
    Q_PROPERTY(int Orientation READ Orientation WRITE setOrientation)
    Q_PROPERTY(int Scrolling READ Scrolling WRITE setScrolling)
    Q_PROPERTY(bool ShowText READ ShowText WRITE setShowText)
    Q_PROPERTY(int Value READ Value WRITE setValue)

public:
    enum ScrollingStyle
    {
        Chunks,
        Smooth,
        Searching,  ///< Three blocks of light instead of a bar. They move as the value does.
    };

    explicit XP_ProgressBar(QWidget* parent = nullptr);

    QColor Color() const { return color; }
    void setColor(const QColor& wanted) { color = wanted; }

    /// Takes a colour of the desktop as it is now. The bar begins with the highlight's.
    void setColor(QPalette::ColorRole role) { color = palette().color(role); }

    int Min() const { return minimum; }
    void setMin(int wanted) { minimum = wanted; }

    /// While the maximum is the minimum the bar stays where it was.
    int Max() const { return maximum; }
    void setMax(int wanted) { maximum = wanted; }

    /// 0 is horizontal, growing from the left; any other value is vertical, growing from the bottom.
    int Orientation() const { return orientation; }
    void setOrientation(int wanted);

    /// One of ScrollingStyle.
    int Scrolling() const { return scrolling; }
    void setScrolling(int wanted) { scrolling = wanted; }

    bool ShowText() const { return textShown; }
    void setShowText(bool wanted);

    int Value() const { return value; }
    void setValue(int wanted);

    /// What the bar says when it shows text: a true percentage only for a maximum of 100.
    QString text() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void DrawProgressBar(QPainter& painter);
    void drawBar(QPainter& painter) const;
    void drawSearchingBlocks(QPainter& painter) const;
    void drawGaps(QPainter& painter) const;
    void drawBorder(QPainter& painter) const;

    /// Where the bar ends: its right edge, or its top edge when it is vertical.
    int barEdge() const;
    void drawBody(QPainter& painter, int begin, int end, const QColor& outer, const QColor& inner) const;

    /// The part of the control from @p begin to @p end along the bar, and @p first to @p last across it.
    QRect part(int begin, int end, int first, int last) const;

    QColor color;
    int minimum = 0;
    int maximum = 100;
    int value = 0;
    int orientation = 0;
    int scrolling = Chunks;
    bool textShown = false;

    /// How much of the range is done, 0 to 1, as of the last draw.
    double fraction = 0.0;
};
