#include "app/MainMenu.h"

#include "app/KeypadAccelerators.h"
#include "app/MenuTable.h"

#include <QAbstractButton>

MainMenu::MainMenu(KeypadAccelerators& keypad, QWidget* parent)
    : QMenuBar(parent)
    , keypad(keypad)
{
    setObjectName("SmartMenuXP1");
}

void MainMenu::BuildMenu(const QWidget& window)
{
    const auto button = [&window](const char* name) {
        auto* found = window.findChild<QAbstractButton*>(name);
        Q_ASSERT_X(found, "BuildMenu", name);
        return found;
    };
    for (const MenuOfTable& row : menuTable()) {
        QMenu* menu = addMenu(tr(row.caption));
        menu->setObjectName(row.key);
        for (const MenuEntry& entry : row.entries) {
            if (entry.isSeparator()) {
                menu->addSeparator();
                continue;
            }
            QAction* action = menu->addAction(button(entry.picture)->icon(), tr(entry.caption));
            action->setObjectName(entry.key);
            giveAccelerator(action, entry.accelerator);
            for (const char* name : entry.clicks)
                connect(action, &QAction::triggered, button(name), &QAbstractButton::click);
        }
    }
}

QAction* MainMenu::entry(const char* key) const
{
    return findChild<QAction*>(key);
}

// A shortcut on the keypad is only shown: the keypad's own filter does the work. So is one that an earlier entry
// has, by a context in which it never comes: two that are alike would cancel each other out.
void MainMenu::giveAccelerator(QAction* action, const QKeySequence& accelerator)
{
    if (accelerator.isEmpty())
        return;
    action->setShortcut(accelerator);
    if (accelerator[0].keyboardModifiers() & Qt::KeypadModifier)
        keypad.add(accelerator[0].key(), action);
    else if (taken.contains(accelerator))
        action->setShortcutContext(Qt::WidgetShortcut);
    taken << accelerator;
}

#include "moc_MainMenu.cpp"
