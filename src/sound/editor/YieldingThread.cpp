#include "sound/editor/YieldingThread.h"

#include <sys/resource.h>
#include <unistd.h>

namespace sound {
namespace {

constexpr int niceness = 10;

}  // namespace

// Linux gives each thread its own niceness.
void yieldToOthers()
{
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), niceness);
}

}  // namespace sound
