#pragma once

#include "practicetrack/Score.h"

#include <vector>

/// The players. Each returns the sound of one note or stroke alone, from its attack until it has died away, at
/// about full scale for an accent of 1. The same call returns the same samples.
namespace practice {

using Samples = std::vector<float>;

/// A plucked string: noise that goes round a delay line of one period and loses its edge on the way.
Samples doubleBass(const Note& note, int rate);

/// Two pairs of sines that modulate each other: the bar of the piano's tone and the strike on it.
Samples electricPiano(const Note& note, int rate);

/// A bar's fundamental and its tuned overtones two and more octaves above, through a slowly turning fan.
Samples vibraphone(const Note& note, int rate);

Samples drum(const Hit& hit, int rate);

}  // namespace practice
