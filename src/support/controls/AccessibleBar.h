#pragma once

#include <QAccessibleWidget>

/// What a screen reader is told of a bar that shows a value and that nobody can set: a progress bar. Each kind of
/// bar adds its value and its range.
class AccessibleBar : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit AccessibleBar(QWidget* bar);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;
    QVariant minimumStepSize() const override;
    void setCurrentValue(const QVariant& wanted) override;
};
