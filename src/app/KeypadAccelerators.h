#pragma once

#include <QHash>
#include <QObject>

class QAction;
class QKeyEvent;
class QWidget;

/// Accelerators on the digits of the numeric keypad, with Num Lock on or off and no other modifier held.
///
/// They work while the window is the active one and no text box that can be edited has the focus: there a digit is
/// typed, and without Num Lock the same keys move the cursor.
///
/// An action's own shortcut cannot do this. A shortcut with the keypad modifier never comes on a real display, and
/// one without it comes for the digit row as well.
class KeypadAccelerators : public QObject
{
    Q_OBJECT

public:
    /// @p window outlives this.
    explicit KeypadAccelerators(QWidget& window);

    /// @p digit is Qt::Key_0 to Qt::Key_9.
    void add(Qt::Key digit, QAction* action);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAction* actionOf(const QKeyEvent& event) const;
    bool windowTakesKeys() const;

    QWidget& window;
    QHash<Qt::Key, QAction*> actions;
};
