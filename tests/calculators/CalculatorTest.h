#pragma once

#include "Controls.h"
#include "QtPrinters.h"
#include "support/controls/ComboBox.h"
#include "support/controls/Slider.h"

#include <gtest/gtest.h>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

inline void click(const QWidget& window, const char* button)
{
    control<QPushButton>(window, button).click();
}

inline QString textOf(const QWidget& window, const char* label)
{
    return control<QLabel>(window, label).text();
}

inline QStringList itemsOf(const QWidget& window, const char* list)
{
    const auto& box = control<ComboBox>(window, list);
    QStringList items;
    for (int i = 0; i < box.count(); ++i)
        items << box.itemText(i);
    return items;
}

/// A slider with a range.
class RangedSlider : public Slider
{
public:
    RangedSlider(int minimum, int maximum) { setRange(minimum, maximum); }
};
