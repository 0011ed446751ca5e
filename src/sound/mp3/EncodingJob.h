#pragma once

#include "sound/media/WholeFile.h"
#include "sound/mp3/LameEncoder.h"
#include "sound/mp3/Mp3Switches.h"
#include "sound/mp3/PcmInput.h"
#include "sound/mp3/ThreadPriority.h"

#include <QString>
#include <atomic>
#include <memory>
#include <stop_token>
#include <thread>

namespace sound {

struct EncodingOrder
{
    QString input;
    QString output;
    PcmInput::Reading reading;
    Mp3Switches switches;
    ThreadPriority priority;
};

/// Encodes one file, on a thread of its own.
///
/// The output appears whole, or not at all, and what bore its name before is then left alone. It is never put over
/// the input. Memory does not grow with the length of the sound.
///
/// **Threads.** One.
class EncodingJob
{
public:
    /// Whether there is something that can be encoded, as far as that shows before it begins.
    static bool isPossible(const EncodingOrder& order);

    /// Begins at once.
    explicit EncodingJob(EncodingOrder order);

    /// A job that is not at its end is given up, and leaves nothing but the folders that it made for the output. It
    /// ends within a moment, also while the disc is busy with what it has got: only in the instant in which the
    /// output takes its name does the name have to come to the disc first.
    ~EncodingJob() = default;
    EncodingJob(const EncodingJob&) = delete;
    EncodingJob& operator=(const EncodingJob&) = delete;

    bool ended() const { return atEnd.load(std::memory_order_acquire); }

    /// Whether the output is there; valid once it has ended.
    bool succeeded() const { return outputIsThere; }

    /// Of the sound that has been encoded: 0 to 99, and never back.
    int percent() const { return percentDone.load(std::memory_order_relaxed); }

private:
    static std::unique_ptr<PcmInput> openInput(const EncodingOrder& order);
    bool encodeFile(const std::stop_token& givenUp);
    bool encodeFrames(PcmInput& input, LameEncoder& encoder, WholeFile& file, const std::stop_token& givenUp);

    const EncodingOrder order;
    std::atomic<bool> atEnd = false;
    std::atomic<int> percentDone = 0;
    bool outputIsThere = false;
    std::jthread worker;  // last: it ends before what it works with
};

}  // namespace sound
