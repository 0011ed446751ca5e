#include "app/KeypadAccelerators.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace {

/// The digit of a keypad key, whatever Num Lock makes of it.
Qt::Key digitOf(int key)
{
    switch (key) {
    case Qt::Key_Insert:
        return Qt::Key_0;
    case Qt::Key_End:
        return Qt::Key_1;
    case Qt::Key_Down:
        return Qt::Key_2;
    case Qt::Key_PageDown:
        return Qt::Key_3;
    case Qt::Key_Left:
        return Qt::Key_4;
    case Qt::Key_Clear:
        return Qt::Key_5;
    case Qt::Key_Right:
        return Qt::Key_6;
    case Qt::Key_Home:
        return Qt::Key_7;
    case Qt::Key_Up:
        return Qt::Key_8;
    case Qt::Key_PageUp:
        return Qt::Key_9;
    default:
        return static_cast<Qt::Key>(key);
    }
}

}  // namespace

KeypadAccelerators::KeypadAccelerators(QWidget& window)
    : window(window)
{
    qApp->installEventFilter(this);
}

void KeypadAccelerators::add(Qt::Key digit, QAction* action)
{
    actions[digit] = action;
}

// The window system asks first whether anyone wants the key for himself; only then it is no shortcut and comes as a
// key press.
bool KeypadAccelerators::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    auto& key = static_cast<QKeyEvent&>(*event);
    QAction* action = actionOf(key);
    if (!action || !windowTakesKeys())
        return QObject::eventFilter(watched, event);
    key.accept();
    if (event->type() == QEvent::KeyPress)
        action->trigger();
    return true;
}

QAction* KeypadAccelerators::actionOf(const QKeyEvent& event) const
{
    return event.modifiers() == Qt::KeypadModifier ? actions.value(digitOf(event.key())) : nullptr;
}

bool KeypadAccelerators::windowTakesKeys() const
{
    const auto* text = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    const bool edits = text && !text->isReadOnly();
    return QApplication::activeWindow() == &window && !QApplication::activePopupWidget() && !edits;
}

#include "moc_KeypadAccelerators.cpp"
