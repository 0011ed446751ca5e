#include "engines/EditorEngine.h"

EditorEffects::~EditorEffects() = default;
EditorEngine::~EditorEngine() = default;

#include "moc_EditorEngine.cpp"
