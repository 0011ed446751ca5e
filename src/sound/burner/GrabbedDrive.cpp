#include "sound/burner/GrabbedDrive.h"

#include "sound/burner/LibburnTurn.h"

#include <libburn/libburn.h>

#include <fcntl.h>
#include <unistd.h>
#include <cerrno>
#include <vector>

namespace sound {

namespace {

// libburn would wait six seconds for a drive that another program uses.
int errorOfOpening(const std::string& address)
{
    const int file = open(address.c_str(), O_RDWR | O_NONBLOCK | O_EXCL | O_CLOEXEC);
    if (file < 0)
        return errno;
    close(file);
    return 0;
}

}  // namespace

GrabbedDrive::GrabbedDrive(const LibburnTurn& turn, const std::string& address)
    : error(turn.isGranted() ? errorOfOpening(address) : EBUSY)
{
    if (error != 0)
        return;
    constexpr int exclusively = 1;
    constexpr int asItIs = 0;
    burn::burn_preset_device_open(exclusively, 0, 0);
    std::vector<char> name(BURN_DRIVE_ADR_LEN);
    address.copy(name.data(), name.size() - 1);
    if (burn::burn_drive_scan_and_grab(&drives, name.data(), asItIs) != 1)
        drives = nullptr;
}

GrabbedDrive::~GrabbedDrive()
{
    if (!isThere())
        return;
    burn::burn_drive_release(drive(), opens ? 1 : 0);
    burn::burn_drive_info_forget(drives, 0);
    burn::burn_drive_info_free(drives);
}

burn::burn_drive* GrabbedDrive::drive() const
{
    return drives->drive;
}

}  // namespace sound
