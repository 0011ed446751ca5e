#include "sound/burner/MediaWatch.h"

#include <fcntl.h>
#include <linux/cdrom.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <climits>  // which linux/cdrom.h needs and does not include
#include <utility>

namespace sound {

namespace {

bool isCertain(int status)
{
    return status == CDS_DISC_OK || status == CDS_NO_DISC || status == CDS_TRAY_OPEN;
}

}  // namespace

MediaWatch::MediaWatch(std::string of)
    : address(std::move(of))
{
}

bool MediaWatch::isUnchanged()
{
    const std::optional<Media> before = std::exchange(last, mediaAt(address));
    return last && last == before;
}

bool MediaWatch::hasDisc() const
{
    return last && last->status == CDS_DISC_OK;
}

// Exclusively, as libburn would: nothing is asked of a drive with which another program just writes.
std::optional<MediaWatch::Media> MediaWatch::mediaAt(const std::string& address)
{
    const int file = open(address.c_str(), O_RDONLY | O_NONBLOCK | O_EXCL | O_CLOEXEC);
    if (file < 0)
        return std::nullopt;
    const std::optional<Media> media = mediaOf(file);
    close(file);
    return media;
}

// Kernels before 5.16 tell of a change only to whoever asks first. It may have been another program, but there is
// nothing better.
std::optional<MediaWatch::Media> MediaWatch::mediaOf(int file)
{
    Media media;
    cdrom_timed_media_change_info change{};
    if (ioctl(file, CDROM_TIMED_MEDIA_CHANGE, &change) == 0)
        media.changedAt = change.last_media_change;
    else if (ioctl(file, CDROM_MEDIA_CHANGED, CDSL_CURRENT) != 0)
        return std::nullopt;
    media.status = ioctl(file, CDROM_DRIVE_STATUS, CDSL_CURRENT);
    return isCertain(media.status) ? std::optional(media) : std::nullopt;
}

}  // namespace sound
