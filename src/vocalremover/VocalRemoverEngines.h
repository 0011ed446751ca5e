#pragma once

#include <memory>

class EditorEngine;
class EngineSet;
class PlayerEngine;
class VocalRemoverEngine;
class VocalRemoverExtendedEngine;

/// The engines of one vocal remover's window, under the names that they have there.
struct VocalRemoverEngines
{
    /// Asks for all of them.
    static VocalRemoverEngines from(EngineSet& engines);

    VocalRemoverEngines(VocalRemoverEngines&& other) noexcept;
    ~VocalRemoverEngines();

    /// Whether the window can be opened: a build may have no editor, or no vocal removers.
    bool areThere() const;

    /// Player 0 holds the source, player 1 the result of the last preview.
    std::unique_ptr<PlayerEngine> Player;

    std::unique_ptr<EditorEngine> Editor;

    /// For a voice in the centre.
    std::unique_ptr<VocalRemoverEngine> VocalRemover;

    /// For a voice elsewhere, and for previews.
    std::unique_ptr<VocalRemoverExtendedEngine> VocalRemoverExtended;

private:
    VocalRemoverEngines();
};
