#pragma once

#include "engines/EngineError.h"
#include "sound/editor/Rendition.h"
#include "sound/media/SoundFileWriter.h"

#include <atomic>
#include <memory>
#include <thread>

namespace sound {

/// Writes a rendition to a file, on a thread of its own that yields to others.
///
/// The file appears whole or not at all; destroying the job before it is finished leaves no file behind. Main
/// thread.
class ExportJob
{
public:
    ExportJob(std::unique_ptr<Rendition> rendition, std::unique_ptr<SoundFileWriter> writer);
    ~ExportJob();

    bool finished() const { return done.load(std::memory_order_acquire); }

    /// 0 to 100.
    short percent() const { return part.load(std::memory_order_relaxed); }

    /// How it ended; valid once finished().
    EngineError error() const { return result; }

private:
    EngineError write();

    std::unique_ptr<Rendition> rendition;
    std::unique_ptr<SoundFileWriter> writer;
    std::atomic<bool> cancelled = false;
    std::atomic<bool> done = false;
    std::atomic<short> part = 0;
    EngineError result = EngineError::None;
    std::thread worker;
};

}  // namespace sound
