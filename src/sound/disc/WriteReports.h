#pragma once

#include "engines/DiscEngine.h"
#include "engines/DiscWriteError.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <stop_token>

namespace sound {

/// What DiscEngine::WriteProgress tells.
struct ProgressReport
{
    DiscStage stage = DiscStage::Preparing;
    int totalPercent = 0;
    int track = 0;
    int trackPercent = 0;

    bool operator==(const ProgressReport&) const = default;
};

/// How a write ended: Completed, Cancelled, or Failed with its reason.
struct WriteEnd
{
    DiscStage stage = DiscStage::Completed;
    DiscWriteError error = {};
};

struct WriteReport
{
    enum Kind
    {
        Progress,
        Problem,  ///< It waits for an answer.
        End,
    };

    Kind kind = Progress;

    // The one of the kind.
    ProgressReport progress = {};
    DiscFileReport problem = {};
    WriteEnd end = {};
};

/// What the threads of a write tell the main thread, in its order.
///
/// No stage and no track is left out, however quickly it passes; of their percents only the latest waits to be
/// taken, so that whoever takes every few milliseconds is not flooded. What is told twice is there once.
///
/// **Threads.** Any. One asks at a time.
class WriteReports
{
public:
    void tell(const ProgressReport& progress);
    void tellEnd(const WriteEnd& end);

    /// Waits until the main thread has answered, or the write is given up; the answer, or false.
    bool ask(const DiscFileReport& report, const std::stop_token& givenUp);

    /// The main thread's.
    std::optional<WriteReport> take();
    void answer(bool goOn);

private:
    std::mutex mutex;
    std::condition_variable_any answered;
    std::deque<WriteReport> untold;
    std::optional<ProgressReport> last;
    std::optional<bool> lastAnswer;
};

}  // namespace sound
