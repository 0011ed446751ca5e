#pragma once

#include "sound/device/AudioOutput.h"
#include "sound/dsp/PeakHold.h"
#include "sound/player/LatestValue.h"
#include "sound/player/Renderer.h"
#include "sound/player/Settings.h"
#include "sound/player/Snapshot.h"
#include "sound/player/Transport.h"

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

namespace sound {

/// The thread that keeps an output filled with a renderer's sound, and the mailboxes that lead to it and from it.
///
/// Main thread: publish(), snapshot() and takePeaks(), none of which waits. The thread itself takes no lock that
/// another one holds, allocates nothing of its own and logs nothing; while nothing plays it sleeps.
class RenderThread
{
public:
    using MakeOutput = std::function<std::unique_ptr<AudioOutput>()>;

    /// @p makeOutput is called on the new thread, which the output then belongs to.
    explicit RenderThread(const MakeOutput& makeOutput);

    /// Ends the thread and its output.
    ~RenderThread();

    void publish(const Transport& transport);
    void publish(const Settings& settings);

    /// What is heard, at most some milliseconds old while sound plays.
    const Snapshot& snapshot();

    /// The highest peaks that were heard since the last call.
    Peaks takePeaks();

private:
    void run();
    void fill();
    void followRate();
    void report();
    void notify();

    MakeOutput makeOutput;

    // Written by the main thread, read by the render thread.
    LatestValue<Transport> transport;
    LatestValue<Settings> settings;
    std::atomic<bool> ending = false;
    std::atomic<AudioOutput*> wakeable = nullptr;

    // Written by the render thread, read by the main thread.
    LatestValue<Snapshot> heard;
    PeakHold peaks;

    // The render thread's own.
    std::unique_ptr<AudioOutput> output;
    Renderer renderer;
    SampleRate outputRate;
    bool started = false;

    std::thread thread;
};

}  // namespace sound
