#include "engines/EngineSet.h"

EngineSet::~EngineSet() = default;
