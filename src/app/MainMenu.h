#pragma once

#include <QMenuBar>

class KeypadAccelerators;

/// The menu bar of the main window. It never changes after BuildMenu(): no entry is ever disabled, checked or
/// recaptioned.
class MainMenu : public QMenuBar
{
    Q_OBJECT

public:
    /// @p keypad takes the accelerators of the numeric keypad.
    MainMenu(KeypadAccelerators& keypad, QWidget* parent = nullptr);

    /// Builds the bar from the menu table, once. Every button that the table names stands somewhere in @p window;
    /// pictures are taken from them now.
    void BuildMenu(const QWidget& window);

    /// The entry of this key; there is one once the menu is built.
    QAction* entry(const char* key) const;

private:
    void giveAccelerator(QAction* action, const QKeySequence& accelerator);

    KeypadAccelerators& keypad;
    QList<QKeySequence> taken;
};
