#include "sound/mp3/PcmInput.h"

#include "sound/SoundFiles.h"
#include "sound/media/Damage.h"
#include "sound/mp3/Mp3Music.h"

#include <gmock/gmock.h>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <limits>

using namespace sound;
using namespace sound::test;
using SoundFiles = sound::test::SoundFiles;

namespace {

constexpr std::uint32_t neverTold = 0xFFFFFFFF;

class PcmInputTest : public ::testing::Test
{
protected:
    /// A file that holds these bytes, in place of the one of before.
    std::unique_ptr<PcmInput> open(const QByteArray& bytes, PcmInput::Reading reading = {}) const
    {
        QFile::remove(files.path("a.wav"));
        return PcmInput::open(files.write("a.wav", bytes), reading);
    }

    /// The samples of a file that holds these bytes; none where it is refused.
    std::vector<float> samplesOf(const QByteArray& bytes, PcmInput::Reading reading = {}) const
    {
        const auto input = open(bytes, reading);
        std::vector<float> all;
        while (input && input->done() < input->length()) {
            const auto some = input->next({7});
            EXPECT_FALSE(some.empty());
            if (some.empty())
                break;
            all.insert(all.end(), some.begin(), some.end());
        }
        return all;
    }

    const SoundFiles files;
    const std::vector<int> steps = {0, 256, -256, 32'512, -32'768, 512, 768, -1024, 16'384, -16'384};
    const std::vector<float> values = {0,         1.F / 128, -1.F / 128, 127.F / 128, -1,
                                       2.F / 128, 3.F / 128, -4.F / 128, .5F,         -.5F};

