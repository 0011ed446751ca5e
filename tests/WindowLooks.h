#pragma once

#include <QWidget>

#include <gtest/gtest.h>

/// Expects a name for screen readers of each of the window's controls that the tab key reaches; how many there are.
inline int controlsNamedForScreenReaders(const QWidget& window)
{
    int controls = 0;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || widget->objectName().startsWith("qt_") ||
            widget->parentWidget()->inherits("QComboBoxPrivateContainer"))
            continue;
        ++controls;
        EXPECT_NE(widget->accessibleName(), "") << qPrintable(widget->objectName());
    }
    return controls;
}
