#pragma once

#include <functional>

class CommonDialog;
class MsgBox;

/// What a vocal remover's window finds around it. All of it outlives the window.
struct VocalRemoverSurroundings
{
    CommonDialog& dialog;
    MsgBox& msgBox;

    /// Opens the help file with this context number.
    std::function<void(int context)> openHelp;
};
