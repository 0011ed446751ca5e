#include "sound/RealTimeMain.h"

#include <gmock/gmock.h>

#include <pthread.h>
#include <sched.h>
#include <spawn.h>
#include <sys/wait.h>
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace sound::test {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr auto nap = 2ms;
constexpr auto watchedFrom = 5ms;  // beyond the nap; less than that no buffer notices
constexpr int runsAtMost = 5;
constexpr const char* runVariable = "LARKSPIN_REAL_TIME_RUN";

void makeUrgent(pthread_t thread, int priority)
{
    const sched_param parameters{.sched_priority = priority};
    pthread_setschedparam(thread, SCHED_RR | SCHED_RESET_ON_FORK, &parameters);
}

/// Watches each processor with a higher priority than any sound.
class StallWatch
{
public:
    StallWatch()
    {
        cpu_set_t processors;
        sched_getaffinity(0, sizeof processors, &processors);
        for (int processor = 0; processor < CPU_SETSIZE; ++processor) {
            if (CPU_ISSET(processor, &processors))
                watchers.emplace_back([this, processor] { watch(processor); });
        }
    }

    ~StallWatch()
    {
        ending.store(true);
        for (std::thread& watcher : watchers)
            watcher.join();
    }

    StallWatch(const StallWatch&) = delete;
    StallWatch& operator=(const StallWatch&) = delete;

    /// The longest time for which a processor stood still that ended at @p begin or later; zero for none.
    Milliseconds longestSince(Clock::time_point begin)
    {
        const std::lock_guard lock(mutex);
        Milliseconds longest{};
        for (const Stall& stall : stalls) {
            if (stall.end >= begin)
                longest = std::max(longest, stall.length);
        }
        return longest;
    }

private:
    struct Stall
    {
        Clock::time_point end;
        Milliseconds length;
    };

    void watch(int processor)
    {
        cpu_set_t only;
        CPU_ZERO(&only);
        CPU_SET(processor, &only);
        pthread_setaffinity_np(pthread_self(), sizeof only, &only);
        makeUrgent(pthread_self(), 50);
        while (!ending.load()) {
            const Clock::time_point before = Clock::now();
            std::this_thread::sleep_for(nap);
            const Clock::time_point now = Clock::now();
            if (now - before > nap + watchedFrom) {
                const std::lock_guard lock(mutex);
                stalls.push_back({now, now - before});
            }
        }
    }

    std::mutex mutex;
    std::vector<Stall> stalls;
    std::atomic<bool> ending{false};
    std::vector<std::thread> watchers;
};

/// Which tests failed, and whether the machine explains them all.
class FailureWatch : public ::testing::EmptyTestEventListener
{
public:
    explicit FailureWatch(StallWatch& watch)
        : machine(watch)
    {
    }

    bool excused() const { return !failed.empty() && !unexplained; }

    /// As --gtest_filter wants them.
    const std::string& names() const { return failed; }

private:
    void OnTestStart(const ::testing::TestInfo&) override { begin = Clock::now(); }

    void OnTestEnd(const ::testing::TestInfo& test) override
    {
        if (!test.result()->Failed())
            return;
        const std::string name = std::string(test.test_suite_name()) + '.' + test.name();
        failed += failed.empty() ? name : ':' + name;
        const Milliseconds stall = machine.longestSince(begin);
        if (stall > Milliseconds::zero())
            std::cout << "The machine stood still for " << stall.count() << " ms during " << name << '\n';
        else
            unexplained = true;
    }

    StallWatch& machine;
    Clock::time_point begin;
    std::string failed;
    bool unexplained = false;
};

int runsBefore()
{
    const char* told = std::getenv(runVariable);
    return told == nullptr ? 0 : std::atoi(told);
}

/// Runs this program once more, for these tests only, and returns what it ended with.
int runAgain(const std::string& program, const std::string& names)
{
    std::cout << "Once more: " << names << std::endl;
    ::setenv(runVariable, std::to_string(runsBefore() + 1).c_str(), 1);
    std::string path = program;
    std::string filter = "--gtest_filter=" + names;
    char* const arguments[] = {path.data(), filter.data(), nullptr};
    pid_t process = -1;
    if (posix_spawn(&process, "/proc/self/exe", nullptr, nullptr, arguments, environ) != 0)
        return EXIT_FAILURE;
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE;
}

}  // namespace

int runRealTimeTests(int argumentCount, char** arguments)
{
    ::testing::InitGoogleMock(&argumentCount, arguments);
    StallWatch machine;
    auto* failures = new FailureWatch(machine);  // belongs to GoogleTest once it is appended
    ::testing::UnitTest::GetInstance()->listeners().Append(failures);
    const int result = RUN_ALL_TESTS();
    if (result == 0 || !failures->excused() || runsBefore() + 1 >= runsAtMost)
        return result;
    return runAgain(arguments[0], failures->names());
}

UrgentHere::UrgentHere()
{
    makeUrgent(pthread_self(), 3);
}

UrgentHere::~UrgentHere()
{
    const sched_param ordinary{};
    pthread_setschedparam(pthread_self(), SCHED_OTHER, &ordinary);
}

}  // namespace sound::test
