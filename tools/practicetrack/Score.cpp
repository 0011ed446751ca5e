#include "practicetrack/Score.h"

#include <array>
#include <cmath>

namespace practice {

namespace {

// Where swing puts the second eighth of a beat.
constexpr double kOff = 2.0 / 3;

using Chord = std::array<int, 4>;

constexpr Chord kF6{57, 60, 62, 67};
constexpr Chord kFmaj7{57, 60, 64, 67};
constexpr Chord kD7{54, 60, 63, 69};
constexpr Chord kGm9{53, 58, 62, 69};
constexpr Chord kC13{52, 58, 62, 69};
constexpr Chord kAm9{55, 60, 64, 71};
constexpr Chord kBbmaj9{57, 60, 62, 65};
constexpr Chord kBbm6{55, 58, 61, 65};
constexpr Chord kDm9{53, 57, 60, 64};

// The harmony: a bar is one chord or two, each for half of it.
constexpr std::array<std::array<Chord, 2>, kBars> kHarmony{{
    {kFmaj7, kFmaj7},
    {kD7, kD7},
    {kGm9, kGm9},
    {kC13, kC13},  // statement
    {kAm9, kAm9},
    {kD7, kD7},
    {kGm9, kC13},
    {kF6, kF6},  // and its answer
    {kBbmaj9, kBbmaj9},
    {kBbm6, kBbm6},
    {kAm9, kAm9},
    {kD7, kD7},  // away from home
    {kGm9, kGm9},
    {kC13, kC13},
    {kF6, kDm9},
    {kGm9, kC13},  // and back
}};

// One note a beat, each bar's last leading into the next bar's first.
constexpr std::array<std::array<int, kBeatsPerBar>, kBars> kWalkingBass{{
    {41, 43, 45, 39},
    {38, 42, 45, 44},
    {43, 46, 50, 49},
    {48, 46, 43, 44},
    {45, 43, 40, 39},
    {38, 42, 45, 42},
    {43, 46, 36, 40},
    {41, 36, 41, 45},
    {46, 50, 48, 47},
    {46, 49, 43, 46},
    {45, 48, 52, 51},
    {50, 48, 42, 44},
    {43, 50, 46, 37},
    {36, 40, 43, 40},
    {41, 45, 38, 42},
    {43, 46, 48, 40},
}};

struct MelodyNote
{
    int bar;
    double beat;
    int pitch;
    double beats;
};

constexpr std::array kMelody{
    MelodyNote{0, 0, 69, .6},         MelodyNote{0, kOff, 72, .3},       MelodyNote{0, 1, 76, 1.5},
    MelodyNote{0, 2 + kOff, 74, .3},  MelodyNote{0, 3, 72, .6},          MelodyNote{0, 3 + kOff, 69, .3},
    MelodyNote{1, 0, 66, 1.4},        MelodyNote{1, 1 + kOff, 69, .3},   MelodyNote{1, 2, 72, .9},
    MelodyNote{1, 3, 75, .6},         MelodyNote{1, 3 + kOff, 74, .3},   MelodyNote{2, 0, 70, 1.8},
    MelodyNote{2, 2, 74, .6},         MelodyNote{2, 2 + kOff, 77, .9},   MelodyNote{2, 3 + kOff, 79, 1.2},
    MelodyNote{3, 1, 76, .6},         MelodyNote{3, 1 + kOff, 74, .3},   MelodyNote{3, 2, 70, .9},
    MelodyNote{3, 3, 67, .6},         MelodyNote{3, 3 + kOff, 69, .3},   MelodyNote{4, 0, 72, .6},
    MelodyNote{4, kOff, 76, .3},      MelodyNote{4, 1, 79, 1.5},         MelodyNote{4, 2 + kOff, 76, .3},
    MelodyNote{4, 3, 74, .6},         MelodyNote{4, 3 + kOff, 72, .3},   MelodyNote{5, 0, 69, 1.4},
    MelodyNote{5, 1 + kOff, 74, .3},  MelodyNote{5, 2, 75, .9},          MelodyNote{5, 3, 74, .6},
    MelodyNote{5, 3 + kOff, 72, .3},  MelodyNote{6, 0, 70, .6},          MelodyNote{6, kOff, 74, .3},
    MelodyNote{6, 1 + kOff, 77, .3},  MelodyNote{6, 2, 76, .9},          MelodyNote{6, 3, 72, .6},
    MelodyNote{6, 3 + kOff, 67, .3},  MelodyNote{7, 0, 69, 1.4},         MelodyNote{7, 1 + kOff, 72, .3},
    MelodyNote{7, 2, 77, 1.8},        MelodyNote{8, 0, 74, 1.6},         MelodyNote{8, 1 + kOff, 77, .3},
    MelodyNote{8, 2, 81, 1.6},        MelodyNote{8, 3 + kOff, 79, .3},   MelodyNote{9, 0, 77, .9},
    MelodyNote{9, 1, 73, 1.6},        MelodyNote{9, 2 + kOff, 79, .3},   MelodyNote{9, 3, 77, .6},
    MelodyNote{9, 3 + kOff, 73, .3},  MelodyNote{10, 0, 76, 1.6},        MelodyNote{10, 1 + kOff, 72, .3},
    MelodyNote{10, 2, 69, .9},        MelodyNote{10, 3, 72, .6},         MelodyNote{10, 3 + kOff, 76, .3},
    MelodyNote{11, 0, 75, .6},        MelodyNote{11, kOff, 74, .3},      MelodyNote{11, 1, 72, .6},
    MelodyNote{11, 1 + kOff, 69, .3}, MelodyNote{11, 2, 66, .9},         MelodyNote{11, 3, 69, .6},
    MelodyNote{11, 3 + kOff, 72, .3}, MelodyNote{12, 0, 70, .6},         MelodyNote{12, kOff, 74, .3},
    MelodyNote{12, 1, 77, .6},        MelodyNote{12, 1 + kOff, 81, 2.2}, MelodyNote{13, 0, 79, .9},
    MelodyNote{13, 1, 76, .6},        MelodyNote{13, 1 + kOff, 74, .3},  MelodyNote{13, 2, 70, .6},
    MelodyNote{13, 2 + kOff, 69, .3}, MelodyNote{13, 3, 67, .9},         MelodyNote{14, 0, 69, .6},
    MelodyNote{14, kOff, 72, .3},     MelodyNote{14, 1, 77, .9},         MelodyNote{14, 2, 74, .6},
    MelodyNote{14, 2 + kOff, 72, .3}, MelodyNote{14, 3, 69, .6},         MelodyNote{14, 3 + kOff, 65, .3},
    MelodyNote{15, 0, 67, 1.4},       MelodyNote{15, 1 + kOff, 70, .3},  MelodyNote{15, 2, 74, .6},
    MelodyNote{15, 2 + kOff, 76, .9}, MelodyNote{15, 3 + kOff, 77, 4},
};

void addChord(std::vector<Note>& chords, double beat, const Chord& chord, double beats, double accent)
{
    for (const int pitch : chord) {
        chords.push_back({beat, pitch, beats, accent});
    }
}

// On the beat and off it by turns, so that two bars are never alike.
void addComping(std::vector<Note>& chords, int bar)
{
    const double begin = bar * kBeatsPerBar;
    const auto& [first, second] = kHarmony[static_cast<std::size_t>(bar)];
    if (bar % 2 == 0) {
        addChord(chords, begin, first, 1.2, .8);
        addChord(chords, begin + 1 + kOff, first == second ? first : second, 1.1, .6);
    } else {
        addChord(chords, begin + kOff, first, .5, .6);
        addChord(chords, begin + 2, second, 1.3, .75);
    }
}

void addDrums(std::vector<Hit>& drums, int bar)
{
    for (int beatOfBar = 0; beatOfBar < kBeatsPerBar; ++beatOfBar) {
        const double beat = bar * kBeatsPerBar + beatOfBar;
        const bool backBeat = beatOfBar % 2 == 1;
        drums.push_back({beat, Stroke::Ride, backBeat ? .9 : .7});
        drums.push_back({beat, Stroke::Swirl, backBeat ? .6 : .8});
        if (backBeat) {
            drums.push_back({beat + kOff, Stroke::Ride, .5});
            drums.push_back({beat, Stroke::HiHat, .8});
            drums.push_back({beat, Stroke::Brush, 1});
        } else {
            drums.push_back({beat, Stroke::Kick, beatOfBar == 0 ? 1.0 : .7});
        }
    }
    if (bar % 4 == 3) {  // a fill into the next line
        drums.push_back({bar * kBeatsPerBar + 2 + kOff, Stroke::Brush, .5});
        drums.push_back({bar * kBeatsPerBar + 3 + kOff, Stroke::Brush, .7});
    }
}

}  // namespace

Score score()
{
    Score score;
    for (const MelodyNote& note : kMelody) {
        const bool onTheBeat = std::floor(note.beat) == note.beat;
        score.melody.push_back(
            {note.bar * kBeatsPerBar + note.beat, note.pitch, note.beats, onTheBeat ? 1.0 : .75});
    }
    for (int bar = 0; bar < kBars; ++bar) {
        for (int beat = 0; beat < kBeatsPerBar; ++beat) {
            const int pitch = kWalkingBass[static_cast<std::size_t>(bar)][static_cast<std::size_t>(beat)];
            score.bass.push_back({double(bar * kBeatsPerBar + beat), pitch, .95, beat % 2 == 0 ? 1.0 : .85});
        }
        addComping(score.chords, bar);
        addDrums(score.drums, bar);
    }

    constexpr double last = kBars * kBeatsPerBar;
    addChord(score.chords, last, kF6, 4, .8);
    score.bass.push_back({last, 41, 4, 1});
    score.drums.push_back({last, Stroke::Kick, 1});
    score.drums.push_back({last, Stroke::Ride, 1});
    return score;
}

}  // namespace practice
