#include "engines/Mp3EncoderEngine.h"

Mp3EncoderEngine::~Mp3EncoderEngine() = default;

#include "moc_Mp3EncoderEngine.cpp"
