#pragma once

class CommonDialog;
class MsgBox;

/// What a disc writer's window finds around it. All of it outlives the window.
struct DiscSurroundings
{
    CommonDialog& dialog;
    MsgBox& msgBox;
};
