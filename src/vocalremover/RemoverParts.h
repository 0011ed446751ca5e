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

/// What the routines of a vocal remover's window work with. All of it outlives them.
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
