#include "sound/mp3/ThreadPriority.h"

#include <sys/resource.h>
#include <unistd.h>
#include <algorithm>
#include <array>
#include <cstddef>

namespace sound {
namespace {

constexpr int nicest = 19;
constexpr int leastNice = -20;

/// From the normal level, for each of the classes. The scale has 20 steps on either side.
constexpr std::array nicenessOf = {19, 10, 5, 0, -5, -10, -15};

/// How far up the system lets a thread go that has no privilege.
int leastNiceAllowed()
{
    rlimit limit = {};
    if (::getrlimit(RLIMIT_NICE, &limit) != 0)
        return nicest;
    // Told as 20 less the level, so that it is never negative.
    return 20 - static_cast<int>(std::min<rlim_t>(limit.rlim_cur, 20 - leastNice));
}

}  // namespace

void takePriority(ThreadPriority priority)
{
    const int change = nicenessOf[static_cast<std::size_t>(priority.index)];
    if (change == 0)
        return;
    // Linux gives each thread a niceness of its own.
    const auto thread = static_cast<id_t>(::gettid());
    const int normal = ::getpriority(PRIO_PROCESS, thread);
    const int wanted = std::clamp(normal + change, leastNice, nicest);
    if (::setpriority(PRIO_PROCESS, thread, wanted) != 0 && leastNiceAllowed() < normal)
        ::setpriority(PRIO_PROCESS, thread, std::max(wanted, leastNiceAllowed()));
}

}  // namespace sound
