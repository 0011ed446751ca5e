#pragma once

#include "engines/EngineError.h"
#include "sound/editor/Rendition.h"
#include "sound/media/SoundFileWriter.h"

#include <atomic>
#include <cstdint>
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

    /// 0 to 100, and never back; 100 when all is in the file.
    short percent() const;

    /// How it ended; valid once finished().
    EngineError error() const { return result; }

private:
    EngineError write();
    std::int64_t samples() const { return rendition->length().value * rendition->channels(); }

    std::unique_ptr<Rendition> rendition;
    std::unique_ptr<SoundFileWriter> writer;
    std::atomic<bool> cancelled = false;
    std::atomic<bool> done = false;
    std::atomic<std::int64_t> written = 0;  // samples
    EngineError result = EngineError::None;
    std::thread worker;
};

}  // namespace sound
