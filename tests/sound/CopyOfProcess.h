#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#include <array>
#include <csignal>
#include <functional>

namespace sound::test {

/// Does @p work in a copy of this process that is then killed by force, before anything that work has made could be
/// cleaned away: work keeps it in what it returns.
template <typename Kept>
void doAndBeKilled(const std::function<Kept()>& work)
{
    std::array<int, 2> ready = {};
    ASSERT_EQ(::pipe(ready.data()), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const Kept kept = work();
        if (kept && ::write(ready[1], "x", 1) == 1)
            ::pause();
        ::_exit(1);
    }
    ::close(ready[1]);
    char told = 0;
    EXPECT_EQ(::read(ready[0], &told, 1), 1) << "what was to be done half failed";
    ::close(ready[0]);
    ::kill(child, SIGKILL);
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status));
}

/// Whether @p work was true in a copy of this process, which it may change as it likes.
inline bool trueInCopy(const std::function<bool()>& work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work() ? 0 : 1);
    int status = 1;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace sound::test
