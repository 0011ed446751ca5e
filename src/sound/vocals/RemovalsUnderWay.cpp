#include "sound/vocals/RemovalsUnderWay.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace sound {

using namespace std::chrono_literals;

namespace {

// Windows that live by what is told are promised 30 ms; the system may be late.
constexpr auto tellInterval = 10ms;

// Each takes memory for what it works on.
constexpr unsigned mostWorkers = 8;

int allCores()
{
    return static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1U, mostWorkers));
}

}  // namespace

VocalRemoval RemovalsUnderWay::run(const RemovalSettings& settings, const std::function<void(short)>& tell)
{
    thread.expect();
    RemovalJob job(settings, allCores());
    jobs.push_back(&job);
    const auto tellPercent = [&] {
        if (!abandoned)
            tell(job.percent());
    };
    while (!job.waitFor(tellInterval))
        tellPercent();
    if (job.result() == VocalRemoval::Done)
        tellPercent();
    jobs.pop_back();
    return job.finish();
}

void RemovalsUnderWay::giveUp()
{
    thread.expect();
    for (RemovalJob* job : jobs)
        job->giveUp();
}

void RemovalsUnderWay::abandon()
{
    abandoned = true;
    giveUp();
}

}  // namespace sound
