#include "engines/DiscEngine.h"

#include "engines/AudioProject.h"
#include "engines/DiscDevice.h"

AudioProject::~AudioProject() = default;
DiscDevice::~DiscDevice() = default;
DiscEngine::~DiscEngine() = default;

#include "moc_DiscEngine.cpp"
