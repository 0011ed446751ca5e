#include "sound/device/Wakeup.h"

#include <sys/eventfd.h>
#include <unistd.h>
#include <cerrno>
#include <system_error>

namespace sound {

Wakeup::Wakeup()
    : event(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (event < 0)
        throw std::system_error(errno, std::generic_category(), "eventfd");
}

Wakeup::~Wakeup()
{
    close(event);
}

void Wakeup::notify()
{
    // A counter that is already full needs no more: the sleeper will wake.
    eventfd_write(event, 1);
}

void Wakeup::clear()
{
    eventfd_t ignored = 0;
    eventfd_read(event, &ignored);
}

}  // namespace sound
