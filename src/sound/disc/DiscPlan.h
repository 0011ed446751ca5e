#pragma once

#include <QString>
#include <cstdint>
#include <vector>

namespace sound {

/// What audio discs are made of.
struct Sectors
{
    static constexpr int bytes = 2352;
    static constexpr int frames = 588;  // of 44100 Hz, two channels of 16 bits, the low byte first
    static constexpr int perSecond = 75;

    static constexpr int shortestTrack = 4 * perSecond;
    static constexpr int pause = 2 * perSecond;
    static constexpr int mostTracks = 99;

    /// Where the lead-out of a disc of 80 minutes begins.
    static constexpr std::int64_t wholeDisc = (79 * 60 + 57) * perSecond + 74;
};

/// What a player with a display shows of a disc or of a track. What is empty is not told.
struct DiscTexts
{
    QString title;
    QString performer;

    bool operator==(const DiscTexts&) const = default;
};

/// A disc as it is to be written.
struct DiscPlan
{
    struct Track
    {
        /// At least Sectors::shortestTrack; the pause before the track is not counted.
        std::int64_t sectors = 0;
        DiscTexts texts;

        bool operator==(const Track&) const = default;
    };

    std::vector<Track> tracks;
    DiscTexts texts;

    /// The tracks follow each other at once, and all of it is written in one run. Else each has Sectors::pause of
    /// silence before it, which the device makes: it is no part of what the SectorFeed brings.
    bool discAtOnce = false;

    /// All is done but the writing.
    bool test = false;
    bool underrunProtection = false;

    /// As the device tells its speeds; 0 is as fast as it can.
    int speed = 0;

    bool operator==(const DiscPlan&) const = default;
};

}  // namespace sound
