#include "sound/burner/DriveReport.h"

#include <libburn/libburn.h>

#include <algorithm>
#include <cmath>

namespace sound {

namespace {

constexpr double kilobytesOfPlaying = 176.4;

DiscReport::State stateOf(burn::burn_disc_status status)
{
    switch (status) {
    case burn::BURN_DISC_BLANK:
        return DiscReport::Blank;
    case burn::BURN_DISC_APPENDABLE:
    case burn::BURN_DISC_FULL:
        return DiscReport::Written;
    case burn::BURN_DISC_UNSUITABLE:
        return DiscReport::Unusable;
    case burn::BURN_DISC_UNREADY:
    case burn::BURN_DISC_EMPTY:
    case burn::BURN_DISC_UNGRABBED:
        break;
    }
    return DiscReport::NoDisc;
}

bool isRecordableCd(burn::burn_drive* drive)
{
    constexpr int cdR = 0x09;
    constexpr int cdRw = 0x0a;
    int profile = 0;
    char name[80] = "";
    return burn::burn_disc_get_profile(drive, &profile, name) > 0 && (profile == cdR || profile == cdRw);
}

}  // namespace

DiscReport discReport(burn::burn_drive* drive)
{
    DiscReport report;
    report.state = stateOf(burn::burn_disc_get_status(drive));
    report.isRecordableCd = isRecordableCd(drive);
    int begin = 0;
    int end = 0;
    if (report.state == DiscReport::Blank && burn::burn_drive_get_start_end_lba(drive, &begin, &end, 0) > 0) {
        report.leadInStart = begin;
        report.latestLeadOut = end;
    }
    int readable = 0;
    if (report.state == DiscReport::Written && burn::burn_get_read_capacity(drive, &readable, 0) > 0)
        report.readableSectors = readable;
    return report;
}

std::vector<SpeedReport> speedReports(burn::burn_drive* drive)
{
    constexpr int measured = 2;
    std::vector<SpeedReport> reports;
    burn::burn_speed_descriptor* list = nullptr;
    if (burn::burn_drive_get_speedlist(drive, &list) > 0)
        for (const burn::burn_speed_descriptor* speed = list; speed != nullptr; speed = speed->next)
            reports.push_back({speed->write_speed, speed->source == measured});
    burn::burn_drive_free_speedlist(&list);
    return reports;
}

LoadedDisc loadedDisc(const DiscReport& disc)
{
    LoadedDisc loaded;
    loaded.present = disc.state != DiscReport::NoDisc;
    loaded.blank = disc.state == DiscReport::Blank && disc.isRecordableCd;
    loaded.used = disc.state == DiscReport::Written ? std::max(disc.readableSectors, 0) : 0;
    loaded.free = loaded.blank ? std::max(disc.latestLeadOut, 0) : 0;
    return loaded;
}

// A drive tells some speeds twice, as a little more than a multiple and as a little less. What is the same to the
// first decimal is the same.
std::vector<WriteSpeed> writeSpeeds(const DiscReport& disc, const std::vector<SpeedReport>& reports)
{
    std::vector<WriteSpeed> speeds;
    if (!loadedDisc(disc).blank)
        return speeds;
    const auto isForDisc = [](const SpeedReport& report) { return report.isForDisc && report.kilobytes > 0; };
    const bool onlyForDisc = std::any_of(reports.begin(), reports.end(), isForDisc);
    for (const SpeedReport& report : reports)
        if (report.kilobytes > 0 && (report.isForDisc || !onlyForDisc))
            speeds.push_back({report.kilobytes, report.kilobytes / kilobytesOfPlaying});
    std::sort(speeds.begin(), speeds.end(),
              [](const WriteSpeed& one, const WriteSpeed& other) { return one.code > other.code; });
    const auto isSame = [](const WriteSpeed& one, const WriteSpeed& other) {
        return std::lround(one.rate * 10) == std::lround(other.rate * 10);
    };
    speeds.erase(std::unique(speeds.begin(), speeds.end(), isSame), speeds.end());
    return speeds;
}

}  // namespace sound
