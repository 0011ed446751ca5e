#pragma once

class EditorEngine;
class FilesPanel;
class FilterPanel;
class MsgBox;
class PlayerEngine;
class PreviewPanel;
class RemoverStatus;
class VocalPositionPanel;
class VocalRemoverEngine;
class VocalRemoverExtendedEngine;
class WindowLife;
struct RemoverState;

/// What the routines of a vocal remover's window work with. All of it outlives them, but for the player and the
/// editor: these end when the window is closed, and no routine may come to them after that.
struct RemoverParts
{
    PlayerEngine& Player;
    EditorEngine& Editor;
    VocalRemoverEngine& VocalRemover;
    VocalRemoverExtendedEngine& VocalRemoverExtended;
    const FilesPanel& files;
    const FilterPanel& filter;
    const VocalPositionPanel& vocalPosition;
    const PreviewPanel& preview;
    RemoverStatus& status;
    RemoverState& state;
    WindowLife& life;
    MsgBox& msgBox;
};
