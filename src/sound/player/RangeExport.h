#pragma once

#include "engines/EngineError.h"
#include "sound/units/Frames.h"

#include <QString>
#include <atomic>
#include <memory>
#include <thread>

namespace sound {

class DecodedSound;

/// Writes a stretch of a decoded sound to a RIFF WAVE file of floating-point samples, on a thread of its own.
///
/// The file appears whole or not at all; destroying the job before it is finished leaves no file behind. Main
/// thread.
class RangeExport
{
public:
    RangeExport(std::shared_ptr<const DecodedSound> sound, FramePosition begin, FramePosition end, QString path);
    ~RangeExport();

    bool finished() const { return done.load(std::memory_order_acquire); }

    /// 0 to 100.
    short percent() const { return part.load(std::memory_order_relaxed); }

    /// How it ended; valid once finished().
    EngineError error() const { return result; }

private:
    EngineError write();

    std::shared_ptr<const DecodedSound> sound;
    FramePosition begin;
    FramePosition end;
    QString path;
    std::atomic<bool> cancelled = false;
    std::atomic<bool> done = false;
    std::atomic<short> part = 0;
    EngineError result = EngineError::None;
    std::thread worker;
};

}  // namespace sound
