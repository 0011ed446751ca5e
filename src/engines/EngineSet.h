#pragma once

#include <memory>

class DiscEngine;
class EditorEngine;
class Mp3EncoderEngine;
class OutputMixer;
class PlayerEngine;
class RecorderEngine;
class VocalRemoverEngine;
class VocalRemoverExtendedEngine;

/// Makes the engines that windows ask for. Each window owns what it asked for: engines end with their windows.
class EngineSet
{
public:
    virtual ~EngineSet();

    virtual std::unique_ptr<PlayerEngine> createPlayer() = 0;

    /// Null where this build has no editor: what needs one is then not offered.
    virtual std::unique_ptr<EditorEngine> createEditor() = 0;

    /// Null where this build has no recorder, as with the editor.
    virtual std::unique_ptr<RecorderEngine> createRecorder() = 0;

    /// Null where this build has no vocal remover, as with the editor: it has both of them or none.
    virtual std::unique_ptr<VocalRemoverEngine> createVocalRemover() = 0;
    virtual std::unique_ptr<VocalRemoverExtendedEngine> createVocalRemoverExtended() = 0;

    /// Null where this build has no MP3 encoder, as with the editor.
    virtual std::unique_ptr<Mp3EncoderEngine> createMp3Encoder() = 0;

    /// Null where this build writes no discs, as with the editor.
    virtual std::unique_ptr<DiscEngine> createDisc() = 0;

    virtual std::unique_ptr<OutputMixer> createOutputMixer() = 0;
};
