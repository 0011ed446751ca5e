#pragma once

#include <vector>

/// The practice track as it stands on paper: sixteen bars of medium swing in F for vibraphone, electric piano,
/// double bass and brushes, and a last chord. Bars last exactly two seconds, so that the loop sliders, which go in
/// whole seconds, can catch any bar.
namespace practice {

inline constexpr int kBeatsPerMinute = 120;
inline constexpr int kBeatsPerBar = 4;
inline constexpr int kBars = 16;
inline constexpr double kSecondsPerBeat = 60.0 / kBeatsPerMinute;

/// One note. Beats count from 0 at the beginning of the piece; pitch 69 is the A of 440 Hz.
struct Note
{
    double beat = 0;
    int pitch = 0;
    double beats = 1;   ///< How long it is held.
    double accent = 1;  ///< 0 to 1.
};

enum class Stroke
{
    Kick,
    Brush,  ///< The accent of two and four.
    Swirl,  ///< The brush drawn over the skin for a beat.
    Ride,
    HiHat,
};

struct Hit
{
    double beat = 0;
    Stroke stroke = Stroke::Ride;
    double accent = 1;
};

struct Score
{
    std::vector<Note> melody;
    std::vector<Note> chords;
    std::vector<Note> bass;
    std::vector<Hit> drums;
};

Score score();

}  // namespace practice
