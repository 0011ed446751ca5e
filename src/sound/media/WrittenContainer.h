#pragma once

#include "sound/media/AvOutput.h"
#include "sound/media/SoundFormat.h"

#include <string>

/// The containers of the written formats, as the library is told to make them. Inside this folder only.
namespace sound {

/// As the library calls it.
const char* containerOf(SoundFormat::Family family);

/// What AvOutput::writeHead() takes. @p tagged: whether there are any tags.
std::string containerOptions(SoundFormat::Family family, const AVCodecContext& codec, bool tagged);

/// Of WMA: the size of the packets, in each of which go whole coded frames of some @p bytes together.
std::string asfPacketsOf(int bytes, const AVCodecContext& codec);

/// Adds the stream of what @p codec encodes. False where there is no memory.
bool addSound(AvOutput& output, const AVCodecContext& codec);

/// Whether a packet holds nothing of the sound and is to be left out.
bool isPadding(const AVPacket& packet, const AVCodecContext& codec);

}  // namespace sound
