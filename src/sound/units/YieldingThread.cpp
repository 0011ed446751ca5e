#include "sound/units/YieldingThread.h"

#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

namespace sound {
namespace {

constexpr int niceness = 10;

}  // namespace

// Linux gives each thread a policy and a niceness of its own.
void yieldToOthers()
{
    const sched_param none{};
    ::sched_setscheduler(0, SCHED_BATCH, &none);
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), niceness);
}

}  // namespace sound
