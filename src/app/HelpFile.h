#pragma once

#include <QString>

class Shell;

/// The manual: "Larkspin.chm" and, since few desktops open that format, the same pages as HTML beside it.
class HelpFile
{
public:
    /// @p folder is where the manual lies. The shell outlives this.
    HelpFile(Shell& shell, const QString& folder);

    /// Opens the first of the two that is there and that the desktop can open. Shows nothing where there is none.
    ///
    /// The pages open at the one of the context number, where that has one; a compiled manual at its beginning, for
    /// desktops have no way to tell its reader a page.
    void open(int context = 0) const;

private:
    Shell& shell;
    const QString folder;
};
