#include "support/controls/AccessibleBar.h"

AccessibleBar::AccessibleBar(QWidget* bar)
    : QAccessibleWidget(bar, QAccessible::ProgressBar)
{
}

void* AccessibleBar::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                               : QAccessibleWidget::interface_cast(type);
}

QAccessible::State AccessibleBar::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    return state;
}

QVariant AccessibleBar::minimumStepSize() const
{
    return 1;
}

void AccessibleBar::setCurrentValue(const QVariant&) {}
