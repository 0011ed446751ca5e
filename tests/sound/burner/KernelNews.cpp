#include "sound/burner/KernelNews.h"

#include <linux/cdrom.h>
#include <cerrno>
#include <utility>

void KernelNews::noteChange()
{
    ++changes;
    changeIsToBeTold = true;
}

int KernelNews::tellStatus(int right) const
{
    errno = ENOSYS;
    return status.value_or(right);
}

int KernelNews::tellChange(unsigned long request, void* argument)
{
    if (kind == Kind::When && request == CDROM_TIMED_MEDIA_CHANGE) {
        auto& told = *static_cast<cdrom_timed_media_change_info*>(argument);
        told.media_flags = changes > told.last_media_change ? MEDIA_CHANGED_FLAG : 0;
        told.last_media_change = changes;
        changeIsToBeTold = false;
        return 0;
    }
    if (kind != Kind::Nothing && request == CDROM_MEDIA_CHANGED)
        return std::exchange(changeIsToBeTold, false) ? 1 : 0;
    errno = ENOSYS;
    return -1;
}
