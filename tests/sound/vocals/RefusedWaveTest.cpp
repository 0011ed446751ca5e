#include "sound/HandMadeWave.h"
#include "sound/SoundFiles.h"
#include "sound/vocals/OpenedBytes.h"
#include "sound/vocals/WaveInput.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <QFile>
#include <vector>

using namespace sound;
using namespace sound::test;
using SoundFiles = sound::test::SoundFiles;

namespace {

struct Refused
{
    const char* name;
    QByteArray bytes;
    VocalRemoval reason;
};

QByteArray otherOpening(const QByteArray& opening)
{
    return opening + riff(formChunk() + dataChunk(countingBytes(40))).mid(opening.size());
}

std::vector<Refused> refusedFiles()
{
    using enum VocalRemoval;
    const QByteArray data = dataChunk(countingBytes(48));
    const auto withForm = [&data](const Form& form) { return riff(formChunk(form) + data); };
    const QByteArray otherGuid = QByteArray::fromHex("000021070000d3118644c8c1ca00");
    return {
        {"NothingAtAll", "", NotRiff},
        {"TheBeginningOfAName", "RIF", NotRiff},
        {"ANameWithoutASize", "RIFF123", NotRiff},
        {"AnotherContainer", otherOpening("FORM"), NotRiff},
        {"TheHighestBytesFirst", otherOpening("RIFX"), NotRiff},
        {"NoSound", QByteArray("ID3 and what follows").repeated(10), NotRiff},

        {"NothingBehindTheSize", "RIFF1234", NoWaveHeader},
        {"AnotherKindOfRiff", riff(formChunk() + data).replace("WAVE", "AVI "), NoWaveHeader},

        {"NothingInIt", riff(""), NoChunkHeader},
        {"NoSoundInIt", riff(formChunk()), NoChunkHeader},
        {"AChunkThatIsLongerThanTheFile", riff(formChunk() + chunk("LIST", "1234", 1'000'000) + data),
         NoChunkHeader},
        {"TheBeginningOfAChunk", riff(formChunk() + "dat"), NoChunkHeader},
        {"AChunkWithoutAName", riff(formChunk() + chunk(QByteArray(4, '\0'), "1234") + data), NoChunkHeader},
        {"ASoundBehindTheEndOfTheRiff", riff(formChunk() + data, 4 + 24), NoChunkHeader},
        {"ALongFileThatDoesNotTellItsSizes", riff(formChunk() + data).replace("RIFF", "RF64"), NoChunkHeader},
        {"ALongFileThatTellsHalfOfItsSizes",
         "RF641234WAVE" + chunk("ds64", QByteArray(20, '\0')) + formChunk() + data, NoChunkHeader},
        {"ALongFileThatEndsInItsSizes", rf64(formChunk() + data, 48).left(40), NoChunkHeader},
        {"ALongFileThatTellsItsSizesTooLate",
         "RF641234WAVE" + formChunk() + chunk("ds64", QByteArray(28, '\0')) + data, NoChunkHeader},

        {"ALaw", withForm({.tag = 6, .bits = 8}), NeitherPcmNorFloat},
        {"Mp3InARiff", withForm({.tag = 0x55, .bits = 0}), NeitherPcmNorFloat},
        {"ALongFormOfAnotherTag", riff(extensibleChunk({.tag = 2}, 16) + data), NeitherPcmNorFloat},
        {"ALongFormOfAnotherFamily", riff(extensibleChunk({}, 16, otherGuid) + data), NeitherPcmNorFloat},

        {"OneChannel", withForm({.channels = 1}), NotStereo},
        {"SixChannels", withForm({.channels = 6}), NotStereo},
        {"NoChannel", withForm({.channels = 0}), NotStereo},
        {"OneChannelInTheLongForm", riff(extensibleChunk({.channels = 1}, 16) + data), NotStereo},

        {"TwelveBits", withForm({.bits = 12}), UnknownSampleSize},
        {"FloatsOfSixtyFourBits", withForm({.tag = 3, .bits = 64}), UnknownSampleSize},
        {"NoBits", withForm({.bits = 0}), UnknownSampleSize},

        {"FloatsOfSixteenBits", withForm({.tag = 3}), NotStandardWave},
        {"MoreBitsUsedThanThereAre", riff(extensibleChunk({}, 17) + data), NotStandardWave},
        {"FramesOfAnotherSize", withForm({.bytesAFrame = 2}), NotStandardWave},
        {"AnotherNumberOfBytesASecond", withForm({.bytesASecond = 88200}), NotStandardWave},
        {"NoRate", withForm({.rate = 0}), NotStandardWave},
        {"ARateTooLowToHear", withForm({.rate = 999}), NotStandardWave},
        {"ARateBeyondAllConverters", withForm({.rate = 1'000'000'000, .bytesASecond = 4'000'000'000}),
         NotStandardWave},
        {"TwoForms", riff(formChunk() + formChunk() + data), NotStandardWave},
        {"ASoundThatIsLongerThanItsRiff", riff(formChunk() + data, 4 + 24 + 8 + 40), NotStandardWave},
        {"ALongSoundThatIsLongerThanItsRiff",
         rf64(formChunk() + dataChunk(countingBytes(48), allOnes), 48, 4 + 36 + 24 + 8 + 40), NotStandardWave},

        {"NoForm", riff(data), NoFormHeader},
        {"AFormBehindTheSound", riff(data + formChunk()), NoFormHeader},
        {"AFormThatIsTooShort", riff(chunk("fmt ", formBody({}).left(14)) + data), NoFormHeader},
        {"AFormThatEndsWithTheFile", riff(formChunk()).left(12 + 8 + 15), NoFormHeader},
        {"ALongFormThatIsTooShort",
         riff(chunk("fmt ", formBody({.tag = 0xFFFE}) + littleEndian(22, 2) + QByteArray(20, '\0')) + data),
         NoFormHeader},
        {"ALongFormWithoutWhatMakesItLong",
         riff(chunk("fmt ", formBody({.tag = 0xFFFE}) + QByteArray(24, '\0')) + data), NoFormHeader},
    };
}

class RefusedWave : public ::testing::TestWithParam<Refused>
{
};

TEST_P(RefusedWave, HasItsOwnReason)
{
    const auto opened = openBytes(GetParam().bytes);
    EXPECT_EQ(opened.result, GetParam().reason);
    EXPECT_FALSE(opened.input);
}

INSTANTIATE_TEST_SUITE_P(All, RefusedWave, ::testing::ValuesIn(refusedFiles()),
                         [](const auto& tested) { return tested.param.name; });

TEST(WaveInputRefusing, NothingButARegularFileIsOpened)
{
    const SoundFiles files;
    const QString pipe = files.path("pipe");
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString& path : {files.path("none"), files.folder(), pipe, QString("/dev/zero"), QString(),
                                files.write("a.wav", riff(formChunk() + dataChunk(""))) + QChar(QChar::Null)})
        EXPECT_EQ(WaveInput::open(path).result, VocalRemoval::CannotOpenInput) << path.toStdString();
}

TEST(WaveInputRefusing, AHeadThatVanishesWhileItIsReadCannotBeRead)
{
    const SoundFiles files;
    const QString path = files.write("a.wav", riff(formChunk() + dataChunk(countingBytes(400))));
    const auto file = RegularFile::open(path);
    ASSERT_TRUE(file);
    ASSERT_TRUE(QFile::resize(path, 30));
    EXPECT_EQ(readWaveLayout(*file).result, VocalRemoval::CannotReadInput);
}

TEST(WaveInputRefusing, AFileOfNothingButTinyChunksIsNotWalkedForEver)
{
    const QByteArray chunks = formChunk() + chunk("tiny", "").repeated(400'000);
    EXPECT_EQ(openBytes(riff(chunks + dataChunk(""))).result, VocalRemoval::NoChunkHeader);
}

}  // namespace
