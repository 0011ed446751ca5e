#include "sound/player/SoundPlayerEngineTest.h"

#include "sound/media/DecodedSound.h"

#include <gmock/gmock.h>
#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <limits>

using namespace sound;
using namespace sound::test;
using ::testing::ElementsAre;

namespace {

TEST_F(SoundPlayerEngineTest, EqualizerBandsAreKeptLowestFirst)
{
    init();
    engine.EnableEqualizer(true);
    EXPECT_EQ(engine.GetEqualizerBandCount(0), 0);
    engine.AddEqualizerBand(0, 1000, 12, 0);
    engine.AddEqualizerBand(0, 80, 12, 0);
    engine.AddEqualizerBand(0, 16000, 12, 0);
    EXPECT_EQ(engine.GetEqualizerBandCount(0), 3);
    EXPECT_EQ(engine.GetEqualizerBandFrequency(0, 0), 80);
    EXPECT_EQ(engine.GetEqualizerBandFrequency(0, 2), 16000);
    EXPECT_EQ(engine.GetEqualizerBandFrequency(0, 3), 0);
    engine.ChangeEqualizerBand(0, 1000, 7.5F);
    float frequency = 1000;
    float bandwidth = 0;
    float gain = 0;
    engine.GetEqualizerBand(0, frequency, bandwidth, gain);
    EXPECT_EQ(bandwidth, 12);
    EXPECT_EQ(gain, 7.5F);
    engine.ResetEqualizer(0);
    engine.GetEqualizerBand(0, frequency, bandwidth, gain);
    EXPECT_EQ(gain, 0);
}

TEST_F(SoundPlayerEngineTest, EachPlayerHasAnEqualizerOfItsOwn)
{
    init(2);
    engine.AddEqualizerBand(0, 1000, 12, 3);
    engine.AddEqualizerBand(1, 1000, 12, 4);
    std::vector<short> changed;
    QObject::connect(&engine, &PlayerEngine::EqualizerChanged, [&](short player) { changed.push_back(player); });
    engine.LoadEqualizerPreset(1, 9);
    QCoreApplication::processEvents();
    EXPECT_THAT(changed, ElementsAre(1));
    float frequency = 1000;
    float bandwidth = 0;
    float gain = 0;
    engine.GetEqualizerBand(0, frequency, bandwidth, gain);
    EXPECT_EQ(gain, 3);
    engine.GetEqualizerBand(1, frequency, bandwidth, gain);
    EXPECT_NE(gain, 4);
}

TEST_F(SoundPlayerEngineTest, ABandThatIsNotThereIsToldSo)
{
    init();
    engine.AddEqualizerBand(0, 1000, 12, 0);
    engine.ChangeEqualizerBand(0, 999, 3);
    EXPECT_EQ(engine.LastError(), code(EngineError::EqualizerBandNotAvailable));
}

class SoundPlayerEqualizerTest : public SoundPlayerEngineTest
{
protected:
    SoundPlayerEqualizerTest()
    {
        QObject::connect(&engine, &PlayerEngine::EqualizerChanged,
                         [this](short player) { note("equalizer", player); });
        init();
        engine.EnableEqualizer(true);
        for (const float hertz : {80, 170, 310, 600, 1000, 3000, 6000, 12000, 14000, 16000})
            engine.AddEqualizerBand(0, hertz, 12, 0);
    }

    float gainOf(float frequency)
    {
        float bandwidth = 0;
        float gain = -99;
        engine.GetEqualizerBand(0, frequency, bandwidth, gain);
        return gain;
    }

