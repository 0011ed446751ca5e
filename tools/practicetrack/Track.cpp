#include "practicetrack/Track.h"

#include "practicetrack/Instruments.h"
#include "practicetrack/Room.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace practice {

namespace {

// Where a player stands, -1 left to 1 right, how loud, and how much of the player the room gives back.
struct Place
{
    double side;
    double level;
    double room;
};

constexpr Place kBass{-.05, .42, .08};
constexpr Place kPiano{-.65, .1, .25};
constexpr Place kVibraphone{.5, .21, .35};
constexpr Place kKick{0, .3, .05};
constexpr Place kBrush{.1, .36, .2};
constexpr Place kSwirl{-.15, .34, .1};
constexpr Place kRide{.5, .15, .15};
constexpr Place kHiHat{-.45, .17, .15};

constexpr Place placeOf(Stroke stroke)
{
    switch (stroke) {
    case Stroke::Kick:
        return kKick;
    case Stroke::Brush:
        return kBrush;
    case Stroke::Swirl:
        return kSwirl;
    case Stroke::Ride:
        return kRide;
    case Stroke::HiHat:
        return kHiHat;
    }
    return {};
}

class Desk
{
public:
    explicit Desk(double seconds)
        : dry(silence(seconds))
        , toRoom(silence(seconds))
    {
    }

    void add(double beat, const Samples& samples, const Place& place)
    {
        const auto begin = static_cast<std::size_t>(std::lround(beat * kSecondsPerBeat * kRate));
        const double angle = (place.side + 1) * std::numbers::pi / 4;  // equal power from side to side
        const auto left = static_cast<float>(place.level * std::cos(angle));
        const auto right = static_cast<float>(place.level * std::sin(angle));
        const auto room = static_cast<float>(place.room);
        const std::size_t end = std::min(dry.frames(), begin + samples.size());
        for (std::size_t frame = begin; frame < end; ++frame) {
            const float sample = samples[frame - begin];
            dry.left[frame] += left * sample;
            dry.right[frame] += right * sample;
            toRoom.left[frame] += room * left * sample;
            toRoom.right[frame] += room * right * sample;
        }
    }

    StereoSound mix() const
    {
        const StereoSound wet = roomOf(toRoom);
        StereoSound sum = dry;
        for (std::size_t frame = 0; frame < sum.frames(); ++frame) {
            sum.left[frame] += wet.left[frame];
            sum.right[frame] += wet.right[frame];
        }
        return sum;
    }

private:
    static StereoSound silence(double seconds)
    {
        const auto frames = static_cast<std::size_t>(std::lround(seconds * kRate));
        return {kRate, std::vector<float>(frames), std::vector<float>(frames)};
    }

    StereoSound dry;
    StereoSound toRoom;
};

void fadeOutLastChord(StereoSound& sound)
{
    const auto fade = static_cast<std::size_t>(kRate / 2);
    for (std::size_t i = 0; i < fade; ++i) {
        const auto level = static_cast<float>(i) / static_cast<float>(fade);
        sound.left[sound.frames() - 1 - i] *= level;
        sound.right[sound.frames() - 1 - i] *= level;
    }
}

void bringPeakTo(StereoSound& sound, float wanted)
{
    float peak = 0;
    for (const auto* channel : {&sound.left, &sound.right}) {
        for (const float sample : *channel) {
            peak = std::max(peak, std::abs(sample));
        }
    }
    for (auto* channel : {&sound.left, &sound.right}) {
        for (float& sample : *channel) {
            sample *= wanted / peak;
        }
    }
}

}  // namespace

StereoSound track()
{
    const Score written = score();
    Desk desk(kBars * kBeatsPerBar * kSecondsPerBeat + kRingOutSeconds);
    for (const Note& note : written.bass) {
        desk.add(note.beat, doubleBass(note, kRate), kBass);
    }
    for (const Note& note : written.chords) {
        desk.add(note.beat, electricPiano(note, kRate), kPiano);
    }
    for (const Note& note : written.melody) {
        desk.add(note.beat, vibraphone(note, kRate), kVibraphone);
    }
    for (const Hit& hit : written.drums) {
        desk.add(hit.beat, drum(hit, kRate), placeOf(hit.stroke));
    }

    StereoSound mixed = desk.mix();
    fadeOutLastChord(mixed);
    bringPeakTo(mixed, .841F);
    return mixed;
}

}  // namespace practice
