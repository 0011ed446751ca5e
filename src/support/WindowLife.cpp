#include "support/WindowLife.h"

#include <QWidget>

WindowLife::WindowLife(QWidget& window)
    : window(window)
{
}

void WindowLife::close()
{
    closed = true;
    if (routines > 0 && window.testAttribute(Qt::WA_DeleteOnClose)) {
        window.setAttribute(Qt::WA_DeleteOnClose, false);
        deleteBehindRoutines = true;
    }
}

WindowLife::Routine::Routine(WindowLife& life)
    : life(life)
{
    ++life.routines;
}

// What called the outermost routine is the window's as well, a button for one: it is deleted behind that too.
WindowLife::Routine::~Routine()
{
    if (--life.routines == 0 && life.deleteBehindRoutines)
        life.window.deleteLater();
}
