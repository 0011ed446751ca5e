#include "engines/EngineSet.h"
#include "engines/VocalRemoverEngine.h"
#include "sound/engines/SoundEngines.h"
#include "vocalmixes/Levels.h"
#include "vocalmixes/Measures.h"
#include "vocalmixes/Mix.h"
#include "wave/WavFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QTemporaryDir>
#include <array>
#include <cmath>
#include <cstdlib>
#include <ostream>

/// What the vocal remover makes of songs with drums and without, sung and spoken over.
namespace {

using vocalmixes::Mix;

constexpr int kLowCutOff = 200;
constexpr int kHighCutOff = 8000;

constexpr double kLeastInTheCentre = 7;
constexpr double kLeastElsewhere = 6;
constexpr double kMostChangeOfSides = 1;
constexpr double kMostChangeOfCorrelation = .2;
constexpr double kNull = -80;

// An instrument of a side stands at least so far from the centre, and so far from the voice: what stands at the
// voice's own side is partly in its place.
constexpr double kSide = 50;
constexpr double kApart = 60;

constexpr double kSeconds = 12;

struct Case
{
    const char* name;
    const char* song;
    const char* voice;
    int pan;
};

constexpr std::array kCases{
    Case{"SingerInTheCentreOfABallad", "ballad", "singer", 0},
    Case{"SingerFarLeftInAFolkSong", "folk-song", "singer", -60},
    Case{"SingerFarLeftInABallad", "ballad", "singer", -60},
    Case{"SingerLeftInABallad", "ballad", "singer", -30},
    Case{"SingerRightInABallad", "ballad", "singer", 30},
    Case{"SingerFarRightInABallad", "ballad", "singer", 60},
    Case{"SpeakerInTheCentreOfABallad", "ballad", "speaker", 0},
    Case{"SingerInTheCentreOfAFolkSong", "folk-song", "singer", 0},
    Case{"SingerLeftInAFolkSong", "folk-song", "singer", -30},
    Case{"SingerRightInAFolkSong", "folk-song", "singer", 30},
    Case{"SingerFarRightInAFolkSong", "folk-song", "singer", 60},
    Case{"SpeakerInTheCentreOfAFolkSong", "folk-song", "speaker", 0},
};

void PrintTo(const Case& which, std::ostream* stream)
{
    *stream << which.song << ", " << which.voice << " at " << which.pan;
}

StereoSound withoutVoice(const StereoSound& sound, int pan)
{
    const QTemporaryDir folder;
    const QString input = folder.filePath("in.wav");
    const QString output = folder.filePath("out.wav");
    const auto engines = sound::makeSoundEngines({}, {});
    const auto remover = engines->createVocalRemoverExtended();
    if (!remover || !writeFloatWav(input.toStdString(), sound))
        return {};
    remover->LowCutOff(kLowCutOff);
    remover->HighCutOff(kHighCutOff);
    remover->InputFile(input);
    remover->OutputFile(output);
    remover->VocalPan(pan);
    if (remover->RemoveVocals() != VocalRemoval::Done)
        return {};
    return readWav(output.toStdString()).value_or(StereoSound{});
}

void expectSidesKept(const StereoSound& result, const Mix& mix, double pan)
{
    const auto levels = vocalmixes::levelsIn(result, mix);
    ASSERT_TRUE(levels.has_value());
    int sides = 0;
    for (std::size_t i = 0; i < mix.instruments.size(); ++i) {
        const double place = vocalmixes::placeOf(mix.instruments[i].sound);
        if (std::abs(place) < kSide || std::abs(place - pan) < kApart)
            continue;
        EXPECT_NEAR(levels->instruments[i], 0, kMostChangeOfSides) << mix.instruments[i].name;
        ++sides;
    }
    EXPECT_GT(sides, 0);
}

class VocalRemoverQuality : public ::testing::TestWithParam<Case>
{
};

TEST_P(VocalRemoverQuality, TheVoiceGoesAndTheMusicStays)
{
    const char* stems = std::getenv("LARKSPIN_VOCAL_STEMS");
    ASSERT_NE(stems, nullptr) << "is set by ctest";
    const auto& [name, song, voice, pan] = GetParam();
    const auto mix = vocalmixes::mixOf(stems, {song, voice, pan, false, 1, kSeconds});
    ASSERT_TRUE(mix.has_value()) << "no parts in " << stems;

    const StereoSound result = withoutVoice(mix->sum, pan);
    ASSERT_EQ(result.frames(), mix->sum.frames());
    EXPECT_EQ(result.rate, mix->sum.rate);

    const double before = vocalmixes::signalToDistortion(mix->accompaniment, mix->sum);
    const double after = vocalmixes::signalToDistortion(mix->accompaniment, result);
    EXPECT_GE(after - before, pan == 0 ? kLeastInTheCentre : kLeastElsewhere);
    EXPECT_NEAR(vocalmixes::channelCorrelation(result), vocalmixes::channelCorrelation(mix->accompaniment),
                kMostChangeOfCorrelation);
    EXPECT_LE(vocalmixes::nullOutside(mix->sum, result, kLowCutOff, kHighCutOff).ofThere, kNull);
    expectSidesKept(result, *mix, pan);
}

INSTANTIATE_TEST_SUITE_P(Mixes, VocalRemoverQuality, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<Case>& which) { return which.param.name; });

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
