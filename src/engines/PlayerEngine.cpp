#include "engines/PlayerEngine.h"

VuMeterControl::~VuMeterControl() = default;
PlayerEngine::~PlayerEngine() = default;

#include "moc_PlayerEngine.cpp"
