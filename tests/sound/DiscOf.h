#pragma once

#include <sys/resource.h>
#include <csignal>

namespace sound::test {

/// While it lives a file of this process cannot grow beyond a number of bytes, as on a disc that is full.
class DiscOf
{
public:
    explicit DiscOf(rlim_t bytes)
        : oldHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &old);
        const rlimit small{bytes, old.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    ~DiscOf()
    {
        ::setrlimit(RLIMIT_FSIZE, &old);
        std::signal(SIGXFSZ, oldHandler);
    }
    DiscOf(const DiscOf&) = delete;
    DiscOf& operator=(const DiscOf&) = delete;

private:
    rlimit old = {};
    void (*oldHandler)(int);
};

}  // namespace sound::test
