#include "sound/burner/BurnerDrives.h"

#include "sound/burner/BurnerDrive.h"
#include "sound/burner/LibburnTurn.h"

#include <libburn/libburn.h>

#include <chrono>
#include <span>
#include <thread>
#include <vector>

namespace sound {

using namespace std::chrono_literals;

namespace {

bool protectsFromUnderrun(burn::burn_drive* drive)
{
    burn::burn_write_opts* const options = burn::burn_write_opts_new(drive);
    if (options == nullptr)
        return false;
    const bool protects = burn::burn_write_opts_set_underrun_proof(options, 1) > 0;
    burn::burn_write_opts_free(options);
    return protects;
}

DriveIdentity identityOf(burn::burn_drive_info& info)
{
    std::vector<char> address(BURN_DRIVE_ADR_LEN);
    burn::burn_drive_get_adr(&info, address.data());
    DriveIdentity identity;
    identity.address = address.data();
    identity.maker = QString::fromLatin1(info.vendor).trimmed();
    identity.model = QString::fromLatin1(info.product).trimmed();
    identity.writesCds = info.write_cdr != 0 || info.write_cdrw != 0;
    identity.writesTests = info.write_simulate != 0;
    identity.protectsFromUnderrun = protectsFromUnderrun(info.drive);
    return identity;
}

// Not exclusively: libburn would wait six seconds for each drive that another program uses, and then leave it out.
std::optional<DiscDrives> findDrives()
{
    const LibburnTurn turn;
    if (!turn.isGranted())
        return std::nullopt;
    burn::burn_preset_device_open(0, 0, 0);
    burn::burn_drive_info* infos = nullptr;
    unsigned count = 0;
    int found = 0;
    while ((found = burn::burn_drive_scan(&infos, &count)) == 0)
        std::this_thread::sleep_for(1ms);
    if (found < 0)
        return std::nullopt;
    DiscDrives drives;
    for (burn::burn_drive_info& info : std::span(infos, count)) {
        drives.push_back(std::make_unique<BurnerDrive>(identityOf(info)));
        burn::burn_drive_info_forget(&info, 0);
    }
    burn::burn_drive_info_free(infos);
    return drives;
}

}  // namespace

FindDrives burnerDrives()
{
    return findDrives;
}

}  // namespace sound
