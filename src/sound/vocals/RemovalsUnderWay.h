#pragma once

#include "engines/VocalRemoverEngine.h"
#include "sound/units/OneThread.h"
#include "sound/vocals/RemovalJob.h"

#include <functional>
#include <vector>

namespace sound {

/// The removals of one engine: each blocks its caller, and one may be called in the middle of another.
///
/// **Threads.** One, the main thread.
class RemovalsUnderWay
{
public:
    /// Tells the percent every few milliseconds until the job is done, and 100 before a good end, which may still
    /// make it GivenUp.
    VocalRemoval run(const RemovalSettings& settings, const std::function<void(short)>& tell);

    /// All of them end soon, as GivenUp.
    void giveUp();

    /// The same, and nothing more is told: whoever was told is no more.
    void abandon();

private:
    OneThread thread;
    std::vector<RemovalJob*> jobs;  // the outermost first
    bool abandoned = false;
};

}  // namespace sound