    QByteArray wave(Keeping keeping, int channels = 2) const
    {
        return riff(formChunk(formOf(keeping, 48'000, channels)) + dataChunk(packed(keeping, steps)));
    }
};

TEST_F(PcmInputTest, EveryFormOfSamplesIsRead)
{
    for (const Keeping keeping :
         {Keeping::Bytes, Keeping::Bits16, Keeping::Bits24, Keeping::Bits32, Keeping::Float32, Keeping::Float64}) {
        for (const int channels : {1, 2}) {
            const auto input = open(wave(keeping, channels));
            ASSERT_TRUE(input);
            EXPECT_EQ(input->rate().hertz, 48'000);
            EXPECT_EQ(input->channels(), channels);
            EXPECT_EQ(input->length().value, 10 / channels);
            EXPECT_EQ(samplesOf(wave(keeping, channels)), values);
        }
    }
}

TEST_F(PcmInputTest, TheExtensibleFormIsReadToo)
{
    for (const Keeping keeping : {Keeping::Bytes, Keeping::Bits24, Keeping::Float32}) {
        const Form form = formOf(keeping, 44'100, 2);
        EXPECT_EQ(samplesOf(riff(extensibleChunk(form, form.bits) + dataChunk(packed(keeping, steps)))), values);
    }
    const Form form = formOf(Keeping::Bits24, 44'100, 2);
    EXPECT_EQ(samplesOf(riff(extensibleChunk(form, 20) + dataChunk(packed(Keeping::Bits24, steps)))), values);
}

TEST_F(PcmInputTest, SamplesOfOddBitsTakeWholeBytes)
{
    Form form = formOf(Keeping::Bits24, 44'100, 2);
    form.bits = 20;
    form.bytesAFrame = 6;
    EXPECT_EQ(samplesOf(riff(formChunk(form) + dataChunk(packed(Keeping::Bits24, steps)))), values);
}

TEST_F(PcmInputTest, FilesBeyondFourGibibytesAreReadByTheirLongSizes)
{
    const QByteArray samples = packed(Keeping::Bits16, steps);
    const QByteArray chunks = formChunk() + dataChunk(samples + "rest", neverTold);
    EXPECT_EQ(samplesOf(rf64(chunks, static_cast<std::uint64_t>(samples.size()))), values);
    const SoundFiles large;
    const QString path = large.write("a.wav", rf64(formChunk() + dataChunk({}, neverTold), 6'000'000'000));
    ASSERT_TRUE(QFile::resize(path, 7'000'000'000));
    const auto input = PcmInput::open(path, {});
    ASSERT_TRUE(input);
    EXPECT_EQ(input->length().value, 1'500'000'000);
}

TEST_F(PcmInputTest, OtherChunksArePassedOver)
{
    const QByteArray sound = dataChunk(packed(Keeping::Bits16, steps));
    EXPECT_EQ(samplesOf(riff(chunk("LIST", "12345") + formChunk() + chunk("fact", "1234") + sound +
                             chunk("tail", "123"))),
              values);
}

TEST_F(PcmInputTest, ALengthThatWasNeverToldReachesToTheEnd)
{
    const QByteArray samples = packed(Keeping::Bits16, steps);
    for (const std::uint32_t told : {0U, neverTold})
        EXPECT_EQ(samplesOf(riff(formChunk() + dataChunk(samples, told), told)), values);
}

TEST_F(PcmInputTest, AWriterThatNeverCameToItsEndMayHaveToldAnythingOfTheWhole)
{
    const QByteArray samples = packed(Keeping::Bits16, steps);
    for (const std::uint32_t whole : {0U, 3U, 36U, 36U + 20U, 0x7FFFFFFFU, neverTold})
        EXPECT_EQ(samplesOf(riff(formChunk() + dataChunk(samples, 0), whole)), values) << whole;
}

TEST_F(PcmInputTest, ChunksBehindASoundWithoutSamplesAreNoSamples)
{
    const QByteArray head = formChunk() + dataChunk({});
    for (const QByteArray& behind :
         {chunk("LIST", "INFOIARTan artist "), chunk("id3 ", "ID3 and what is in the tag"),
          chunk("LIST", "INFO") + chunk("ID3 ", "odd"), chunk("LIST", {})}) {
        EXPECT_FALSE(open(riff(head + behind))) << behind.data();
        EXPECT_FALSE(open(rf64(formChunk() + dataChunk({}, neverTold) + behind, 0))) << behind.data();
    }
    EXPECT_FALSE(open(riff(head + chunk("LIST", "odd").left(11)))) << "without its padding";
    EXPECT_FALSE(open(riff(head + chunk("LIST", "1234567890")).chopped(5))) << "that lost its end";
}

TEST_F(PcmInputTest, WhatIsToldTooLongEndsWithTheFile)
{
    const QByteArray whole = wave(Keeping::Bits16);
    for (qsizetype bytes = 1; bytes <= 20; ++bytes) {
        const auto frames = static_cast<std::ptrdiff_t>(bytes / 4);
        EXPECT_EQ(samplesOf(whole.left(44 + bytes)), std::vector(values.begin(), values.begin() + 2 * frames));
    }
}

TEST_F(PcmInputTest, NumbersThatDoNotCountMayLie)
{
    Form form;
    form.bytesASecond = 1;
    EXPECT_EQ(samplesOf(riff(formChunk(form) + dataChunk(packed(Keeping::Bits16, steps)), 3)), values);
}

// The program lame and FFmpeg read such files by the bits and channels alone, too.
TEST_F(PcmInputTest, ASizeOfAFrameThatNoSamplesHaveIsPassedOver)
{
    for (const Keeping keeping :
         {Keeping::Bytes, Keeping::Bits16, Keeping::Bits24, Keeping::Bits32, Keeping::Float32, Keeping::Float64}) {
        for (const int told : {0, 1, 3, 5, 7, 77, 65'535}) {
            Form form = formOf(keeping, 44'100, 2);
            form.bytesAFrame = told;
            EXPECT_EQ(samplesOf(riff(formChunk(form) + dataChunk(packed(keeping, steps)))), values)
                << bitsOf(keeping) << " bits, told " << told;
        }
    }
}

// The size of a frame is all that tells them from samples of three bytes.
TEST_F(PcmInputTest, SamplesOf24BitsInFourBytesAreTheLowerThree)
{
    const QByteArray inThree = packed(Keeping::Bits24, steps);
    for (const char fourth : {'\0', '\xFF', '\x5A'}) {
        QByteArray inFour;
        for (qsizetype i = 0; i < inThree.size(); i += 3)
            inFour += inThree.mid(i, 3) + fourth;
        for (const int channels : {1, 2}) {
            Form form = formOf(Keeping::Bits24, 48'000, channels);
            form.bytesAFrame = 4 * channels;
            const auto input = open(riff(formChunk(form) + dataChunk(inFour)));
            ASSERT_TRUE(input);
            EXPECT_EQ(input->length().value, 10 / channels);
            EXPECT_EQ(samplesOf(riff(formChunk(form) + dataChunk(inFour))), values);
            EXPECT_EQ(samplesOf(riff(extensibleChunk(form, 24) + dataChunk(inFour))), values);
            EXPECT_EQ(samplesOf(riff(formChunk(form) + dataChunk(swapped(inFour, 4))), {.swapBytes = true}),
                      values);
        }
    }
}

TEST_F(PcmInputTest, WhereFewerThan24BitsStandInFourBytesNobodyCanTell)
{
    Form form = formOf(Keeping::Bits24, 44'100, 2);
    for (const int bits : {17, 20, 23}) {
        form.bits = bits;
        form.bytesAFrame = 8;
        EXPECT_FALSE(open(riff(formChunk(form) + dataChunk(countingBytes(80))))) << bits;
        form.bytesAFrame = 6;
        EXPECT_TRUE(open(riff(formChunk(form) + dataChunk(countingBytes(60))))) << bits;
    }
}

TEST_F(PcmInputTest, RawSoundHasNoHead)
{
    const QByteArray samples = packed(Keeping::Bits16, steps);
    EXPECT_EQ(samplesOf(samples, {.raw = true}), values);
    EXPECT_EQ(samplesOf(samples + "abc", {.raw = true}), values);
    EXPECT_EQ(samplesOf(swapped(samples, 2), {.raw = true, .swapBytes = true}), values);
    const auto input = open(wave(Keeping::Bits16), {.raw = true});
    ASSERT_TRUE(input);
    EXPECT_EQ(input->length().value, (44 + 20) / 4);
    EXPECT_EQ(input->rate().hertz, 44'100);
    EXPECT_EQ(input->channels(), 2);
}

TEST_F(PcmInputTest, TheBytesOfAWaveFileCanBeSwapped)
{
    for (const Keeping keeping :
         {Keeping::Bytes, Keeping::Bits16, Keeping::Bits24, Keeping::Bits32, Keeping::Float32, Keeping::Float64}) {
        const QByteArray samples = swapped(packed(keeping, steps), bitsOf(keeping) / 8);
        EXPECT_EQ(samplesOf(riff(formChunk(formOf(keeping, 44'100, 2)) + dataChunk(samples)), {.swapBytes = true}),
                  values);
    }
}

TEST_F(PcmInputTest, WhatIsNoSoundForItIsRefused)
{
    const QByteArray data = dataChunk(packed(Keeping::Bits16, steps));
    const std::vector<QByteArray> refused = {
        {},
        "RIFF",
        QByteArray(1000, '\0'),
        QByteArray(1000, '\xFF'),
        riff({}),
        riff(data),
        riff(formChunk()),
        riff(data + formChunk()),
        riff(formChunk() + dataChunk({})),
        riff(chunk("fmt ", "short") + data),
        riff(formChunk({.tag = 2}) + data),
        riff(formChunk({.tag = 0x55}) + data),
        riff(formChunk({.channels = 0}) + data),
        riff(formChunk({.channels = 3}) + data),
        riff(formChunk({.channels = 65'535}) + data),
        riff(formChunk({.rate = 0}) + data),
        riff(formChunk({.rate = 0x80000000}) + data),
        riff(formChunk({.rate = neverTold}) + data),
        riff(formChunk({.bits = 0}) + data),
        riff(formChunk({.bits = 33}) + data),
        riff(formChunk({.bits = 65'535}) + data),
        riff(formChunk({.tag = 3, .bits = 16}) + data),
        riff(extensibleChunk({.tag = 1}, 16, QByteArray(14, 'x')) + data),
    };
    for (std::size_t i = 0; i < refused.size(); ++i)
        EXPECT_FALSE(open(refused[i])) << i;
    EXPECT_FALSE(PcmInput::open(files.path("not there"), {}));
    EXPECT_FALSE(PcmInput::open(files.folder(), {}));
    EXPECT_FALSE(PcmInput::open("/dev/zero", {.raw = true}));
    EXPECT_FALSE(PcmInput::open({}, {}));
    EXPECT_FALSE(open("abc", {.raw = true}));
}

TEST_F(PcmInputTest, NumbersThatAreNoneAreSilence)
{
    QByteArray samples;
    for (const float value : {std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN(), .5F})
        samples += littleEndian(std::bit_cast<std::uint32_t>(value), 4);
    EXPECT_EQ(samplesOf(riff(formChunk(formOf(Keeping::Float32, 44'100, 1)) + dataChunk(samples))),
              (std::vector<float>{0, 0, .5F}));
}

TEST_F(PcmInputTest, AFileThatLosesItsEndMeanwhileEndsThere)
{
    const auto input = open(wave(Keeping::Bits16));
    ASSERT_TRUE(input);
    EXPECT_EQ(input->next({2}).size(), 4U);
    ASSERT_TRUE(QFile::resize(files.path("a.wav"), 44 + 14));
    EXPECT_EQ(input->next({100}).size(), 2U);
    EXPECT_TRUE(input->next({100}).empty());
    EXPECT_EQ(input->done().value, 3);
    EXPECT_LT(input->done(), input->length());
}

TEST_F(PcmInputTest, ItKnowsAllNamesOfItsFile)
{
    const auto input = open(wave(Keeping::Bits16));
    ASSERT_TRUE(input);
    const QByteArray path = QFile::encodeName(files.path("a.wav"));
    ASSERT_EQ(::symlink(path.constData(), QFile::encodeName(files.path("symbolic")).constData()), 0);
    ASSERT_EQ(::link(path.constData(), QFile::encodeName(files.path("linked")).constData()), 0);
    for (const QString& name : {QString("a.wav"), "../" + QDir(files.folder()).dirName() + "/a.wav",
                                QString("symbolic"), QString("linked")})
        EXPECT_TRUE(input->isNamed(files.path(name))) << name.toStdString();
    files.write("other", wave(Keeping::Bits16));
    for (const QString& name : {QString("other"), QString("not there"), QString()})
        EXPECT_FALSE(input->isNamed(files.path(name))) << name.toStdString();
    EXPECT_FALSE(input->isNamed(files.path("a.wav") + QChar(QChar::Null)));
}

TEST_F(PcmInputTest, DamageOfEveryKindIsTakenOrRefused)
{
    const QByteArray whole = riff(chunk("LIST", "12345") + extensibleChunk({.bits = 24}, 24) +
                                  dataChunk(countingBytes(600)) + chunk("tail", "1234"));
    const auto expectTakenOrRefused = [this](const QByteArray& bytes) {
        const auto samples = samplesOf(bytes);
        EXPECT_LE(samples.size(), static_cast<std::size_t>(bytes.size()));
    };
    for (qsizetype bit = 0; bit < 100 * 8; ++bit) {
        QByteArray damaged = whole;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
        expectTakenOrRefused(damaged);
    }
    for (qsizetype size = 0; size < 120; ++size)
        expectTakenOrRefused(whole.left(size));
    for (unsigned number = 0; number < 300; ++number)
        expectTakenOrRefused(Damage(number)(whole));
}

}  // namespace
