#include "vocalmixes/Mix.h"

#include "practicetrack/Room.h"
#include "wave/WavFile.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <system_error>
#include <utility>

namespace vocalmixes {

namespace {

constexpr double kPeak = 0.9;
constexpr double kRoom = 0.06;  // this part of the voice's energy
constexpr double kFaintestOfVoice = 1e-4;

double square(float value)
{
    return static_cast<double>(value) * value;
}

double energy(const StereoSound& sound, const std::vector<bool>& chosen)
{
    double sum = 0;
    for (std::size_t i = 0; i < sound.frames(); ++i) {
        if (chosen[i]) {
            sum += square(sound.left[i]) + square(sound.right[i]);
        }
    }
    return sum;
}

void scale(StereoSound& sound, double gain)
{
    for (std::vector<float>* channel : {&sound.left, &sound.right}) {
        for (float& sample : *channel) {
            sample = static_cast<float>(sample * gain);
        }
    }
}

void add(StereoSound& sum, const StereoSound& more)
{
    std::transform(sum.left.begin(), sum.left.end(), more.left.begin(), sum.left.begin(), std::plus<>());
    std::transform(sum.right.begin(), sum.right.end(), more.right.begin(), sum.right.begin(), std::plus<>());
}

double peak(const StereoSound& sound)
{
    float most = 0;
    for (std::size_t i = 0; i < sound.frames(); ++i) {
        most = std::max({most, std::abs(sound.left[i]), std::abs(sound.right[i])});
    }
    return most;
}

// The stretch of the recipe, with silence where the sound has come to its end.
std::optional<StereoSound> readStretch(const std::filesystem::path& path, const Recipe& recipe)
{
    std::optional<StereoSound> whole = readWav(path);
    if (!whole) {
        return std::nullopt;
    }
    StereoSound stretch = stretchOf(*whole, recipe.from, recipe.from + recipe.seconds);
    const auto frames = static_cast<std::size_t>(std::lround(recipe.seconds * stretch.rate));
    stretch.left.resize(frames);
    stretch.right.resize(frames);
    return stretch;
}

// A room that answers from everywhere, whatever place the voice is given.
StereoSound inRoom(const StereoSound& placed, const StereoSound& dry)
{
    const std::vector<bool> all(placed.frames(), true);
    StereoSound answer = practice::roomOf(dry);
    answer.left.resize(placed.frames());
    answer.right.resize(placed.frames());
    scale(answer, std::sqrt(kRoom * energy(placed, all) / energy(answer, all)));
    add(answer, placed);
    return answer;
}

}  // namespace

std::vector<bool> soundingFrames(const StereoSound& sound)
{
    const auto block = static_cast<std::size_t>(sound.rate / 20);
    std::vector<double> energies(sound.frames() / block + 1);
    for (std::size_t i = 0; i < sound.frames(); ++i) {
        energies[i / block] += square(sound.left[i]) + square(sound.right[i]);
    }
    const double least = kFaintestOfVoice * *std::max_element(energies.begin(), energies.end());
    std::vector<bool> sounds(sound.frames());
    for (std::size_t i = 0; i < sound.frames(); ++i) {
        sounds[i] = energies[i / block] > least;
    }
    return sounds;
}

std::optional<Mix> mixOf(const std::filesystem::path& stems, const Recipe& recipe)
{
    const std::filesystem::path song = stems / recipe.song;
    std::optional<StereoSound> voice = readStretch(song / "voices" / (recipe.voice + ".wav"), recipe);
    std::error_code missing;
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(song / "instruments", missing)) {
        files.push_back(entry.path());
    }
    if (!voice || files.empty()) {
        return std::nullopt;
    }
    std::sort(files.begin(), files.end());

    Mix mix;
    for (const std::filesystem::path& file : files) {
        std::optional<StereoSound> instrument = readStretch(file, recipe);
        if (!instrument || instrument->rate != voice->rate || instrument->frames() != voice->frames()) {
            return std::nullopt;
        }
        mix.instruments.push_back({file.stem().string(), *std::move(instrument)});
    }

    const double turn = (recipe.pan + 100) / 200.0 * std::numbers::pi / 2;
    mix.voice = *voice;
    for (std::size_t i = 0; i < voice->frames(); ++i) {
        mix.voice.left[i] = static_cast<float>(voice->left[i] * std::cos(turn));
        mix.voice.right[i] = static_cast<float>(voice->right[i] * std::sin(turn));
    }
    if (recipe.room) {
        mix.voice = inRoom(mix.voice, *voice);
    }

    mix.accompaniment = mix.instruments.front().sound;
    for (std::size_t i = 1; i < mix.instruments.size(); ++i) {
        add(mix.accompaniment, mix.instruments[i].sound);
    }
    const std::vector<bool> sounds = soundingFrames(mix.voice);
    scale(mix.voice, std::sqrt(energy(mix.accompaniment, sounds) / energy(mix.voice, sounds)));
    mix.sum = mix.accompaniment;
    add(mix.sum, mix.voice);

    const double gain = kPeak / peak(mix.sum);
    for (StereoSound* sound : {&mix.accompaniment, &mix.voice, &mix.sum}) {
        scale(*sound, gain);
    }
    for (Part& part : mix.instruments) {
        scale(part.sound, gain);
    }
    return mix;
}

}  // namespace vocalmixes
