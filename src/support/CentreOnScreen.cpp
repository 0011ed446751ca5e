#include "support/CentreOnScreen.h"

#include <QScreen>
#include <QWidget>

void centreOnScreen(QWidget& window)
{
    window.adjustSize();
    const QRect screen = window.screen()->geometry();
    window.move(screen.left() + (screen.width() - window.width()) / 2,
                screen.top() + (screen.height() - window.height()) / 2);
}
