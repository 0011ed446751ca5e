#include "practicetrack/Instruments.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace practice {

namespace {

constexpr double kTurn = 2 * std::numbers::pi;

double frequencyOf(int pitch)
{
    return 440.0 * std::exp2((pitch - 69) / 12.0);
}

std::size_t framesIn(double seconds, int rate)
{
    return static_cast<std::size_t>(seconds * rate);
}

// Falls to a thousandth, the end of what is heard, in this time.
double decay(double second, double deathSeconds)
{
    return std::pow(10.0, -3 * second / deathSeconds);
}

// Holds a note for its length and lets it go within the release.
double held(double second, double heldSeconds, double releaseSeconds)
{
    return second < heldSeconds ? 1.0 : std::max(0.0, 1 - (second - heldSeconds) / releaseSeconds);
}

double attack(double second, double attackSeconds)
{
    return std::min(1.0, second / attackSeconds);
}

// White noise from a linear congruential sequence: the same on every machine.
class Noise
{
public:
    explicit Noise(std::uint32_t seed)
        : state(seed * 2654435761U + 1)
    {
    }

    double next()
    {
        state = state * 1664525U + 1013904223U;
        return static_cast<double>(static_cast<std::int32_t>(state)) / 2147483648.0;
    }

private:
    std::uint32_t state;
};

// A first-order low-pass; what it takes away is the high-pass.
class Smoother
{
public:
    Smoother(double cornerHertz, int rate)
        : weight(1 - std::exp(-kTurn * cornerHertz / rate))
    {
    }

    double low(double sample) { return memory += weight * (sample - memory); }
    double high(double sample) { return sample - low(sample); }

private:
    double weight;
    double memory = 0;
};

Samples kick(double accent, int rate)
{
    Samples samples(framesIn(.35, rate));
    double phase = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double second = static_cast<double>(i) / rate;
        phase += (48 + 70 * decay(second, .12)) / rate;
        samples[i] =
            static_cast<float>(accent * attack(second, .002) * decay(second, .32) * std::sin(kTurn * phase));
    }
    return samples;
}

Samples brush(double accent, int rate)
{
    Samples samples(framesIn(.3, rate));
    Noise noise(3);
    Smoother top(7500, rate);
    Smoother bottom(900, rate);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double second = static_cast<double>(i) / rate;
        const double wires = bottom.high(top.low(noise.next())) * attack(second, .003) * decay(second, .28);
        const double skin = .35 * std::sin(kTurn * 195 * second) * attack(second, .002) * decay(second, .14);
        samples[i] = static_cast<float>(accent * (wires + skin));
    }
    return samples;
}

Samples swirl(double accent, int rate)
{
    Samples samples(framesIn(kSecondsPerBeat, rate));
    Noise noise(11);
    Smoother top(5200, rate);
    Smoother bottom(1800, rate);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double part = static_cast<double>(i) / static_cast<double>(samples.size());
        const double stroke = std::sin(std::numbers::pi * part);
        samples[i] = static_cast<float>(accent * .3 * stroke * stroke * bottom.high(top.low(noise.next())));
    }
    return samples;
}

// Metal: partials that stand in no simple ratio, and a hiss above them.
Samples cymbal(double accent, double deathSeconds, double hiss, int rate)
{
    constexpr std::array kPartials{2937.0, 3511.0, 4243.0, 4871.0, 5659.0, 6637.0, 7789.0, 8923.0, 10301.0};
    Samples samples(framesIn(deathSeconds, rate));
    Noise noise(7);
    Smoother bottom(6500, rate);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double second = static_cast<double>(i) / rate;
        double ring = 0;
        for (const double partial : kPartials) {
            ring += std::sin(kTurn * partial * second + partial);
        }
        const double ping = ring / kPartials.size() * decay(second, deathSeconds);
        const double spray = hiss * bottom.high(noise.next()) * decay(second, deathSeconds / 2);
        samples[i] = static_cast<float>(accent * attack(second, .001) * (ping + spray));
    }
    return samples;
}

}  // namespace

