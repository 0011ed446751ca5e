#include "sound/media/DecodeWorker.h"

#include <vector>

namespace sound {

DecodeWorker::DecodeWorker(std::unique_ptr<FrameStream> frames, SampleStore& destination)
    : stream(std::move(frames))
    , store(destination)
    , thread([this] { run(); })
{
}

DecodeWorker::~DecodeWorker()
{
    stopping.store(true, std::memory_order_relaxed);
    stream->stop();
    store.wake();
    thread.join();
}

bool DecodeWorker::waitFor(FrameCount count) const
{
    std::unique_lock lock(mutex);
    progressed.wait(lock, [&] { return store.available() >= count || finished(); });
    return store.available() >= count;
}

void DecodeWorker::run()
{
    decode();
    {
        const std::lock_guard lock(mutex);
        done.store(true, std::memory_order_release);
    }
    progressed.notify_all();

    while (!stopping.load(std::memory_order_relaxed)) {
        store.waitToKeep();
        store.keepNear();
    }
}

void DecodeWorker::decode()
{
    std::vector<float> block;
    while (!store.isFull() && stream->next(block)) {
        if (!store.append(block)) {
            failure = EngineError::NotEnoughMemory;
            return;
        }
        {
            // Taken and let go, so that none who looks at the count now starts to wait just after the call below.
            const std::lock_guard lock(mutex);
        }
        progressed.notify_all();
    }
    if (!stopping.load(std::memory_order_relaxed) && !store.finish())
        failure = EngineError::NotEnoughMemory;
}

}  // namespace sound
