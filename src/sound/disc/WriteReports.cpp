#include "sound/disc/WriteReports.h"

namespace sound {

void WriteReports::tell(const ProgressReport& progress)
{
    const std::lock_guard lock(mutex);
    if (progress == last)
        return;
    const bool sameIsWaiting = !untold.empty() && untold.back().kind == WriteReport::Progress &&
                               untold.back().progress.stage == progress.stage &&
                               untold.back().progress.track == progress.track;
    if (!sameIsWaiting)
        untold.emplace_back();
    untold.back().progress = progress;
    last = progress;
}

void WriteReports::tellEnd(const WriteEnd& end)
{
    const std::lock_guard lock(mutex);
    untold.push_back({.kind = WriteReport::End, .end = end});
}

bool WriteReports::ask(const DiscFileReport& report, const std::stop_token& givenUp)
{
    std::unique_lock lock(mutex);
    lastAnswer.reset();
    untold.push_back({.kind = WriteReport::Problem, .problem = report});
    if (answered.wait(lock, givenUp, [this] { return lastAnswer.has_value(); }))
        return *lastAnswer;
    // Nobody waits for the answer any more.
    std::erase_if(untold, [](const WriteReport& waiting) { return waiting.kind == WriteReport::Problem; });
    return false;
}

std::optional<WriteReport> WriteReports::take()
{
    const std::lock_guard lock(mutex);
    if (untold.empty())
        return std::nullopt;
    WriteReport next = untold.front();
    untold.pop_front();
    return next;
}

void WriteReports::answer(bool goOn)
{
    const std::lock_guard lock(mutex);
    lastAnswer = goOn;
    answered.notify_all();
}

}  // namespace sound
