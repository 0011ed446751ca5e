#pragma once

#include "sound/device/Wakeup.h"
#include "sound/dsp/PeakHold.h"
#include "sound/recorder/LevelWatch.h"
#include "sound/recorder/RecordingChain.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace sound {

class CaptureRing;

/// The thread on which captured frames are watched, encoded and written.
///
/// What the level watch finds is told to the main thread, and no frame behind that is taken until the main thread
/// has answered, for the answer may be another file, which then begins just there. What is captured meanwhile waits
/// in the ring. A main thread that is busy elsewhere is not waited for longer than a moment.
///
/// All else that the main thread asks for happens behind the last frame that was captured when it asked.
class RecordingThread
{
public:
    enum class Event
    {
        Silence,
        Sound,
        Failed,  ///< The recording has ended: the disc is full or fails, or a file could not be made.
    };

    using Task = std::function<void(RecordingChain&)>;

    static constexpr std::chrono::milliseconds longestHold{500};

    RecordingThread();

    /// Ends the recording that is under way.
    ~RecordingThread();
    RecordingThread(const RecordingThread&) = delete;
    RecordingThread& operator=(const RecordingThread&) = delete;

    /// Whoever captures notifies this.
    Wakeup& reader() { return news; }

    /// Frames come from @p ring from now on, at @p rate; from a null one, none. The ring before is emptied first
    /// and not touched again when the call has returned.
    void follow(CaptureRing* ring, SampleRate rate);

    /// Begins or changes the file; where it cannot be made, Failed follows.
    void begin(const QString& path, const RecordingFormat& format);

    /// As begin(), but only where a recording is under way.
    void goOn(const QString& path, const RecordingFormat& format);

    /// Closes the file; it is whole when the call returns. Returns whether a recording was under way.
    bool end();

    /// Changes a setting of the chain, soon.
    void change(Task task);

    /// Readable, as poll() knows it, while there are events.
    int eventDescriptor() const { return events.descriptor(); }
    std::vector<Event> takeEvents();

    /// Everything has been done that the last events call for.
    void answer();

    /// The highest since the last call.
    Peaks takePeaks();

private:
    using Clock = std::chrono::steady_clock;

    /// What has been asked for, and whether what was told last is answered: the first tasks are then of the answer.
    struct Asked
    {
        std::vector<Task> tasks;
        bool answered;
        std::size_t ofAnswer;
    };

    void changeAndWait(const Task& task);
    void tell(Event event);

    // The thread's own.
    void run();
    void sleep();
    Asked takeAsked();
    void takeCaptured();
    void drain();
    std::optional<FrameCount> take();
    void start(const QString& path, const RecordingFormat& format);

    Wakeup news;
    Wakeup events;

    std::mutex mutex;
    std::vector<Task> tasks;
    std::vector<Event> untold;
    bool answered = false;
    std::size_t tasksOfAnswer = 0;
    std::atomic<bool> ending = false;
    PeakHold peaks;

    // The thread's own.
    RecordingChain chain;
    CaptureRing* source = nullptr;
    std::vector<float> buffer;
    std::size_t used = 0;  // of the samples in the buffer
    bool holding = false;
    Clock::time_point heldSince;

    std::thread thread;
};

}  // namespace sound
