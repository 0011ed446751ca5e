#pragma once

#include "wave/StereoSound.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// Mixes of a voice and instruments of which every part is known, to judge by what a remover of voices makes of
/// them.
namespace vocalmixes {

/// Which parts a mix is made of, and how. The parts are those that stems.py has made.
struct Recipe
{
    std::string song;   ///< Name of its folder.
    std::string voice;  ///< "singer" or "speaker".
    int pan = 0;        ///< Of the voice: -100 is the very left, 100 the very right, between them at equal power.
    bool room = false;  ///< Whether the voice sounds in a room, which gives some of it back from everywhere.
    double from = 0;    ///< Where in the song the mix begins, in seconds.
    double seconds = 0;
};

struct Part
{
    std::string name;
    StereoSound sound;
};

/// All sounds of it have the same rate and length.
struct Mix
{
    std::vector<Part> instruments;
    StereoSound accompaniment;  ///< The sum of the instruments.
    StereoSound voice;          ///< As it stands in the mix.
    StereoSound sum;            ///< What a remover gets. Its peak is just below full scale.
};

/// Where the voice sounds, it has as much energy as all instruments together, over both channels. Nothing where a
/// part is missing or cannot be read.
std::optional<Mix> mixOf(const std::filesystem::path& stems, const Recipe& recipe);

/// Frames around which, for a twentieth of a second, the sound is no more than 40 dB below its loudest.
std::vector<bool> soundingFrames(const StereoSound& sound);

}  // namespace vocalmixes
