#include "support/controls/XP_ProgressBar.h"

#include "support/Numbers.h"
#include "support/controls/AccessibleBar.h"

#include <QPainter>
#include <algorithm>

namespace {

constexpr int gap = 2;
constexpr int chunkPitch = 8 + gap;
constexpr int band = 6;
constexpr int inset = 2;

constexpr int searchingBlock = 10;
constexpr int searchingBlocks = 3;

constexpr QRgb outermostFrame = 0xff686868;
constexpr QRgb upperLeftFrame = 0xffbebebe;
constexpr QRgb innerFrame = 0xffefefef;

/// Where the three parts of the bar begin and end across it: a band, the solid middle, a band.
struct Across
{
    int firstBand;
    int middle;
    int middleEnd;
    int lastBand;
};

int backToChunk(int distance)
{
    return distance - distance % chunkPitch;
}

/// A step of the way from one colour to another; the last step is the other.
QColor between(const QColor& from, const QColor& to, int step, int steps)
{
    const auto channel = [&](int a, int b) { return roundHalfToEven(a + (b - a) * step / (steps - 1.0)); };
    return {channel(from.red(), to.red()), channel(from.green(), to.green()), channel(from.blue(), to.blue())};
}

/// A frame one pixel thick along the inside of a rectangle, as four fills: crisp at every scale.
void drawFrame(QPainter& painter, const QRect& frame, const QColor& color)
{
    painter.fillRect(QRect(frame.left(), frame.top(), frame.width(), 1), color);
    painter.fillRect(QRect(frame.left(), frame.bottom(), frame.width(), 1), color);
    painter.fillRect(QRect(frame.left(), frame.top(), 1, frame.height()), color);
    painter.fillRect(QRect(frame.right(), frame.top(), 1, frame.height()), color);
}

/// The rectangle without the pixels that its round corners leave out.
QRegion roundedRegion(const QRect& whole)
{
    QRegion region(whole);
    for (const auto& [row, left] : {std::pair(whole.top(), 2), std::pair(whole.top() + 1, 1),
                                    std::pair(whole.bottom() - 1, 1), std::pair(whole.bottom(), 2)}) {
        region -= QRect(whole.left(), row, left, 1);
        region -= QRect(whole.right() + 1 - left, row, left, 1);
    }
    return region;
}

class AccessibleProgressBar : public AccessibleBar
{
public:
    using AccessibleBar::AccessibleBar;

    QVariant currentValue() const override { return bar().Value(); }
    QVariant minimumValue() const override { return bar().Min(); }
    QVariant maximumValue() const override { return bar().Max(); }

private:
    const XP_ProgressBar& bar() const { return *static_cast<XP_ProgressBar*>(widget()); }
};

QAccessibleInterface* makeAccessibleProgressBar(const QString&, QObject* object)
{
    auto* bar = qobject_cast<XP_ProgressBar*>(object);
    return bar ? new AccessibleProgressBar(bar) : nullptr;
}

}  // namespace

QColor lightShade(const QColor& color, int shade)
{
    const auto channel = [shade](int plain) {
        return std::min(roundHalfToEven(plain * (255 - shade) / 255.0 + shade), 255);
    };
    return {channel(color.red()), channel(color.green()), channel(color.blue())};
}

// A factory that is installed already is not installed again.
XP_ProgressBar::XP_ProgressBar(QWidget* parent)
    : QWidget(parent)
{
    QAccessible::installFactory(makeAccessibleProgressBar);
    setFont(QFont(QStringLiteral("Tahoma"), 8));
    setColor(QPalette::Highlight);
    setOrientation(0);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void XP_ProgressBar::setOrientation(int wanted)
{
    orientation = wanted;
    setSizePolicy(orientation == 0 ? QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed)
                                   : QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding));
}

void XP_ProgressBar::setShowText(bool wanted)
{
    textShown = wanted;
    repaint();
}

void XP_ProgressBar::setValue(int wanted)
{
    const bool changed = value != wanted;
    value = wanted;
    repaint();
    if (changed) {
        QAccessibleValueChangeEvent event(this, value);
        QAccessible::updateAccessibility(&event);
    }
}

QString XP_ProgressBar::text() const
{
    if (scrolling == Searching)
        return QStringLiteral("Searching..");
    return QString::number(static_cast<double>(maximum) * value / 100.0, 'g', 15) + QStringLiteral(" %");
}

