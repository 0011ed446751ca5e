#pragma once

#include <QString>

/// Shows a message box with an OK button and returns when it is closed. Timers and engine events go on meanwhile.
class MsgBox
{
public:
    enum class Look
    {
        Plain,
        Critical,     ///< Stop icon: a load or an export failed.
        Exclamation,  ///< Warning icon.
        Information,
    };

    virtual ~MsgBox();

    /// @p text is shown as it stands, with its line breaks. An empty @p title is the program's name.
    virtual void show(const QString& text, Look look, const QString& title) = 0;

    void show(const QString& text, Look look) { show(text, look, {}); }
};
