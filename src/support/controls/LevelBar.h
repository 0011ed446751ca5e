#pragma once

#include <QColor>
#include <QWidget>

/// A bar that shows how loud something is, changed many times a second.
///
/// It fills from left to right: light blue, orange red over the topmost tenth of its range, white where it is
/// empty, until it is given other colours. Of the peaks of a sound the topmost tenth is what comes within 0.9 dB of
/// full scale. The colours are the same in light and dark windows; a line in the colours of the window surrounds
/// them.
///
/// It stays at the last value given: no peak is held here and nothing decays. A value costs nothing that does not
/// move the end of the filled stretch by a pixel of the screen; otherwise only the strip between the old end and
/// the new one is painted again.
///
/// A screen reader reads the value when it is asked to. It is not told of each change.
class LevelBar : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int minimum READ minimum)
    Q_PROPERTY(int maximum READ maximum)
    Q_PROPERTY(int value READ value WRITE SetBarValue)

public:
    static constexpr QRgb levelColor = qRgb(0x08, 0xC1, 0xF0);
    static constexpr QRgb topColor = qRgb(0xE4, 0x3E, 0x0E);
    static constexpr QRgb emptyColor = qRgb(0xFF, 0xFF, 0xFF);

    struct Colors
    {
        QRgb level = levelColor;
        QRgb top = topColor;
        QRgb empty = emptyColor;

        bool operator==(const Colors&) const = default;
    };

    /// A bar without a range, until it has one, is empty.
    explicit LevelBar(QWidget* parent = nullptr);

    /// @p minimum is an empty bar, @p maximum a full one.
    void SetBarRange(int minimum, int maximum);

    /// A value outside the range is cut to it.
    void SetBarValue(int value);

    void setColors(const Colors& wanted);

    int minimum() const { return lowest; }
    int maximum() const { return highest; }
    int value() const { return held; }
    const Colors& colors() const { return inks; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// Within the line.
    QRect room() const;

    /// The right end of the stretch that is filled at this share of the range, on a pixel of the screen.
    double endOf(double share) const;
    double share() const;

    int lowest = 0;
    int highest = 0;
    int held = 0;
    Colors inks;
};
