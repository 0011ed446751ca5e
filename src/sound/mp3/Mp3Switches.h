#pragma once

#include <optional>

namespace sound {

enum class StereoMode
{
    Stereo,
    Joint,
    MiddleAndSide,  ///< Joint stereo with every frame as middle and side.
    Mono,
};

/// What is asked of the encoder. Where nothing is, it does what it thinks best.
struct Mp3Switches
{
    std::optional<StereoMode> stereoMode;
    bool downmixToMono = false;

    std::optional<int> bitrate;  ///< kbit/s, as all bit rates here.
    bool voiceMode = false;

    bool variableBitrate = false;
    std::optional<int> vbrQuality;  ///< 0, the best, to 9.
    std::optional<int> leastBitrate;
    std::optional<int> largestBitrate;
    bool noInfoTag = false;

    bool highQuality = false;
    bool fast = false;
    bool allFrequencies = false;
    bool mixedBlockTypes = false;
    bool thresholdOfHearingOnly = false;
    bool noShortBlocks = false;

    bool checksum = false;
    bool copyrighted = false;
    bool notOriginal = false;
};

}  // namespace sound
