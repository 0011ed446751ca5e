#pragma once

#include "engines/EngineError.h"
#include "sound/media/FrameStream.h"
#include "sound/media/SampleStore.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace sound {

/// The thread that decodes a sound into its store as fast as it can, and then stays to keep the store's pages at
/// hand.
///
/// **Threads.** All calls from any thread. The destructor stops the thread, and waits no longer than one packet
/// takes to decode.
class DecodeWorker
{
public:
    /// Starts at once. @p store outlives the worker.
    DecodeWorker(std::unique_ptr<FrameStream> stream, SampleStore& store);
    ~DecodeWorker();
    DecodeWorker(const DecodeWorker&) = delete;
    DecodeWorker& operator=(const DecodeWorker&) = delete;

    /// True when nothing more will be decoded.
    bool finished() const { return done.load(std::memory_order_acquire); }

    /// None, or what stopped the decoding early. Valid once finished().
    EngineError error() const { return failure; }

    /// Blocks until so many frames are available, or decoding has stopped. Returns whether they are available.
    bool waitFor(FrameCount count) const;

private:
    void run();
    void decode();

    std::unique_ptr<FrameStream> stream;
    SampleStore& store;
    EngineError failure = EngineError::None;  // written before done
    std::atomic<bool> done = false;
    std::atomic<bool> stopping = false;

    mutable std::mutex mutex;  // of the waiting alone: frames and states are published by atomics
    mutable std::condition_variable progressed;
    std::thread thread;
};

}  // namespace sound
