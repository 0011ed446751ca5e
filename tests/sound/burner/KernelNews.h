#pragma once

#include <optional>

/// What the kernel tells of the media in a drive, without asking the drive for more than its news.
///
/// **Threads.** One at a time.
class KernelNews
{
public:
    /// How it tells that there is another disc, or that the tray has been moved.
    enum class Kind
    {
        When,
        Once,  // and not when, as older kernels do
        Nothing,
    };

    void set(Kind of) { kind = of; }

    /// Instead of the right one; -1 is a failure.
    void setStatus(int told) { status = told; }

    void noteChange();

    // As ioctl(): -1 with errno is a failure.
    int tellStatus(int right) const;
    int tellChange(unsigned long request, void* argument);

private:
    Kind kind = Kind::When;
    std::optional<int> status;
    int changes = 1;
    bool changeIsToBeTold = true;
};
