#include "sound/media/DecodeWorker.h"

#include <vector>

namespace sound {
namespace {

// Under a second of sound, which is decoded in a few milliseconds.
constexpr std::size_t samplesAtOnce = std::size_t{64} * 1024;

}  // namespace

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
    bool more = true;
    while (more && !store.isFull()) {
        // The first frames are waited for, all others are taken in large blocks.
        const std::size_t wanted = store.available().value == 0 ? 1 : samplesAtOnce;
        block.clear();
        while (more && block.size() < wanted)
            more = stream->next(block);
        if (!store.append(block)) {
            failure = EngineError::NotEnoughMemory;
            break;
        }
        if (store.mustKeep())
            store.keepNear();
        {
            // Taken and let go, so that none who looks at the count now starts to wait just after the call below.
            const std::lock_guard lock(mutex);
        }
        progressed.notify_all();
    }
    if (!stopping.load(std::memory_order_relaxed))
        store.finish();
}

}  // namespace sound
