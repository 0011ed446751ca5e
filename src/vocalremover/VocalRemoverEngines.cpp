#include "vocalremover/VocalRemoverEngines.h"

#include "engines/EditorEngine.h"
#include "engines/EngineSet.h"
#include "engines/PlayerEngine.h"
#include "engines/VocalRemoverEngine.h"

VocalRemoverEngines::VocalRemoverEngines() = default;
VocalRemoverEngines::VocalRemoverEngines(VocalRemoverEngines&& other) noexcept = default;
VocalRemoverEngines::~VocalRemoverEngines() = default;

VocalRemoverEngines VocalRemoverEngines::from(EngineSet& engines)
{
    VocalRemoverEngines made;
    made.Player = engines.createPlayer();
    made.Editor = engines.createEditor();
    made.VocalRemover = engines.createVocalRemover();
    made.VocalRemoverExtended = engines.createVocalRemoverExtended();
    return made;
}

bool VocalRemoverEngines::areThere() const
{
    return Player && Editor && VocalRemover && VocalRemoverExtended;
}
