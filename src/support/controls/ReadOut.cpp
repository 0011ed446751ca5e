#include "support/controls/ReadOut.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QFontMetrics>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

namespace {

// How much of the room a grown text takes: air round it reads better than more size.
constexpr double widthShare = 0.6;
constexpr double heightShare = 0.8;

int widthOf(QChar character, const QFontMetrics& metrics)
{
    if (!character.isDigit())
        return metrics.horizontalAdvance(character);
    int widest = 0;
    for (char digit = '0'; digit <= '9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
    return widest;
}

int widthOf(const QString& text, const QFontMetrics& metrics)
{
    int width = 0;
    for (const QChar character : text)
        width += widthOf(character, metrics);
    return width;
}

/// Whether the two texts take the same room, whatever digits stand in them.
bool samePlaces(const QString& one, const QString& other)
{
    const auto alike = [](QChar a, QChar b) { return a == b || (a.isDigit() && b.isDigit()); };
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), alike);
}

// The name is asked for when a reader wants it; no event tells of each hundredth of a second.
class AccessibleReadOut : public QAccessibleWidget
{
public:
    explicit AccessibleReadOut(ReadOut* readOut)
        : QAccessibleWidget(readOut, QAccessible::StaticText)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? static_cast<ReadOut*>(widget())->text() : QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface* makeAccessibleReadOut(const QString&, QObject* object)
{
    auto* readOut = qobject_cast<ReadOut*>(object);
    return readOut ? new AccessibleReadOut(readOut) : nullptr;
}

}  // namespace

// A factory that is installed already is not installed again.
ReadOut::ReadOut(QWidget* parent)
    : QWidget(parent)
{
    QAccessible::installFactory(makeAccessibleReadOut);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QString ReadOut::text() const
{
    return shown;
}

void ReadOut::setText(const QString& text)
{
    if (text == shown)
        return;
    const QString before = std::exchange(shown, text);
    if (!samePlaces(before, shown)) {
        placeCharacters();
        updateGeometry();
        update();
        return;
    }
    for (qsizetype i = 0; i < shown.size(); ++i) {
        if (shown[i] != before[i])
            update(places[i]);
    }
}

QSize ReadOut::sizeHint() const
{
    return {widthOf(shown, fontMetrics()), fontMetrics().height()};
}

QSize ReadOut::minimumSizeHint() const
{
    return sizeHint();
}

void ReadOut::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        placeCharacters();
        updateGeometry();
    }
    update();
}

void ReadOut::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    placeCharacters();
    update();
}

void ReadOut::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().brush(backgroundRole()));
    painter.setFont(grown);
    painter.setPen(palette().color(foregroundRole()));
    for (qsizetype i = 0; i < shown.size(); ++i) {
        if (event->region().intersects(places[i]))
            painter.drawText(places[i], Qt::AlignCenter, shown[i]);
    }
}

void ReadOut::placeCharacters()
{
    places.clear();
    const QSizeF natural = sizeHint();
    if (natural.isEmpty())
        return;
    const double growth =
        std::max(1.0, std::min(widthShare * width() / natural.width(), heightShare * height() / natural.height()));
    grown = font();
    grown.setPointSizeF(QFontInfo(font()).pointSizeF() * growth);

    const QFontMetrics metrics(grown, this);
    int left = (width() - widthOf(shown, metrics)) / 2;
    const int top = (height() - metrics.height()) / 2;
    for (const QChar character : shown) {
        const int characterWidth = widthOf(character, metrics);
        places.append(QRect(left, top, characterWidth, metrics.height()));
        left += characterWidth;
    }
}

#include "moc_ReadOut.cpp"
