#include "sound/burner/GrabbedDrive.h"

#include "sound/burner/LibburnTurn.h"

#include <libburn/libburn.h>

#include <fcntl.h>
#include <unistd.h>
#include <cerrno>
#include <chrono>
#include <thread>
#include <vector>

namespace sound {

using namespace std::chrono_literals;

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

burn::burn_drive_info* onlyDriveAt(const std::string& address)
{
    std::vector<char> name(BURN_DRIVE_ADR_LEN);
    address.copy(name.data(), name.size() - 1);
    burn::burn_drive_clear_whitelist();
    if (burn::burn_drive_add_whitelist(name.data()) <= 0)
        return nullptr;
    burn::burn_drive_info* drives = nullptr;
    unsigned count = 0;
    int found = 0;
    while ((found = burn::burn_drive_scan(&drives, &count)) == 0)
        std::this_thread::sleep_for(1ms);
    burn::burn_drive_clear_whitelist();
    if (found > 0 && count == 1)
        return drives;
    if (found > 0)
        burn::burn_drive_info_free(drives);
    return nullptr;
}

/// The motor is started and stopped by commands that return when it has been. Else libburn lets them return at
/// once, and looks half a second later, each time.
class WithoutLookingAgain
{
public:
    explicit WithoutLookingAgain(burn::burn_drive* of)
        : drive(of)
        , usually(burn::burn_drive_get_immed(of))
    {
        burn::burn_drive_set_immed(drive, 0);
    }

    ~WithoutLookingAgain() { burn::burn_drive_set_immed(drive, usually); }
    WithoutLookingAgain(const WithoutLookingAgain&) = delete;
    WithoutLookingAgain& operator=(const WithoutLookingAgain&) = delete;

private:
    burn::burn_drive* const drive;
    const int usually;
};

bool grabAsItIs(burn::burn_drive* drive)
{
    constexpr int doNotClose = 0;
    const WithoutLookingAgain quickly(drive);
    return burn::burn_drive_grab(drive, doNotClose) != 0;
}

}  // namespace

GrabbedDrive::GrabbedDrive(const LibburnTurn& turn, const std::string& address)
    : error(turn.isGranted() ? errorOfOpening(address) : EBUSY)
{
    if (error != 0)
        return;
    constexpr int exclusively = 1;
    burn::burn_preset_device_open(exclusively, 0, 0);
    drives = onlyDriveAt(address);
    if (drives == nullptr)
        return;
    if (!grabAsItIs(drive()))
        forget();
}

GrabbedDrive::~GrabbedDrive()
{
    if (!isThere())
        return;
    {
        const WithoutLookingAgain quickly(drive());
        burn::burn_drive_release(drive(), opens ? 1 : 0);
    }
    forget();
}

void GrabbedDrive::forget()
{
    burn::burn_drive_info_forget(drives, 0);
    burn::burn_drive_info_free(drives);
    drives = nullptr;
}

burn::burn_drive* GrabbedDrive::drive() const
{
    return drives->drive;
}

}  // namespace sound
