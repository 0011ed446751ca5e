#pragma once

#include "Controls.h"
#include "QtPrinters.h"
#include "engines/MockPlayerEngine.h"
#include "support/MockDialogs.h"
#include "support/controls/TimeSlider.h"

#include <gtest/gtest.h>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QToolButton>

inline void click(const QWidget& panel, const char* button)
{
    control<QToolButton>(panel, button).click();
}

inline void put(const QWidget& panel, const char* slider, int value)
{
    control<Slider>(panel, slider).setValue(value);
}

inline int valueOf(const QWidget& panel, const char* slider)
{
    return control<Slider>(panel, slider).value();
}

/// What a label or a read-out shows.
inline QString textOf(const QWidget& panel, const char* label)
{
    const QVariant text = control<QWidget>(panel, label).property("text");
    if (!text.isValid())
        qFatal("%s shows no text", label);
    return text.toString();
}

/// One tick, whether the timer runs or not.
inline void fire(const QWidget& panel, const char* timer)
{
    QMetaObject::invokeMethod(&control<QTimer>(panel, timer), "timeout");
}
