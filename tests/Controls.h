#pragma once

#include <QWidget>

/// Finds a window's controls by their names. A name that is not there, or is of another kind, fails the test.
template <typename Control>
Control& control(const QWidget& window, const char* name)
{
    auto* found = window.findChild<Control*>(name);
    if (!found)
        qFatal("no control of this kind is named %s", name);
    return *found;
}
