#include "sound/SoundFiles.h"
#include "sound/media/DecodedSound.h"
#include "sound/media/SampleStore.h"

#include <gtest/gtest.h>
#include <QFile>
#include <QRegularExpression>
#include <algorithm>

using namespace sound;
using namespace sound::test;
using SoundFiles = sound::test::SoundFiles;

namespace {

std::int64_t residentKibibytes()
{
    QFile status("/proc/self/status");
    EXPECT_TRUE(status.open(QIODevice::ReadOnly));
    const auto match = QRegularExpression("VmRSS:\\s+(\\d+) kB").match(QString::fromLatin1(status.readAll()));
    return match.captured(1).toLongLong();
}

TEST(ResidentMemory, OfALongStoreOnlyWhatIsNearIsKeptWhenAllOfItIsRead)
{
    constexpr std::int64_t frames = 50'000'000;  // 381 MiB
    const auto store = SampleStore::create(SampleRate{44100}, 2, FrameCount{frames});
    ASSERT_TRUE(store);
    ASSERT_TRUE(store->isInFile());
    const std::vector<float> block(2 * 65'536, 0.5F);
    while (!store->isFull())
        ASSERT_TRUE(store->append(block));
    store->finish();
    const std::int64_t before = residentKibibytes();
    std::int64_t most = 0;
    std::vector<float> read(2 * 65'536);
    for (std::int64_t at = 0; at + 65'536 <= frames; at += 65'536) {
        store->read(FramePosition{at}, FrameCount{65'536}, read.data());
        if (at / 65'536 % 8 == 7) {
            store->keepNear();
            most = std::max(most, residentKibibytes() - before);
        }
    }
    EXPECT_LT(most, 100 * 1024);
}

TEST(ResidentMemory, AnHourPlayedFromItsBeginningToItsEndTakesLittleMemory)
{
    const SoundFiles files;
    constexpr qint64 frames = qint64{3600} * 44100;
    const QString path = files.make("hour.wav", slideWithNoise(44100, 2, 44100));
    // A writer that never came to its end: the sound goes as far as the file does, and the file is mostly a hole.
    QByteArray head = contentOf(path);
    head.replace(head.indexOf("data") + 4, 4, QByteArray(4, '\0'));
    files.write("hour.wav", head);
    ASSERT_TRUE(QFile::resize(path, 4 * frames + 44));

    const std::int64_t before = residentKibibytes();
    const auto opened = DecodedSound::open(path);
    ASSERT_TRUE(opened.sound);
    EXPECT_GE(opened.sound->length().value, frames - 100);
    std::int64_t most = 0;
    std::vector<float> block(2 * 4096);
    for (std::int64_t at = 0; at < opened.sound->length().value; at += 4096) {
        opened.sound->waitFor(FrameCount{std::min(at + 4096, opened.sound->length().value)});
        opened.sound->willReadNear(FramePosition{at});
        opened.sound->read(FramePosition{at}, FrameCount{4096}, block.data());
        if (at % (4096 * 256) == 0)
            most = std::max(most, residentKibibytes() - before);
    }
    EXPECT_LT(most, 200 * 1024);
}

}  // namespace