    // Ten in a row, one a band.
    std::vector<float> gains()
    {
        std::vector<float> all;
        for (int band = 0; band < engine.GetEqualizerBandCount(0); ++band)
            all.push_back(gainOf(engine.GetEqualizerBandFrequency(0, band)));
        return all;
    }
};

TEST_F(SoundPlayerEqualizerTest, AGainBeyondItsRangeIsCutToIt)
{
    constexpr float noNumber = std::numeric_limits<float>::quiet_NaN();
    constexpr float endless = std::numeric_limits<float>::infinity();
    engine.ChangeEqualizerBand(0, 1000, 16);
    EXPECT_EQ(gainOf(1000), 15);
    engine.ChangeEqualizerBand(0, 1000, -1e30F);
    EXPECT_EQ(gainOf(1000), -15);
    for (const float value : {noNumber, endless, -endless}) {
        engine.ChangeEqualizerBand(0, 1000, 3);
        engine.ChangeEqualizerBand(0, 1000, value);
        EXPECT_EQ(gainOf(1000), 0);
    }
    engine.AddEqualizerBand(0, 2000, 12, 99);
    EXPECT_EQ(gainOf(2000), 15);
}

TEST_F(SoundPlayerEqualizerTest, ABandThatIsNoneIsRefused)
{
    constexpr float noNumber = std::numeric_limits<float>::quiet_NaN();
    constexpr float endless = std::numeric_limits<float>::infinity();
    for (const auto& [frequency, bandwidth] :
         {std::pair{0.0F, 12.0F}, std::pair{-80.0F, 12.0F}, std::pair{noNumber, 12.0F}, std::pair{endless, 12.0F},
          std::pair{500.0F, 0.0F}, std::pair{500.0F, -1.0F}, std::pair{500.0F, noNumber},
          std::pair{500.0F, 121.0F}}) {
        engine.AddEqualizerBand(0, frequency, bandwidth, 0);
        EXPECT_EQ(engine.LastError(), code(EngineError::ParameterOutOfRange)) << frequency << ' ' << bandwidth;
        EXPECT_EQ(engine.GetEqualizerBandCount(0), 10);
    }
}

TEST_F(SoundPlayerEqualizerTest, EachPresetSetsTheBandsAndIsToldThroughTheEventLoop)
{
    std::vector<std::vector<float>> presets;
    for (int preset = 0; preset < 16; ++preset) {
        events.clear();
        engine.LoadEqualizerPreset(0, preset);
        EXPECT_EQ(engine.LastError(), 0);
        EXPECT_TRUE(events.empty());
        QCoreApplication::processEvents();
        EXPECT_THAT(events, ElementsAre("equalizer 0"));
        presets.push_back(gains());
        EXPECT_THAT(presets.back(), ::testing::SizeIs(10));
        EXPECT_THAT(presets.back(), ::testing::Contains(::testing::Ne(0.0F)));
        EXPECT_EQ(std::count(presets.begin(), presets.end(), presets.back()), 1);
    }
}

TEST_F(SoundPlayerEqualizerTest, APresetThatIsNotThereChangesNothing)
{
    engine.LoadEqualizerPreset(0, 11);
    const auto before = gains();
    QCoreApplication::processEvents();
    events.clear();
    for (const int preset : {-1, 16, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        engine.LoadEqualizerPreset(0, preset);
        EXPECT_EQ(engine.LastError(), code(EngineError::ParameterOutOfRange));
    }
    engine.LoadEqualizerPreset(2, 0);
    EXPECT_EQ(engine.LastError(), code(EngineError::InvalidPlayer));
    QCoreApplication::processEvents();
    EXPECT_TRUE(events.empty());
    EXPECT_EQ(gains(), before);
}

TEST_F(SoundPlayerEqualizerTest, AFileGivesBackTheGainsThatWereSaved)
{
    engine.ChangeEqualizerBand(0, 80, 7.53F);
    engine.ChangeEqualizerBand(0, 16000, -15);
    const auto saved = gains();
    const QString path = files.path("new/mine.edj");
    EXPECT_EQ(engine.SaveEqualizerFile(0, path), 0);
    EXPECT_EQ(engine.LastError(), 0);
    engine.ResetEqualizer(0);
    EXPECT_THAT(gains(), ::testing::Each(0.0F));
    QCoreApplication::processEvents();
    EXPECT_TRUE(events.empty());

    EXPECT_EQ(engine.LoadEqualizerFile(0, path), 0);
    EXPECT_EQ(gains(), saved);
    EXPECT_TRUE(events.empty());
    QCoreApplication::processEvents();
    EXPECT_THAT(events, ElementsAre("equalizer 0"));
}

TEST_F(SoundPlayerEqualizerTest, AFileThatCannotBeReadOrWrittenSaysWhyAndChangesNothing)
{
    engine.LoadEqualizerPreset(0, 3);
    QCoreApplication::processEvents();
    events.clear();
    const auto before = gains();
    const QString folder = files.folder();
    for (const QString& path : {folder, files.path("missing.edj"), files.write("b.edj", "no equalizer")}) {
        EXPECT_EQ(engine.LoadEqualizerFile(0, path), code(EngineError::InvalidEqualizerFile));
        EXPECT_EQ(engine.LastError(), -75);
    }
    EXPECT_EQ(engine.SaveEqualizerFile(0, folder), code(EngineError::FileCreationFailed));
    EXPECT_EQ(engine.LastError(), -8);
    EXPECT_EQ(engine.LoadEqualizerFile(2, files.path("a.edj")), code(EngineError::InvalidPlayer));
    EXPECT_EQ(engine.SaveEqualizerFile(2, files.path("a.edj")), code(EngineError::InvalidPlayer));
    EXPECT_FALSE(QFileInfo::exists(files.path("a.edj")));
    QCoreApplication::processEvents();
    EXPECT_TRUE(events.empty());
    EXPECT_EQ(gains(), before);
}

TEST_F(SoundPlayerEqualizerTest, BeforeInitPlayersItIsNotInitialized)
{
    SoundPlayerEngine early([] { return std::make_unique<ManualOutput>(std::make_shared<ManualClock>()); });
    early.LoadEqualizerPreset(0, 0);
    EXPECT_EQ(early.LastError(), -49);
    EXPECT_EQ(early.LoadEqualizerFile(0, "/x.edj"), -49);
    EXPECT_EQ(early.SaveEqualizerFile(0, files.path("x.edj")), -49);
}

TEST_F(SoundPlayerEqualizerTest, BandsHoldAcrossSounds)
{
    engine.LoadEqualizerPreset(0, 12);
    const auto before = gains();
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav")), 0);
    ASSERT_EQ(engine.LoadSound(0, sineFile("b.wav", 1, 48000)), 0);
    engine.CloseSound(0);
    EXPECT_EQ(gains(), before);
}

struct BandCase
{
    const char* name;
    int rate;
    float hertz;
    float gain;
};

class HeardBandTest : public SoundPlayerEqualizerTest, public ::testing::WithParamInterface<BandCase>
{
};

// The tone has half of full scale, and the limiter stands behind the gain: at a quarter of it a boost fits in.
TEST_P(HeardBandTest, AToneAtTheCentreIsHeardWithTheGainThatWasAskedFor)
{
    const auto& [name, rate, hertz, gain] = GetParam();
    loadDecoded(files.make("a.wav", sound::test::sine(hertz, rate, 2, 2 * rate), {"-c:a", "pcm_f32le"}));
    engine.SetGain(0, 50);
    engine.ChangeEqualizerBand(0, hertz, gain);
    engine.PlaySound(0);
    ASSERT_TRUE(eventually([&] { return clock().running(); }));
    clock().play(rate);
    const std::vector<float> left = channelOf(clock().written(), 2, 0);
    const auto steady =
        std::span(left).subspan(static_cast<std::size_t>(rate) / 2, static_cast<std::size_t>(rate) / 2);
    EXPECT_NEAR(decibels(amplitudeAt(steady, {rate}, hertz), 0.125), gain, 0.1);
}

INSTANTIATE_TEST_SUITE_P(
    Bands, HeardBandTest,
    ::testing::Values(BandCase{"Lowest44", 44100, 80, 15}, BandCase{"Middle44", 44100, 1000, 15},
                      BandCase{"Highest44", 44100, 16000, 15}, BandCase{"HighestCut44", 44100, 16000, -15},
                      BandCase{"Lowest48", 48000, 80, -15}, BandCase{"Middle48", 48000, 3000, -7.5F},
                      BandCase{"Highest48", 48000, 16000, 15}, BandCase{"CloseToHalfTheRate", 32000, 14000, 6}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(SoundPlayerEqualizerTest, FullScaleWithEveryBandAtItsTopIsLimitedAndNotWrapped)
{
    sound::test::TestSound loud = sound::test::slideWithNoise(44100, 2, 2 * 44100);
    float peak = 0;
    for (const float sample : loud.samples)
        peak = std::max(peak, std::abs(sample));
    for (float& sample : loud.samples)
        sample /= peak;
    loadDecoded(files.make("a.wav", loud, {"-c:a", "pcm_f32le"}));
    for (int band = 0; band < 10; ++band)
        engine.ChangeEqualizerBand(0, engine.GetEqualizerBandFrequency(0, band), 15);
    engine.PlaySound(0);
    ASSERT_TRUE(eventually([&] { return clock().running(); }));
    clock().play(44100);
    const std::vector<float> heard = clock().written();
    EXPECT_TRUE(std::all_of(heard.begin(), heard.end(),
                            [](float sample) { return std::isfinite(sample) && std::abs(sample) <= 1.0F; }));
    EXPECT_GT(levelOf(channelOf(heard, 2, 0)), 0.1);
}

}  // namespace