Samples doubleBass(const Note& note, int rate)
{
    const double heldSeconds = note.beats * kSecondsPerBeat;
    constexpr double kRelease = .09;
    constexpr double kStringDeath = 3.2;
    constexpr double kEdge = .5;  // how much of each round the string averages with the one before
    Samples samples(framesIn(heldSeconds + kRelease, rate));

    const double period = rate / frequencyOf(note.pitch);
    const double delay = period - kEdge;  // the averaging itself delays by its share of a frame
    const auto whole = static_cast<std::size_t>(delay);
    const double part = delay - static_cast<double>(whole);
    const double keep = decay(period / rate, kStringDeath);

    // The finger pulls the string to one side and lets go at a fifth of its length.
    std::vector<double> string(whole + 1);
    Noise noise(static_cast<std::uint32_t>(note.pitch));
    Smoother flesh(1100, rate);
    for (std::size_t i = 0; i < string.size(); ++i) {
        const double place = static_cast<double>(i) / static_cast<double>(string.size());
        const double pulled = place < .2 ? place / .2 : (1 - place) / .8;
        string[i] = (pulled - .5) + .5 * flesh.low(noise.next());
    }

    Smoother wood(1700, rate);
    std::size_t head = 0;
    double last = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double second = static_cast<double>(i) / rate;
        const double oldest = string[(head + 1) % string.size()];
        const double older = string[head];
        const double now = oldest + part * (older - oldest);
        string[head] = keep * ((1 - kEdge) * now + kEdge * last);
        last = now;
        head = (head + 1) % string.size();
        const double finger = held(second, heldSeconds, kRelease) * attack(second, .003);
        samples[i] = static_cast<float>(1.6 * note.accent * finger * wood.low(now));
    }
    return samples;
}

Samples electricPiano(const Note& note, int rate)
{
    const double heldSeconds = note.beats * kSecondsPerBeat;
    constexpr double kRelease = .16;
    Samples samples(framesIn(heldSeconds + kRelease, rate));
    const double frequency = frequencyOf(note.pitch);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double second = static_cast<double>(i) / rate;
        const double turn = kTurn * frequency * second;
        const double growl = (.5 + 1.1 * note.accent) * decay(second, 1.6);
        const double bar = std::sin(turn + growl * std::sin(turn));
        const double strike = .22 * note.accent * decay(second, .35) * std::sin(turn + .6 * std::sin(14 * turn));
        const double shape = attack(second, .003) * decay(second, 4.5) * held(second, heldSeconds, kRelease);
        samples[i] = static_cast<float>(note.accent * shape * (bar + strike));
    }
    return samples;
}

Samples vibraphone(const Note& note, int rate)
{
    const double heldSeconds = note.beats * kSecondsPerBeat;
    constexpr double kRelease = .35;
    constexpr double kFanHertz = 4.6;
    Samples samples(framesIn(heldSeconds + kRelease, rate));
    const double frequency = frequencyOf(note.pitch);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double second = static_cast<double>(i) / rate;
        const double turn = kTurn * frequency * second;
        const double bar = decay(second, 4) * std::sin(turn) + .28 * decay(second, 1.3) * std::sin(3.98 * turn) +
                           .16 * decay(second, .25) * std::sin(9.2 * turn);
        const double fan = 1 - .16 * (1 - std::cos(kTurn * kFanHertz * second));
        samples[i] = static_cast<float>(note.accent * attack(second, .0015) * fan *
                                        held(second, heldSeconds, kRelease) * bar);
    }
    return samples;
}

Samples drum(const Hit& hit, int rate)
{
    switch (hit.stroke) {
    case Stroke::Kick:
        return kick(hit.accent, rate);
    case Stroke::Brush:
        return brush(hit.accent, rate);
    case Stroke::Swirl:
        return swirl(hit.accent, rate);
    case Stroke::Ride:
        return cymbal(hit.accent, 1.1, .35, rate);
    case Stroke::HiHat:
        return cymbal(hit.accent, .12, .9, rate);
    }
    return {};
}

}  // namespace practice
