#include "engines/EncodeFormats.h"

Mp3Settings::~Mp3Settings() = default;
WmaSettings::~WmaSettings() = default;
OggSettings::~OggSettings() = default;
AacSettings::~AacSettings() = default;
WavSettings::~WavSettings() = default;
FlacSettings::~FlacSettings() = default;
EncodeFormats::~EncodeFormats() = default;
