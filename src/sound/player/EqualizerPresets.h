#pragma once

namespace sound {

/// Built-in curves of an equalizer, by number: Club, Dance, Full Bass, Full Bass Treble, Full Treble, Laptop
/// Speakers, Large Hall, Live, Party, Pop, Reggae, Rock, Ska, Soft, Soft Rock, Techno.
///
/// Each lifts some of the sound and takes back some, so that the limiter has little to do: with bands an octave
/// wide no tone gets more than 6 dB louder and music as a whole no more than 2 dB.
constexpr int equalizerPresets = 16;

/// The gain, in decibels, that preset @p preset (0 to 15) gives to the band whose centre is @p frequency hertz. The
/// presets are made for bands at 80, 170, 310, 600, 1000, 3000, 6000, 12000, 14000 and 16000 Hz; elsewhere the
/// gain is what a straight line over octaves between them gives, and beyond the outer ones it is theirs.
float presetGain(int preset, float frequency);

}  // namespace sound
