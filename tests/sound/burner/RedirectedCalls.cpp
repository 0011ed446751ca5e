// The system calls by which libburn reaches a drive and waits for it, here because a program's own functions come
// before those of the C library. Drives that the machine has are not there: no test touches them. What is not for a
// drive goes on to the system.

#include "sound/burner/EmulatedWriter.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <unistd.h>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <ctime>

#define LARKSPIN_FOR_LIBRARIES extern "C" __attribute__((visibility("default")))

namespace {

// libburn gives drives and their motors time, of which an emulated one needs little.
constexpr long quicker = 50;

int wait(long microseconds)
{
    const long shortened = EmulatedWriter::current() != nullptr ? microseconds / quicker : microseconds;
    const timespec time{shortened / 1000000, shortened % 1000000 * 1000};
    return nanosleep(&time, nullptr);
}

bool isDrive(const char* path)
{
    const auto begins = [&](const char* name) { return std::strncmp(path, name, std::strlen(name)) == 0; };
    return begins("/dev/sr") || begins("/dev/scd") || begins("/dev/hd");
}

EmulatedWriter* writerAt(const char* path)
{
    return std::strcmp(path, EmulatedWriter::address) == 0 ? EmulatedWriter::current() : nullptr;
}

}  // namespace

LARKSPIN_FOR_LIBRARIES int open(const char* path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    if (EmulatedWriter* const writer = writerAt(path))
        return writer->open(flags);
    if (isDrive(path)) {
        errno = ENOENT;
        return -1;
    }
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

LARKSPIN_FOR_LIBRARIES int ioctl(int file, unsigned long request, ...) noexcept
{
    va_list more;
    va_start(more, request);
    void* const argument = va_arg(more, void*);
    va_end(more);
    EmulatedWriter* const writer = EmulatedWriter::current();
    if (writer != nullptr && EmulatedWriter::owns(file))
        return writer->control(request, argument);
    return static_cast<int>(syscall(SYS_ioctl, file, request, argument));
}

LARKSPIN_FOR_LIBRARIES int usleep(useconds_t microseconds)
{
    return wait(static_cast<long>(microseconds));
}

LARKSPIN_FOR_LIBRARIES unsigned sleep(unsigned seconds)
{
    wait(static_cast<long>(seconds) * 1000000);
    return 0;
}

// What a library that was built with care asks for open().
LARKSPIN_FOR_LIBRARIES int __open_2(const char* path, int flags)
{
    return open(path, flags);
}

// What libraries that were built long ago ask for stat().
LARKSPIN_FOR_LIBRARIES int __xstat(int, const char* path, struct stat* status)
{
    if (writerAt(path) == nullptr)
        return stat(path, status);
    *status = {};
    status->st_mode = S_IFBLK | 0660;
    status->st_rdev = makedev(11, 0);
    return 0;
}