QSize XP_ProgressBar::sizeHint() const
{
    const QSize level(200, 22);
    return orientation == 0 ? level : level.transposed();
}

QSize XP_ProgressBar::minimumSizeHint() const
{
    const QSize level(4 * chunkPitch, 22);
    return orientation == 0 ? level : level.transposed();
}

void XP_ProgressBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    setMask(roundedRegion(rect()));
    update();
}

void XP_ProgressBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    DrawProgressBar(painter);
}

void XP_ProgressBar::DrawProgressBar(QPainter& painter)
{
    if (maximum != minimum) {
        const double done = static_cast<double>(value) - minimum;
        fraction = std::clamp(done / (static_cast<double>(maximum) - minimum), 0.0, 1.0);
    }
    painter.fillRect(rect(), Qt::white);
    if (scrolling == Searching)
        drawSearchingBlocks(painter);
    else
        drawBar(painter);
    if (scrolling == Chunks)
        drawGaps(painter);
    drawBorder(painter);
    if (textShown) {
        painter.setPen(Qt::black);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
    }
}

int XP_ProgressBar::barEdge() const
{
    if (orientation == 0)
        return std::max(backToChunk(roundHalfToEven(width() * fraction)), 0);
    return std::min(backToChunk(roundHalfToEven(height() * (1.0 - fraction - 0.02))), height());
}

void XP_ProgressBar::drawBar(QPainter& painter) const
{
    const QColor outer = lightShade(color, 150);
    if (orientation == 0)
        drawBody(painter, inset, barEdge(), outer, color);
    else
        drawBody(painter, barEdge(), height() - inset, outer, color);
}

// The first block stands at the edge and leads; the others follow it, away from where the bar grows to.
void XP_ProgressBar::drawSearchingBlocks(QPainter& painter) const
{
    for (int i = 0; i < searchingBlocks; ++i) {
        const int behind = i * (searchingBlock + gap);
        const int begin = orientation == 0 ? barEdge() - behind - searchingBlock : barEdge() + behind;
        drawBody(painter, begin, begin + searchingBlock, lightShade(color, 220 - 40 * i),
                 lightShade(color, 200 - 40 * i));
    }
}

// The edge of the bar is the end of a chunk; each gap lies on the other side of one.
void XP_ProgressBar::drawGaps(QPainter& painter) const
{
    if (orientation == 0) {
        for (int x = chunkPitch; x < barEdge(); x += chunkPitch)
            painter.fillRect(QRect(x, 0, gap, height()), Qt::white);
    } else {
        for (int y = barEdge() + chunkPitch - gap; y < height(); y += chunkPitch)
            painter.fillRect(QRect(0, y, width(), gap), Qt::white);
    }
}

void XP_ProgressBar::drawBorder(QPainter& painter) const
{
    const QRect whole = rect();
    drawFrame(painter, whole.adjusted(1, 1, 0, 0), upperLeftFrame);
    drawFrame(painter, whole.adjusted(1, 2, -1, -1), innerFrame);
    drawFrame(painter, whole, outermostFrame);
    const QRect corners = whole.adjusted(1, 1, -1, -1);
    for (const QPoint& corner :
         {corners.topLeft(), corners.topRight(), corners.bottomLeft(), corners.bottomRight()})
        painter.fillRect(QRect(corner, QSize(1, 1)), QColor(outermostFrame));
}

void XP_ProgressBar::drawBody(QPainter& painter, int begin, int end, const QColor& outer, const QColor& inner) const
{
    if (end <= begin)
        return;
    const Across across =
        orientation == 0 ? Across{3, 8, height() - 6, height() - 6} : Across{2, 7, width() - 8, width() - 8};
    if (across.middle < across.middleEnd)
        painter.fillRect(part(begin, end, across.middle, across.middleEnd), inner);
    for (int i = 0; i < band; ++i) {
        const int upper = across.firstBand + i;
        painter.fillRect(part(begin, end, upper, upper + 1), between(outer, inner, i, band));
        const int lower = across.lastBand + i;
        painter.fillRect(part(begin, end, lower, lower + 1), between(inner, outer, i, band));
    }
}

QRect XP_ProgressBar::part(int begin, int end, int first, int last) const
{
    return orientation == 0 ? QRect(begin, first, end - begin, last - first)
                            : QRect(first, begin, last - first, end - begin);
}

#include "moc_XP_ProgressBar.cpp"
