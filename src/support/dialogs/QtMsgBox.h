#pragma once

#include "support/dialogs/MsgBox.h"

/// The message box of the user's desktop, in front of the window that the user sees.
class QtMsgBox : public MsgBox
{
public:
    using MsgBox::show;
    void show(const QString& text, Look look, const QString& title) override;
};
