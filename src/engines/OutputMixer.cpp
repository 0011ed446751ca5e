#include "engines/OutputMixer.h"

OutputMixer::~OutputMixer() = default;
