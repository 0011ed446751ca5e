#include "support/controls/ElidedLabel.h"

#include "support/ToolTipText.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

ElidedLabel::ElidedLabel(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize ElidedLabel::sizeHint() const
{
    return minimumSizeHint();
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, fontMetrics().height()};
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const bool isWhole = shownText() == text();
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), isWhole ? QString() : toolTipText(text()),
                       this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    style()->drawItemText(&painter, rect(), static_cast<int>(alignment()), palette(), isEnabled(), shownText(),
                          foregroundRole());
}

QString ElidedLabel::shownText() const
{
    QString line = text();
    line.replace(u'\n', u' ').replace(u'\r', u' ');
    return fontMetrics().elidedText(line, Qt::ElideMiddle, width());
}

#include "moc_ElidedLabel.cpp"
