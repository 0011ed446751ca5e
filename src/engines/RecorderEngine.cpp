#include "engines/RecorderEngine.h"

RecorderMp3Settings::~RecorderMp3Settings() = default;
RecorderOggSettings::~RecorderOggSettings() = default;
RecorderWavSettings::~RecorderWavSettings() = default;
RecorderWmaSettings::~RecorderWmaSettings() = default;
RecorderAacSettings::~RecorderAacSettings() = default;
RecorderEncodeFormats::~RecorderEncodeFormats() = default;
RecorderBarMeters::~RecorderBarMeters() = default;
RecorderVuMeter::~RecorderVuMeter() = default;
RecordedSound::~RecordedSound() = default;
RecorderEngine::~RecorderEngine() = default;

#include "moc_RecorderEngine.cpp"
