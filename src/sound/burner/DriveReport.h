#pragma once

#include "sound/disc/DiscDrive.h"

namespace burn {
struct burn_drive;
}

namespace sound {

/// What a drive tells of the disc in it.
struct DiscReport
{
    enum State
    {
        NoDisc,
        Blank,
        Written,
        Unusable,  ///< neither to be read nor to be written
    };

    State state = NoDisc;
    bool isRecordableCd = false;  // CD-R or CD-RW

    // As addresses: the program begins at 0, the lead-in before it. What is not known is 0.
    int leadInStart = 0;
    int latestLeadOut = 0;
    int readableSectors = 0;

    bool operator==(const DiscReport&) const = default;
};

/// A speed that a drive tells of.
struct SpeedReport
{
    int kilobytes = 0;       // of 1000 bytes, in a second
    bool isForDisc = false;  // the drive measured it for the disc in it, and does not tell what it can at most
};

/// Asks a grabbed drive.
DiscReport discReport(burn::burn_drive* drive);
std::vector<SpeedReport> speedReports(burn::burn_drive* drive);

/// What that means for music: a disc takes it when it is a recordable CD, and only as the first thing that is on
/// it.
LoadedDisc loadedDisc(const DiscReport& disc);

/// The fastest first, and each once. Nothing where no music can be written.
std::vector<WriteSpeed> writeSpeeds(const DiscReport& disc, const std::vector<SpeedReport>& reports);

}  // namespace sound
