#include "engines/VocalRemoverEngine.h"

VocalRemoverEngine::~VocalRemoverEngine() = default;
VocalRemoverExtendedEngine::~VocalRemoverExtendedEngine() = default;

#include "moc_VocalRemoverEngine.cpp"
