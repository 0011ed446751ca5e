#include "heard/Fourier.h"
#include "vocalmixes/IdealMask.h"
#include "vocalmixes/Levels.h"
#include "vocalmixes/Measures.h"
#include "vocalmixes/Mix.h"
#include "wave/WavFile.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr const char* kUsage =
    "Usage: vocalmix make STEMS MIX TARGET.wav\n"
    "       vocalmix ideal STEMS MIX LOW HIGH TARGET.wav\n"
    "       vocalmix judge STEMS MIX LOW HIGH RESULT.wav...\n"
    "\n"
    "STEMS is the folder that stems.py has made, and MIX stands for\n"
    "    SONG VOICE PAN dry|room FROM SECONDS\n"
    "make writes what a remover of voices gets, and ideal what one would make of it that knows the parts.\n"
    "judge prints a line of key=value pairs for what each remover of voices has made of the mix. A result that is "
    "late\n"
    "is judged as if it were not; delay says by how many frames.\n";

constexpr std::size_t kLatest = 8192;
constexpr std::size_t kCompared = 131072;

vocalmixes::Recipe recipeOf(const std::vector<std::string>& words)
{
    return {words[0],
            words[1],
            std::atoi(words[2].c_str()),
            words[3] == "room",
            std::atof(words[4].c_str()),
            std::atof(words[5].c_str())};
}

std::vector<double> stretch(const std::vector<float>& channel, std::size_t from, std::size_t count)
{
    std::vector<double> samples(count);
    for (std::size_t i = 0; i < count && from + i < channel.size(); ++i) {
        samples[i] = channel[from + i];
    }
    return samples;
}

// Which way round the result is does not matter for it.
std::size_t delayOf(const StereoSound& result, const StereoSound& original)
{
    const std::size_t from = original.frames() > kCompared ? (original.frames() - kCompared) / 2 : 0;
    const std::vector<double> likeness = heard::Correlator(stretch(result.left, from, kCompared + kLatest))
                                             .with(stretch(original.left, from, kCompared));
    const auto most = std::max_element(likeness.begin(), likeness.begin() + kLatest,
                                       [](double a, double b) { return std::abs(a) < std::abs(b); });
    // Music is much the same a frame later.
    return std::abs(likeness.front()) > 0.9 * std::abs(*most) ? 0
                                                              : static_cast<std::size_t>(most - likeness.begin());
}

StereoSound inTime(const StereoSound& late, std::size_t delay, std::size_t frames)
{
    StereoSound sound{late.rate, std::vector<float>(frames), std::vector<float>(frames)};
    for (std::size_t i = 0; i < frames && delay + i < late.frames(); ++i) {
        sound.left[i] = late.left[delay + i];
        sound.right[i] = late.right[delay + i];
    }
    return sound;
}

void printJudgement(const vocalmixes::Mix& mix, const StereoSound& late, double low, double high)
{
    const std::size_t delay = delayOf(late, mix.sum);
    const StereoSound result = inTime(late, delay, mix.sum.frames());
    const double before = vocalmixes::signalToDistortion(mix.accompaniment, mix.sum);
    const double after = vocalmixes::signalToDistortion(mix.accompaniment, result);
    const vocalmixes::Null null = vocalmixes::nullOutside(mix.sum, result, low, high);
    std::cout << "sdr=" << after << " improvement=" << after - before
              << " correlation=" << vocalmixes::channelCorrelation(result)
              << " wanted_correlation=" << vocalmixes::channelCorrelation(mix.accompaniment)
              << " null_there=" << null.ofThere << " null_sound=" << null.ofSound << " delay=" << delay;
    if (const auto levels = vocalmixes::levelsIn(result, mix)) {
        std::cout << " voice=" << levels->voice;
        for (std::size_t i = 0; i < mix.instruments.size(); ++i) {
            std::cout << " level:" << mix.instruments[i].name << ":"
                      << std::lround(vocalmixes::placeOf(mix.instruments[i].sound)) << "="
                      << levels->instruments[i];
        }
    }
    std::cout << "\n";
}

}  // namespace

int main(int argc, char* argv[])
{
    const std::vector<std::string> words(argv + 1, argv + argc);
    const bool makes = words.size() == 9 && words[0] == "make";
    const bool idealizes = words.size() == 11 && words[0] == "ideal";
    const bool judges = words.size() >= 11 && words[0] == "judge";
    if (!makes && !idealizes && !judges) {
        std::cerr << kUsage;
        return EXIT_FAILURE;
    }
    const auto mix = vocalmixes::mixOf(words[1], recipeOf({words.begin() + 2, words.begin() + 8}));
    if (!mix) {
        std::cerr << "There is no such mix in " << words[1] << "\n";
        return EXIT_FAILURE;
    }
    if (makes) {
        return writeFloatWav(words[8], mix->sum) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    const double low = std::atof(words[8].c_str());
    const double high = std::atof(words[9].c_str());
    if (idealizes) {
        return writeFloatWav(words[10], vocalmixes::idealResult(*mix, low, high)) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    for (std::size_t i = 10; i < words.size(); ++i) {
        const auto result = readWav(words[i]);
        if (!result) {
            std::cerr << words[i] << " cannot be read\n";
            return EXIT_FAILURE;
        }
        printJudgement(*mix, *result, low, high);
    }
    return EXIT_SUCCESS;
}
