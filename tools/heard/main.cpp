#include "heard/Difference.h"
#include "heard/Gaps.h"
#include "heard/LoopPeriod.h"
#include "heard/Pitch.h"
#include "heard/Tempo.h"
#include "wave/WavFile.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr const char* kUsage =
    "Usage: heard ORIGINAL.wav HEARD.wav LOG\n"
    "\n"
    "Each line of the log names a stretch of what was heard and what to measure in it:\n"
    "    NAME FROM TO MEASURE...\n"
    "with seconds of the recording, and of the measures\n"
    "    tempo       its speed against the original\n"
    "    pitch       its tempo, and its pitch against the same part of the original, in cents, and where that is\n"
    "    period      after how many frames and milliseconds it repeats\n"
    "    difference  the largest difference of a sample from the original, 0 for a copy\n"
    "    gaps        how often it breaks off\n"
    "    level       its peak, 1 for full scale\n"
    "Each is answered by a line of NAME and key=value pairs; a measure that finds nothing is left out.\n";

struct Entry
{
    std::string name;
    double from = 0;
    double to = 0;
    std::vector<std::string> measures;
};

std::vector<Entry> entriesOf(std::istream& log)
{
    std::vector<Entry> entries;
    for (std::string line; std::getline(log, line);) {
        std::istringstream words(line);
        Entry entry;
        if (words >> entry.name >> entry.from >> entry.to) {
            for (std::string measure; words >> measure;) {
                entry.measures.push_back(measure);
            }
            entries.push_back(entry);
        }
    }
    return entries;
}

double peakOf(const StereoSound& sound)
{
    float peak = 0;
    for (std::size_t i = 0; i < sound.frames(); ++i) {
        peak = std::max({peak, std::abs(sound.left[i]), std::abs(sound.right[i])});
    }
    return peak;
}

void printTempo(const heard::TempoMatch& tempo)
{
    std::cout << std::setprecision(4) << " tempo=" << tempo.ratio << " tempo_likeness=" << tempo.likeness;
}

void printPitch(const StereoSound& stretch, const StereoSound& original, const heard::TempoMatch& tempo)
{
    const heard::PitchMatch match = heard::pitchOf(stretch, original, tempo);
    std::cout << std::setprecision(1) << " cents=" << match.cents << std::setprecision(4)
              << " from=" << match.originalSecond << " pitch_likeness=" << match.likeness;
}

void printPeriod(const StereoSound& stretch)
{
    if (const std::optional<heard::LoopPeriod> period = heard::loopPeriodOf(stretch)) {
        std::cout << std::setprecision(2) << " period_frames=" << period->frames << std::setprecision(4)
                  << " period_ms=" << period->frames * 1000 / stretch.rate
                  << " period_likeness=" << period->likeness << " by=" << (period->byWaves ? "waves" : "notes");
    }
}

bool printMeasure(const std::string& measure, const StereoSound& stretch, const StereoSound& original)
{
    if (measure == "tempo" || measure == "pitch") {
        if (const std::optional<heard::TempoMatch> tempo = heard::tempoOf(stretch, original)) {
            printTempo(*tempo);
            if (measure == "pitch") {
                printPitch(stretch, original, *tempo);
            }
        }
    } else if (measure == "period") {
        printPeriod(stretch);
    } else if (measure == "difference") {
        const heard::Difference difference = heard::differenceOf(stretch, original);
        std::cout << std::setprecision(9) << " difference=" << difference.largest << std::setprecision(5)
                  << " from=" << difference.originalSecond;
    } else if (measure == "gaps") {
        std::cout << " gaps=" << heard::gapsIn(stretch);
    } else if (measure == "level") {
        std::cout << std::setprecision(5) << " peak=" << peakOf(stretch);
    } else {
        return false;
    }
    return true;
}

}  // namespace

/// Measures what a player made of a recording, from what came out of the speakers.
int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << kUsage;
        return 2;
    }
    const std::optional<StereoSound> original = readWav(argv[1]);
    const std::optional<StereoSound> heardSound = readWav(argv[2]);
    std::ifstream log(argv[3]);
    if (!original || !heardSound || !log) {
        std::cerr << "heard: cannot read " << (!original ? argv[1] : !heardSound ? argv[2] : argv[3]) << '\n';
        return 1;
    }

    std::cout << std::fixed;
    for (const Entry& entry : entriesOf(log)) {
        const StereoSound stretch = stretchOf(*heardSound, entry.from, entry.to);
        std::cout << entry.name;
        for (const std::string& measure : entry.measures) {
            if (!printMeasure(measure, stretch, *original)) {
                std::cerr << "heard: no measure is called " << measure << '\n';
                return 2;
            }
        }
        std::cout << '\n';
    }
    return 0;
}
