#include "sound/ChildProcess.h"
#include "sound/mp3/EncoderOnFiles.h"
#include "sound/mp3/Mp3Frames.h"
#include "sound/mp3/Mp3Music.h"

#include <functional>
#include <string>

using namespace sound;
using namespace sound::test;
using SoundFiles = sound::test::SoundFiles;

namespace {

/// What the program lame makes of the file.
QByteArray encodedByLame(const SoundFiles& files, const QString& input, const QStringList& switches)
{
    const QString output = files.path("lame.mp3");
    ChildProcess lame("lame", QStringList{"--quiet"} + switches + QStringList{input, output}, {"LAMEOPT="}, {}, {},
                      files.path("lame.err"));
    EXPECT_TRUE(lame.succeeds()) << contentOf(files.path("lame.err")).toStdString();
    return contentOf(output);
}

enum class Effect
{
    Some,
    None,  ///< The same bytes as where nothing is asked.
};

struct Switches
{
    const char* name;
    std::function<void(Mp3EncoderEngine&)> set;
    QStringList switches;  // of the program
    Effect effect = Effect::Some;
};

class LameSwitches : public EncoderOnFiles, public ::testing::WithParamInterface<Switches>
{
};

TEST_P(LameSwitches, MakeTheSameBytesAsThoseOfTheProgram)
{
    const Switches& tried = GetParam();
    const QString input = files.write("in.wav", musicWave());
    tried.set(*engine);
    const QByteArray bytes = encoded(input);
    ASSERT_FALSE(bytes.isEmpty());
    EXPECT_EQ(bytes == encodedByLame(files, input, tried.switches), true);
    static const QByteArray whereNothingIsAsked = encodedByLame(files, input, {});
    EXPECT_EQ(bytes != whereNothingIsAsked, tried.effect == Effect::Some);
}

using E = Mp3EncoderEngine;

INSTANTIATE_TEST_SUITE_P(
    Each, LameSwitches,
    ::testing::Values(Switches{"Nothing", [](E&) {}, {}, Effect::None},
                      Switches{"Stereo", [](E& e) { e.Mode(0); }, {"-m", "s"}},
                      Switches{"JointStereoIsTheDefault", [](E& e) { e.Mode(1); }, {"-m", "j"}, Effect::None},
                      Switches{"MiddleAndSide", [](E& e) { e.Mode(2); }, {"-m", "f"}},
                      Switches{"Mono", [](E& e) { e.Mode(3); }, {"-m", "m"}},
                      Switches{"ModesOutOfRange", [](E& e) { e.Mode(2), e.Mode(4), e.Mode(-1); }, {"-m", "f"}},
                      Switches{"Bitrate32", [](E& e) { e.Bitrate(32); }, {"-b", "32"}},
                      Switches{"Bitrate64", [](E& e) { e.Bitrate(64); }, {"-b", "64"}},
                      Switches{"Bitrate128IsTheDefault", [](E& e) { e.Bitrate(128); }, {"-b", "128"}, Effect::None},
                      Switches{"Bitrate320", [](E& e) { e.Bitrate(320); }, {"-b", "320"}},
                      Switches{"BitratesBetweenTwo", [](E& e) { e.Bitrate(200); }, {"-b", "200"}},
                      Switches{"BitratesOutOfRange",
                               [](E& e) { e.Bitrate(192), e.Bitrate(7), e.Bitrate(321), e.Bitrate(-1); },
                               {"-b", "192"}},
                      Switches{"Voice", [](E& e) { e.VoiceMode(true); }, {"--preset", "voice"}},
                      Switches{"HighQuality", [](E& e) { e.HighQuality(true); }, {"-h"}},
                      Switches{"Fast", [](E& e) { e.FastMode(true); }, {"-f"}},
                      Switches{"AllFrequencies",
                               [](E& e) { e.DisableSfb21Cutoff(true); },
                               {"--lowpass", "-1", "--highpass", "-1"}},
                      Switches{"MixedBlockTypes", [](E& e) { e.MixedBlockTypes(true); }, {"-d"}, Effect::None},
                      Switches{"Downmix", [](E& e) { e.DownmixToMono(true); }, {"-a"}},
                      Switches{"Checksum", [](E& e) { e.AddChecksum(true); }, {"-p"}},
                      Switches{"Copyrighted", [](E& e) { e.MarkCopyrighted(true); }, {"-c"}},
                      Switches{"NonOriginal", [](E& e) { e.MarkNonOriginal(true); }, {"-o"}},
                      Switches{"NoTag", [](E& e) { e.DisableVbrTag(true); }, {"-t"}},
                      Switches{"Vbr", [](E& e) { e.UseVbr(true); }, {"-v"}}),
    [](const auto& tried) { return std::string(tried.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Vbr, LameSwitches,
    ::testing::Values(Switches{"BestQuality", [](E& e) { e.UseVbr(true), e.VbrQuality(0); }, {"-V", "0"}},
                      Switches{"WorstQuality", [](E& e) { e.UseVbr(true), e.VbrQuality(9); }, {"-V", "9"}},
                      Switches{"QualitiesOutOfRange",
                               [](E& e) { e.UseVbr(true), e.VbrQuality(2), e.VbrQuality(10), e.VbrQuality(-1); },
                               {"-V", "2"}},
                      Switches{"Least", [](E& e) { e.UseVbr(true), e.MinVbrBitrate(192); }, {"-v", "-b", "192"}},
                      Switches{"Most",
                               [](E& e) { e.UseVbr(true), e.VbrQuality(0), e.MaxVbrBitrate(96); },
                               {"-V", "0", "-B", "96"}},
                      Switches{"LeastAndMost",
                               [](E& e) { e.UseVbr(true), e.MinVbrBitrate(96), e.MaxVbrBitrate(112); },
                               {"-v", "-b", "96", "-B", "112"}},
                      Switches{"LeastAboveMost",
                               [](E& e) { e.UseVbr(true), e.MinVbrBitrate(320), e.MaxVbrBitrate(32); },
                               {"-v", "-b", "320", "-B", "32"}},
                      Switches{"LimitsOutOfRange",
                               [](E& e) {
                                   e.UseVbr(true), e.MinVbrBitrate(160), e.MinVbrBitrate(0), e.MinVbrBitrate(1000);
                                   e.MaxVbrBitrate(192), e.MaxVbrBitrate(-5), e.MaxVbrBitrate(321);
                               },
                               {"-v", "-b", "160", "-B", "192"}},
                      Switches{"BitrateCountsNot", [](E& e) { e.UseVbr(true), e.Bitrate(320); }, {"-v"}},
                      Switches{"LimitsCountNotWithoutIt",
                               [](E& e) { e.VbrQuality(0), e.MinVbrBitrate(192), e.MaxVbrBitrate(192); },
                               {},
                               Effect::None},
                      Switches{"NoTag", [](E& e) { e.UseVbr(true), e.DisableVbrTag(true); }, {"-v", "-t"}},
                      Switches{"HighQuality", [](E& e) { e.UseVbr(true), e.HighQuality(true); }, {"-v", "-h"}},
                      Switches{"Fast", [](E& e) { e.UseVbr(true), e.FastMode(true); }, {"-v", "-f"}},
                      Switches{"MiddleAndSide", [](E& e) { e.UseVbr(true), e.Mode(2); }, {"-v", "-m", "f"}},
                      Switches{"Mono", [](E& e) { e.UseVbr(true), e.Mode(3); }, {"-v", "-m", "m"}},
                      Switches{"AllFrequencies",
                               [](E& e) { e.UseVbr(true), e.VbrQuality(7), e.DisableSfb21Cutoff(true); },
                               {"-V", "7", "--lowpass", "-1", "--highpass", "-1"}},
                      Switches{"Checksum", [](E& e) { e.UseVbr(true), e.AddChecksum(true); }, {"-v", "-p"}},
                      Switches{"TakenBack", [](E& e) { e.UseVbr(true), e.UseVbr(false); }, {}, Effect::None}),
    [](const auto& tried) { return std::string(tried.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Together, LameSwitches,
    ::testing::Values(
        Switches{"FastIsPutAfterHighQuality", [](E& e) { e.FastMode(true), e.HighQuality(true); }, {"-h", "-f"}},
        Switches{"DownmixIsPutAfterTheMode", [](E& e) { e.DownmixToMono(true), e.Mode(0); }, {"-m", "s", "-a"}},
        Switches{"VoiceInStereo", [](E& e) { e.Mode(0), e.VoiceMode(true); }, {"--preset", "voice", "-m", "s"}},
        Switches{
            "VoiceAndBitrate", [](E& e) { e.Bitrate(64), e.VoiceMode(true); }, {"--preset", "voice", "-b", "64"}},
        Switches{"VoiceAndVbr",
                 [](E& e) { e.VoiceMode(true), e.UseVbr(true), e.MinVbrBitrate(48), e.MaxVbrBitrate(64); },
                 {"--preset", "voice", "-v", "-b", "48", "-B", "64"}},
        Switches{"VoiceInHighQuality",
                 [](E& e) { e.HighQuality(true), e.VoiceMode(true); },
                 {"--preset", "voice", "-h"}},
        Switches{"MixedBlockTypesInMono", [](E& e) { e.Mode(3), e.MixedBlockTypes(true); }, {"-m", "m"}},
        Switches{"MonoAndBitrate", [](E& e) { e.Mode(3), e.Bitrate(96); }, {"-m", "m", "-b", "96"}},
        Switches{"EveryMark",
                 [](E& e) { e.AddChecksum(true), e.MarkCopyrighted(true), e.MarkNonOriginal(true); },
                 {"-p", "-c", "-o"}},
        Switches{"Many",
                 [](E& e) {
                     e.Mode(0), e.Bitrate(256), e.HighQuality(true), e.DisableSfb21Cutoff(true);
                     e.AddChecksum(true), e.MarkCopyrighted(true), e.DisableVbrTag(true), e.MixedBlockTypes(true);
                 },
                 {"-m", "s", "-b", "256", "-h", "--lowpass", "-1", "--highpass", "-1", "-p", "-c", "-t", "-d"}},
        Switches{"AllTakenBack",
                 [](E& e) {
                     for (const bool on : {true, false}) {
                         e.VoiceMode(on), e.UseVbr(on), e.DisableVbrTag(on), e.HighQuality(on), e.FastMode(on);
                         e.DisableSfb21Cutoff(on), e.MixedBlockTypes(on), e.AthOnlyMasking(on), e.NoShortBlocks(on);
                         e.RawInput(on), e.SwapBytes(on), e.DownmixToMono(on), e.AddChecksum(on);
                         e.MarkCopyrighted(on), e.MarkNonOriginal(on);
                     }
                 },
                 {},
                 Effect::None}),
    [](const auto& tried) { return std::string(tried.param.name); });

struct Sound
{
    const char* name;
    Keeping keeping = Keeping::Bits16;
    int rate = 44'100;
    int channels = 2;
};

class LameInputs : public EncoderOnFiles, public ::testing::WithParamInterface<Sound>
{
};

TEST_P(LameInputs, MakeTheSameBytesAsThoseOfTheProgram)
{
    const Sound& sound = GetParam();
    const QString input = files.write("in.wav", musicWave(sound.keeping, sound.rate, sound.channels));
    EXPECT_EQ(encoded(input) == encodedByLame(files, input, {}), true);
    engine->UseVbr(true);
    EXPECT_EQ(encoded(input) == encodedByLame(files, input, {"-v"}), true);
}

INSTANTIATE_TEST_SUITE_P(
    Of, LameInputs,
    ::testing::Values(
        Sound{"Bytes", Keeping::Bytes}, Sound{"Bits24", Keeping::Bits24}, Sound{"Bits32", Keeping::Bits32},
        Sound{"FloatsUpToFullScale", Keeping::Float32}, Sound{"LongFloatsUpToFullScale", Keeping::Float64},
        Sound{"BytesInMono", Keeping::Bytes, 44'100, 1}, Sound{"Bits16InMono", Keeping::Bits16, 44'100, 1},
        Sound{"Bits24InMono", Keeping::Bits24, 48'000, 1}, Sound{"FloatsInMono", Keeping::Float32, 32'000, 1},
        Sound{"Rate8000", Keeping::Bits16, 8000}, Sound{"Rate11025", Keeping::Bits16, 11'025},
        Sound{"Rate12000", Keeping::Bits16, 12'000}, Sound{"Rate16000", Keeping::Bits16, 16'000},
        Sound{"Rate22050", Keeping::Bits16, 22'050}, Sound{"Rate24000", Keeping::Bits16, 24'000},
        Sound{"Rate32000", Keeping::Bits16, 32'000}, Sound{"Rate48000", Keeping::Bits16, 48'000},
        Sound{"Rate96000", Keeping::Bits24, 96'000}, Sound{"Rate192000", Keeping::Bits24, 192'000},
        Sound{"ARateOfNoStandard", Keeping::Bits16, 37'800}, Sound{"ARateBelowAll", Keeping::Bits16, 5000, 1}),
    [](const auto& tried) { return std::string(tried.param.name); });

class LameMono : public EncoderOnFiles
{
};

TEST_F(LameMono, StaysMonoWhateverTheMode)
{
    const QString input = files.write("in.wav", musicWave(Keeping::Bits16, 44'100, 1));
    const QByteArray bytes = encoded(input);
    for (const auto& [mode, letter] :
         {std::pair(0, "s"), std::pair(1, "j"), std::pair(2, "f"), std::pair(3, "m")}) {
        engine->Mode(static_cast<short>(mode));
        EXPECT_EQ(encoded(input) == bytes, true) << letter;
        EXPECT_EQ(encodedByLame(files, input, {"-m", letter}) == bytes, true) << letter;
    }
}

class LameRaw : public EncoderOnFiles
{
protected:
    LameRaw() { engine->RawInput(true); }

    const QByteArray samples = packed(Keeping::Bits16, shortMusic(44'100, 2));
};

TEST_F(LameRaw, IsStereoOf16BitsAt44100HertzWithTheLowByteFirst)
{
    const QString input = files.write("in.raw", samples);
    const QByteArray bytes = encoded(input);
    EXPECT_EQ(bytes == encodedByLame(files, input, {"-r"}), true);
    engine->RawInput(false);
    EXPECT_EQ(bytes == encoded(files.write("in.wav", musicWave())), true);
}

TEST_F(LameRaw, MayHaveTheHighByteFirst)
{
    const QString input = files.write("in.raw", swapped(samples, 2));
    engine->SwapBytes(true);
    const QByteArray bytes = encoded(input);
    EXPECT_EQ(bytes == encodedByLame(files, input, {"-r", "-x"}), true);
    engine->SwapBytes(false);
    EXPECT_EQ(bytes == encoded(files.write("other.raw", samples)), true);
}

TEST_F(LameRaw, IsStereoAlsoWhereTheOutputIsMono)
{
    const QString input = files.write("in.raw", samples);
    engine->Mode(3);
    EXPECT_EQ(encoded(input) == encodedByLame(files, input, {"-r", "-a"}), true);
}

TEST_F(LameRaw, EndsWithItsLastWholeFrame)
{
    const QString whole = files.write("whole.raw", samples);
    const QByteArray bytes = encoded(whole);
    for (const char* rest : {"1", "12", "123"})
        EXPECT_EQ(bytes == encoded(files.write("in.raw", samples + rest)), true) << rest;
    // The program takes a lone sample for that of a right channel, and all samples of its last block with it.
    EXPECT_EQ(bytes == encodedByLame(files, files.write("in.raw", samples + "1"), {"-r"}), true);
    EXPECT_EQ(bytes == encodedByLame(files, files.write("in.raw", samples + "12"), {"-r"}), false);
}

/// Here the program asks a library for the samples, to which it does not say all that it was told.
class BesideLame : public EncoderOnFiles
{
};

TEST_F(BesideLame, BytesOfAWaveFileAreSwappedToo)
{
    for (const Keeping keeping : {Keeping::Bits16, Keeping::Bits24, Keeping::Bits32, Keeping::Float32}) {
        const QByteArray samples = packed(keeping, shortMusic(44'100, 2));
        const QByteArray form = formChunk(formOf(keeping, 44'100, 2));
        const QString turned =
            files.write("turned.wav", riff(form + dataChunk(swapped(samples, bitsOf(keeping) / 8))));
        const QString straight = files.write("straight.wav", riff(form + dataChunk(samples)));
        engine->SwapBytes(true);
        EXPECT_EQ(encoded(turned) == encodedByLame(files, straight, {}), true) << bitsOf(keeping);
    }
}

TEST_F(BesideLame, SamplesOf24BitsInFourBytesKeepTheirLevel)
{
    const QByteArray inThree = packed(Keeping::Bits24, shortMusic(44'100, 2));
    QByteArray inFour;
    for (qsizetype i = 0; i < inThree.size(); i += 3)
        inFour += inThree.mid(i, 3) + (inThree[i + 2] < 0 ? '\xFF' : '\0');
    Form form = formOf(Keeping::Bits24, 44'100, 2);
    const QString usual = files.write("usual.wav", riff(formChunk(form) + dataChunk(inThree)));
    form.bytesAFrame = 8;
    const QString input = files.write("in.wav", riff(formChunk(form) + dataChunk(inFour)));
    EXPECT_EQ(encoded(input) == encodedByLame(files, usual, {}), true);
    // The program takes all four bytes for one number.
    const QString large =
        files.write("large.wav", riff(formChunk(formOf(Keeping::Bits32, 44'100, 2)) + dataChunk(inFour)));
    EXPECT_EQ(encodedByLame(files, input, {}) == encodedByLame(files, large, {}), true);
}

TEST_F(BesideLame, FloatsKeepTheirLevel)
{
    std::vector<int> quiet = shortMusic(44'100, 2);
    for (int& step : quiet)
        step /= 8;
    const auto wave = [&](Keeping keeping) {
        return riff(formChunk(formOf(keeping, 44'100, 2)) + dataChunk(packed(keeping, quiet)));
    };
    const QString integers = files.write("integers.wav", wave(Keeping::Bits16));
    for (const Keeping keeping : {Keeping::Float32, Keeping::Float64}) {
        const QString input = files.write("in.wav", wave(keeping));
        EXPECT_EQ(encoded(input) == encodedByLame(files, integers, {}), true);
        EXPECT_EQ(encodedByLame(files, input, {}) == encodedByLame(files, integers, {}), false);
    }
}

TEST_F(BesideLame, NoShortBlocksAreMadeWhereNoneAreWanted)
{
    const QString input = files.write("in.wav", musicWave());
    constexpr std::size_t shortBlocks = 2;
    EXPECT_GT(blockTypes(encoded(input))[shortBlocks], 0);
    engine->NoShortBlocks(true);
    const std::array<int, 4> types = blockTypes(encoded(input));
    EXPECT_EQ(types[shortBlocks], 0);
    EXPECT_GT(types[0], 20);
    engine->MixedBlockTypes(true);
    EXPECT_EQ(blockTypes(encoded(input)), types);
}

TEST_F(BesideLame, OnlyTheTagTellsThatNothingIsToBeMasked)
{
    const QString input = files.write("in.wav", musicWave());
    for (const bool variable : {false, true}) {
        engine->UseVbr(variable);
        engine->DisableVbrTag(false);
        engine->AthOnlyMasking(false);
        const QByteArray masked = encoded(input);
        engine->AthOnlyMasking(true);
        const QByteArray unmasked = encoded(input);
        EXPECT_EQ(masked == unmasked, false);
        engine->DisableVbrTag(true);
        const QByteArray withoutTag = encoded(input);
        EXPECT_EQ(withoutTag == encodedByLame(files, input, QStringList{"-t"} + QStringList(variable, "-v")), true);
        EXPECT_EQ(unmasked.endsWith(withoutTag) && masked.endsWith(withoutTag), true);
    }
}

}  // namespace
