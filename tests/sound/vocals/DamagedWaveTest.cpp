#include "sound/HandMadeWave.h"
#include "sound/SoundFiles.h"
#include "sound/media/Damage.h"
#include "sound/vocals/OpenedBytes.h"
#include "sound/vocals/WaveInput.h"

#include <gtest/gtest.h>
#include <QFile>
#include <algorithm>

using namespace sound;
using namespace sound::test;
using SoundFiles = sound::test::SoundFiles;

namespace {

/// A small file with a bit of everything.
QByteArray smallFile()
{
    return riff(chunk("LIST", "12345") + extensibleChunk({.bits = 24}, 24) + dataChunk(countingBytes(60)) +
                chunk("tail", "1234"));
}

/// In place of the file of before, which is not written over: the disc would be waited for.
QString writeAnew(const SoundFiles& files, const QByteArray& bytes)
{
    QFile::remove(files.path("a.wav"));
    return files.write("a.wav", bytes);
}

/// Whatever is taken lies within the file and can be read.
void expectTakenOrRefused(const QString& path, qint64 size)
{
    const auto opened = WaveInput::open(path);
    if (opened.result != done) {
        EXPECT_FALSE(opened.input);
        EXPECT_GE(opened.result, VocalRemoval::NotRiff);
        EXPECT_LE(opened.result, VocalRemoval::NoFormHeader);
        return;
    }
    const WaveInput& input = *opened.input;
    EXPECT_GE(input.length().value, 0);
    ASSERT_LE(input.length().value * bytesPerFrame(input.samples()), size);
    EXPECT_GE(input.rate().hertz, 1000);
    EXPECT_LE(input.rate().hertz, 384'000);
    allFramesOf(input);
}

TEST(DamagedWave, AFileThatEndsAnywhereIsTakenUpToThereOrRefusedForWhatIsMissing)
{
    using enum VocalRemoval;
    const SoundFiles files;
    const QByteArray whole = smallFile();
    constexpr qsizetype formBegin = 12 + 8 + 6;
    constexpr qsizetype soundBegin = formBegin + 8 + 40 + 8;
    for (qsizetype size = 0; size <= whole.size(); ++size) {
        const auto opened = WaveInput::open(writeAnew(files, whole.left(size)));
        VocalRemoval expected = done;
        if (size < 8)
            expected = NotRiff;
        else if (size < 12)
            expected = NoWaveHeader;
        else if (size < formBegin + 8)
            expected = NoChunkHeader;
        else if (size < formBegin + 8 + 40)
            expected = NoFormHeader;
        else if (size < soundBegin)
            expected = NoChunkHeader;
        ASSERT_EQ(opened.result, expected) << size;
        if (opened.input) {
            EXPECT_EQ(opened.input->length().value, std::min<qsizetype>(size - soundBegin, 60) / 6) << size;
        }
    }
}

TEST(DamagedWave, AFlippedBitAnywhereIsTakenOrRefused)
{
    const SoundFiles files;
    const QByteArray whole = smallFile();
    for (qsizetype bit = 0; bit < whole.size() * 8; ++bit) {
        QByteArray damaged = whole;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
        expectTakenOrRefused(writeAnew(files, damaged), damaged.size());
    }
}

TEST(DamagedWave, AForgedNumberAnywhereIsTakenOrRefused)
{
    const SoundFiles files;
    for (const QByteArray& whole : {smallFile(), rf64(formChunk() + dataChunk(countingBytes(60), allOnes), 60)}) {
        for (const char byte : {'\0', '\x7F', '\x80', '\xFF'}) {
            for (qsizetype place = 0; place + 4 <= whole.size(); ++place) {
                for (const qsizetype size : {2, 4, 8}) {
                    QByteArray damaged = whole;
                    damaged.replace(place, std::min(size, whole.size() - place), QByteArray(size, byte));
                    expectTakenOrRefused(writeAnew(files, damaged), damaged.size());
                }
            }
        }
    }
}

TEST(DamagedWave, DamageOfEveryKindIsTakenOrRefused)
{
    const SoundFiles files;
    const QByteArray whole = riff(chunk("LIST", "12345") + formChunk({.tag = 3, .bits = 32}) +
                                  dataChunk(countingBytes(8000)) + chunk("tail", "1234"));
    for (unsigned number = 0; number < 1000; ++number) {
        const QByteArray damaged = Damage(number)(whole);
        expectTakenOrRefused(writeAnew(files, damaged), damaged.size());
    }
}

}  // namespace
