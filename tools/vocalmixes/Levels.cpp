#include "vocalmixes/Levels.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <utility>

namespace vocalmixes {

namespace {

// The two channels, one behind the other, where the voice sounds.
std::vector<double> chosenOf(const StereoSound& sound, const std::vector<bool>& chosen)
{
    std::vector<double> samples;
    samples.reserve(2 * sound.frames());
    for (const std::vector<float>* channel : {&sound.left, &sound.right}) {
        for (std::size_t i = 0; i < channel->size(); ++i) {
            if (chosen[i]) {
                samples.push_back((*channel)[i]);
            }
        }
    }
    return samples;
}

double product(const std::vector<double>& a, const std::vector<double>& b)
{
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
}

// Each row is an equation, its last element the right side. Empty where they have no single solution.
std::vector<double> solved(std::vector<std::vector<double>> rows)
{
    const std::size_t count = rows.size();
    for (std::size_t column = 0; column < count; ++column) {
        const auto first = rows.begin() + static_cast<std::ptrdiff_t>(column);
        const double whole = (*first)[column];
        std::iter_swap(first, std::max_element(first, rows.end(), [column](const auto& a, const auto& b) {
                           return std::abs(a[column]) < std::abs(b[column]);
                       }));
        const double pivot = rows[column][column];
        if (std::abs(pivot) <= 1e-9 * std::abs(whole) || pivot == 0) {
            return {};
        }
        for (std::size_t row = 0; row < count; ++row) {
            const double factor = row == column ? 0 : rows[row][column] / pivot;
            for (std::size_t i = column; factor != 0 && i <= count; ++i) {
                rows[row][i] -= factor * rows[column][i];
            }
        }
    }
    std::vector<double> solution(count);
    for (std::size_t i = 0; i < count; ++i) {
        solution[i] = rows[i][count] / rows[i][i];
    }
    return solution;
}

double decibelsOfGain(double gain)
{
    return 20 * std::log10(std::abs(gain));
}

}  // namespace

std::optional<Levels> levelsIn(const StereoSound& heard, const Mix& mix)
{
    const std::vector<bool> sounds = soundingFrames(mix.voice);
    std::vector<std::vector<double>> parts;
    for (const Part& part : mix.instruments) {
        parts.push_back(chosenOf(part.sound, sounds));
    }
    parts.push_back(chosenOf(mix.voice, sounds));
    const std::vector<double> whole = chosenOf(heard, sounds);

    std::vector<std::vector<double>> rows(parts.size(), std::vector<double>(parts.size() + 1));
    for (std::size_t row = 0; row < parts.size(); ++row) {
        for (std::size_t column = 0; column <= row; ++column) {
            rows[row][column] = rows[column][row] = product(parts[row], parts[column]);
        }
        rows[row].back() = product(parts[row], whole);
    }
    const std::vector<double> gains = solved(std::move(rows));
    if (gains.empty()) {
        return std::nullopt;
    }
    Levels levels;
    std::transform(gains.begin(), gains.end() - 1, std::back_inserter(levels.instruments), decibelsOfGain);
    levels.voice = decibelsOfGain(gains.back());
    return levels;
}

double placeOf(const StereoSound& sound)
{
    const auto energy = [](const std::vector<float>& channel) {
        return std::inner_product(channel.begin(), channel.end(), channel.begin(), 0.0);
    };
    const double turn = std::atan2(std::sqrt(energy(sound.right)), std::sqrt(energy(sound.left)));
    return turn / (std::numbers::pi / 2) * 200 - 100;
}

}  // namespace vocalmixes
