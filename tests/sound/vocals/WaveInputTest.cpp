#include "sound/vocals/WaveInput.h"

#include "sound/HandMadeWave.h"
#include "sound/SoundFiles.h"
#include "sound/media/WaveHead.h"
#include "sound/vocals/OpenedBytes.h"

#include <gtest/gtest.h>
#include <QFile>

using namespace sound;
using namespace sound::test;
using SoundFiles = sound::test::SoundFiles;

namespace {

struct TakenForm
{
    const char* name;
    Form form;
    WaveSamples samples;
};

const std::vector<TakenForm> takenForms = {
    {"EightBits", {.bits = 8}, WaveSamples::Pcm8},
    {"SixteenBits", {}, WaveSamples::Pcm16},
    {"TwentyFourBits", {.bits = 24}, WaveSamples::Pcm24},
    {"ThirtyTwoBits", {.bits = 32}, WaveSamples::Pcm32},
    {"Floats", {.tag = 3, .bits = 32}, WaveSamples::Float32},
    {"ALowRate", {.rate = 8000}, WaveSamples::Pcm16},
    {"AHighRate", {.tag = 3, .rate = 192'000, .bits = 32}, WaveSamples::Float32},
};

class WaveInputForms : public ::testing::TestWithParam<TakenForm>
{
};

TEST_P(WaveInputForms, AreTakenInTheirPlainAndTheirLongForm)
{
    const TakenForm& taken = GetParam();
    const int frame = 2 * taken.form.bits / 8;
    const QByteArray samples = countingBytes(qsizetype{100} * frame);
    for (const QByteArray& form : {formChunk(taken.form), extensibleChunk(taken.form, taken.form.bits)}) {
        const auto opened = openBytes(riff(form + dataChunk(samples)));
        ASSERT_EQ(opened.result, done);
        EXPECT_EQ(opened.input->samples(), taken.samples);
        EXPECT_EQ(opened.input->rate().hertz, static_cast<int>(taken.form.rate));
        EXPECT_EQ(opened.input->length(), FrameCount{100});
        EXPECT_EQ(allFramesOf(*opened.input), samples);
        EXPECT_EQ(framesOf(*opened.input, {97}, {3}), samples.right(qsizetype{3} * frame));
    }
}

INSTANTIATE_TEST_SUITE_P(All, WaveInputForms, ::testing::ValuesIn(takenForms),
                         [](const auto& tested) { return tested.param.name; });

TEST(WaveInput, AFormOfFewerBitsThanItTakesRoomForIsOneOfThatRoom)
{
    const auto opened = openBytes(riff(extensibleChunk({.bits = 32}, 20) + dataChunk(countingBytes(80))));
    ASSERT_EQ(opened.result, done);
    EXPECT_EQ(opened.input->samples(), WaveSamples::Pcm32);
    EXPECT_EQ(opened.input->length(), FrameCount{10});
}

TEST(WaveInput, ChunksThatAreNoPartOfASoundArePassedOverWithTheirPadding)
{
    const QByteArray samples = countingBytes(40);
    const auto opened = openBytes(riff(chunk("JUNK", QByteArray(28, 'x')) + chunk("odd ", "12345") + formChunk() +
                                       chunk("fact", littleEndian(10, 4)) + chunk("LIST", "1") + chunk("none", "") +
                                       dataChunk(samples) + chunk("LIST", QByteArray(100, 'y'))));
    ASSERT_EQ(opened.result, done);
    EXPECT_EQ(allFramesOf(*opened.input), samples);
}

TEST(WaveInput, AnEmptySoundIsOne)
{
    for (const QByteArray& bytes : {riff(formChunk() + dataChunk("")),
                                    riff(formChunk() + dataChunk("") + chunk("LIST", QByteArray(100, 'x')))}) {
        const auto opened = openBytes(bytes);
        ASSERT_EQ(opened.result, done);
        EXPECT_EQ(opened.input->length(), FrameCount{0});
    }
}

TEST(WaveInput, TheSizesOfALongFileAreToldByItsFirstChunk)
{
    const QByteArray samples = countingBytes(80);
    const auto opened = openBytes(rf64(formChunk() + dataChunk(samples, allOnes) + chunk("LIST", "1234"), 80));
    ASSERT_EQ(opened.result, done);
    EXPECT_EQ(allFramesOf(*opened.input), samples);
}

TEST(WaveInput, ALongFileMayStillTellTheSizeOfItsSoundWhereAShortOneDoes)
{
    const auto opened = openBytes(rf64(formChunk() + dataChunk(countingBytes(80), 40), 80));
    ASSERT_EQ(opened.result, done);
    EXPECT_EQ(opened.input->length(), FrameCount{10});
}

TEST(WaveInput, ReadsWhatThePlayerExportsBeyondFourGigabytes)
{
    const SoundFiles files;
    constexpr std::int64_t frames = 600'000'000;
    const auto head = waveHead({44100}, 2, WaveSamples::Float32, {frames});
    const QString path =
        files.write("a.wav", {reinterpret_cast<const char*>(head.data()), static_cast<qsizetype>(head.size())});
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.resize(static_cast<qint64>(head.size()) + frames * 8 - 8));
    ASSERT_TRUE(file.seek(file.size()));
    ASSERT_EQ(file.write("the last"), 8);
    file.close();
    const auto opened = WaveInput::open(path);
    ASSERT_EQ(opened.result, done);
    EXPECT_EQ(opened.input->length(), FrameCount{frames});
    EXPECT_EQ(framesOf(*opened.input, {frames - 2}, {2}), QByteArray(8, '\0') + "the last");
}

TEST(WaveInput, ReadsWhatAnotherProgramWritesInEveryForm)
{
    const SoundFiles files;
    const TestSound sound = slideWithNoise(44100, 2, 1000);
    struct Written
    {
        QStringList arguments;
        WaveSamples samples;
    };
    const std::vector<Written> all = {
        {{"-c:a", "pcm_u8"}, WaveSamples::Pcm8},
        {{"-c:a", "pcm_s16le"}, WaveSamples::Pcm16},
        {{"-c:a", "pcm_s24le"}, WaveSamples::Pcm24},  // in the long form
        {{"-c:a", "pcm_s32le"}, WaveSamples::Pcm32},
        {{"-c:a", "pcm_f32le", "-rf64", "always"}, WaveSamples::Float32},
    };
    for (const Written& written : all) {
        const QString path = files.make("a.wav", sound, written.arguments);
        const auto opened = WaveInput::open(path);
        ASSERT_EQ(opened.result, done) << written.arguments.join(' ').toStdString();
        EXPECT_EQ(opened.input->samples(), written.samples);
        ASSERT_EQ(opened.input->length(), FrameCount{1000});
        std::vector<float> floats(2000);
        std::vector<std::uint8_t> packed(floats.size() * static_cast<std::size_t>(bytesPerSample(written.samples)));
        EXPECT_TRUE(opened.input->read({0}, packed));
        unpackSamples(written.samples, packed, floats);
        EXPECT_EQ(floats, decodedByFfmpeg(path, 2));
    }
}

TEST(WaveInput, ASoundThatShouldBeLongerThanTheFileEndsWithIt)
{
    const QByteArray samples = countingBytes(80);
    for (const QByteArray& bytes :
         {riff(formChunk() + dataChunk(samples, 1000), 2000),
          riff(formChunk() + dataChunk(samples, allOnes - 1), 0),
          rf64(formChunk() + dataChunk(samples, allOnes), 1'000'000'000'000, 2'000'000'000'000),
          rf64(formChunk() + dataChunk(samples, allOnes), ~0ULL, ~0ULL)}) {
        const auto opened = openBytes(bytes);
        ASSERT_EQ(opened.result, done);
        EXPECT_EQ(allFramesOf(*opened.input), samples);
    }
}

TEST(WaveInput, ASoundWhoseLengthWasNeverToldGoesAsFarAsTheFile)
{
    const QByteArray samples = countingBytes(80);
    const auto beforeSound = static_cast<std::uint32_t>(4 + formChunk().size() + 8);
    for (const QByteArray& bytes :
         {riff(formChunk() + dataChunk(samples, allOnes), allOnes), riff(formChunk() + dataChunk(samples, 0), 0),
          riff(formChunk() + dataChunk(samples, 0), beforeSound),
          riff(formChunk() + dataChunk(samples, allOnes), beforeSound),
          rf64(formChunk() + dataChunk(samples, allOnes), 0, 0)}) {
        const auto opened = openBytes(bytes);
        ASSERT_EQ(opened.result, done);
        EXPECT_EQ(allFramesOf(*opened.input), samples);
    }
}

TEST(WaveInput, APartOfAFrameAtTheEndIsNoFrame)
{
    const QByteArray samples = countingBytes(43);
    for (const QByteArray& bytes : {riff(formChunk() + dataChunk(samples)),
                                    riff(formChunk() + dataChunk(samples, allOnes), allOnes).chopped(1)}) {
        const auto opened = openBytes(bytes);
        ASSERT_EQ(opened.result, done);
        EXPECT_EQ(allFramesOf(*opened.input), samples.left(40));
    }
}

TEST(WaveInput, AFileThatIsCutWhileItIsReadSaysSo)
{
    const SoundFiles files;
    const QString path = files.write("a.wav", riff(formChunk() + dataChunk(countingBytes(400))));
    const auto opened = WaveInput::open(path);
    ASSERT_EQ(opened.result, done);
    ASSERT_TRUE(QFile::resize(path, 300));
    std::vector<std::uint8_t> packed(std::size_t{50} * 4);
    EXPECT_TRUE(opened.input->read({0}, packed));
    EXPECT_FALSE(opened.input->read({50}, packed));
}

TEST(WaveInput, AFileThatIsDeletedWhileItIsReadIsReadToItsEnd)
{
    const SoundFiles files;
    const QByteArray samples = countingBytes(400);
    const QString path = files.write("a.wav", riff(formChunk() + dataChunk(samples)));
    const auto opened = WaveInput::open(path);
    ASSERT_EQ(opened.result, done);
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_EQ(allFramesOf(*opened.input), samples);
}

}  // namespace
