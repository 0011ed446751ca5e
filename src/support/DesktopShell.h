#pragma once

#include "support/Shell.h"

/// The shell of a freedesktop desktop.
class DesktopShell : public Shell
{
public:
    bool canOpen(const QString& path) const override;
    bool ShellExecute(const QString& target) override;
};
