#pragma once

#include "sound/SoundFiles.h"
#include "sound/media/SoundFileWriter.h"

#include <cstdint>
#include <functional>
#include <span>

/// Sound files as a SoundFileWriter writes them, and what is in them.
namespace sound::test {

/// In pieces of many sizes, as they come. False where @p write said so of one.
bool inPieces(const TestSound& sound, const std::function<bool(std::span<const float>)>& write);

/// False where the writer said so.
bool writeAll(SoundFileWriter& writer, const TestSound& sound);

EngineError writeSound(const QString& path, const SoundFormat& format, const TestSound& sound);

/// What openFrames() makes of the file; its length is checked against what it claims.
TestSound readSound(const QString& path);

/// How many frames late the frames of @p made from @p from on come in @p heard: where they are most like.
std::int64_t latenessOf(const TestSound& made, const TestSound& heard, std::int64_t from, std::int64_t frames);

}  // namespace sound::test
