#include "sound/player/EqualizerFile.h"

#include "sound/DiscOf.h"
#include "sound/SoundFiles.h"
#include "sound/player/Settings.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <QFile>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

using namespace sound;
using sound::test::DiscOf;
using sound::test::everythingIn;
using sound::test::SoundFiles;

namespace {

EqualizerBands bandsAt(std::initializer_list<float> frequencies)
{
    EqualizerBands bands;
    for (const float frequency : frequencies)
        addBand(bands, {frequency, 12, 0});
    return bands;
}

EqualizerBands tenBands()
{
    return bandsAt({80, 170, 310, 600, 1000, 3000, 6000, 12000, 14000, 16000});
}

EqualizerBands threeBands()
{
    EqualizerBands bands = bandsAt({80, 170, 1000});
    bands.band[0].gain = 1;
    bands.band[1].gain = 2;
    bands.band[2].gain = 3;
    return bands;
}

std::vector<std::uint32_t> gainBits(const EqualizerBands& bands)
{
    std::vector<std::uint32_t> bits;
    for (std::size_t index = 0; index < bands.count; ++index)
        bits.push_back(std::bit_cast<std::uint32_t>(bands.band[index].gain));
    return bits;
}

/// The gains that a text gives to three bands which had 1, 2 and 3 dB; none where it is refused and they have them
/// still.
std::vector<float> gainsOf(std::string_view text)
{
    EqualizerBands bands = threeBands();
    const bool read = readEqualizerText(text, bands);
    if (!read) {
        EXPECT_EQ(bands.band, threeBands().band) << "changed by a text that was refused";
        return {};
    }
    return {bands.band[0].gain, bands.band[1].gain, bands.band[2].gain};
}

const std::vector<float> refused;

std::string titled(const std::string& lines)
{
    return "Larkspin equalizer, version 1\n" + lines;
}

TEST(EqualizerText, IsALineABandThatAPersonCanRead)
{
    EqualizerBands bands = tenBands();
    bands.band[0].gain = 7.5F;
    bands.band[1].gain = -3.25F;
    bands.band[9].gain = 0.01F;
    EXPECT_EQ(equalizerText(bands),
              "Larkspin equalizer, version 1\n"
              "80 Hz: 7.5 dB\n"
              "170 Hz: -3.25 dB\n"
              "310 Hz: 0 dB\n"
              "600 Hz: 0 dB\n"
              "1000 Hz: 0 dB\n"
              "3000 Hz: 0 dB\n"
              "6000 Hz: 0 dB\n"
              "12000 Hz: 0 dB\n"
              "14000 Hz: 0 dB\n"
              "16000 Hz: 0.01 dB\n");
}

TEST(EqualizerText, IsReadAsItStands)
{
    EXPECT_EQ(gainsOf(titled("80 Hz: 7.5 dB\n170 Hz: -15 dB\n1000 Hz: 0.01 dB\n")),
              (std::vector<float>{7.5F, -15.0F, 0.01F}));
}

TEST(EqualizerText, MayBeEditedFreely)
{
    const std::vector<float> wanted{1.5F, -2.0F, 15.0F};
    EXPECT_EQ(gainsOf("\xEF\xBB\xBF# für den Übungsraum\r\n\r\nLarkspin equalizer, version 1\r\n"
                      "80 Hz: 1.5 dB\r\n  170Hz :-2dB  \r\n\t1000 Hz:\t+15 dB"),
              wanted);
    EXPECT_EQ(gainsOf(titled("1000 Hz: 15 dB\n# louder\n80 Hz: 15e-1 dB\n170 Hz: -2.000 dB\n\n\n")), wanted);
}

TEST(EqualizerText, WithoutItsBandsGivesNothing)
{
    EXPECT_EQ(gainsOf(titled("")), refused);
    EXPECT_EQ(gainsOf(titled("80 Hz: 1 dB\n170 Hz: 1 dB\n")), refused);
    EXPECT_EQ(gainsOf(titled("80 Hz: 1 dB\n170 Hz: 1 dB\n1000 Hz: 1 dB\n80 Hz: 1 dB\n")), refused);
    EXPECT_EQ(gainsOf(titled("80 Hz: 1 dB\n170 Hz: 1 dB\n1000 Hz: 1 dB\n90 Hz: 1 dB\n")), refused);
    EXPECT_EQ(gainsOf(titled("80 Hz: 1 dB\n170 Hz: 1 dB\n170 Hz: 1 dB\n")), refused);
}

TEST(EqualizerText, OfAnotherKindOrVersionGivesNothing)
{
    const std::string bands = "80 Hz: 1 dB\n170 Hz: 1 dB\n1000 Hz: 1 dB\n";
    ASSERT_NE(gainsOf(titled(bands)), refused);
    for (const char* title : {"", "Larkspin equalizer, version 2\n", "Larkspin equalizer, version 10\n",
                              "Larkspin equalizer\n", "larkspin equalizer, version 1\n", "[Equalizer]\n"})
        EXPECT_EQ(gainsOf(title + bands), refused) << title;
    EXPECT_EQ(gainsOf(bands + titled("")), refused);
    EXPECT_EQ(gainsOf(titled("") + titled(bands)), refused);
}

TEST(EqualizerText, WithAGainThatIsNoneGivesNothing)
{
    for (const char* gain :
         {"nan",   "NaN", "-nan", "inf", "-inf", "infinity", "15.01", "-15.000002", "1e9", "1e99",
          "-1e99", "",    "loud", "0x1", "1,5",  "--1",      "+-1",   "1 2",        "1e",  "٣"})
        EXPECT_EQ(gainsOf(titled("80 Hz: " + std::string(gain) + " dB\n170 Hz: 1 dB\n1000 Hz: 1 dB\n")), refused)
            << gain;
}

TEST(EqualizerText, WithABrokenLineGivesNothing)
{
    for (const char* line :
         {"80 Hz 1 dB", "80: 1 dB", "80 Hz: 1", "80 Hz: 1 dB dB", "80 Hz: 1 dB # loud", "Hz: 1 dB", "nan Hz: 1 dB",
          "-80 Hz: 1 dB", "80 kHz: 1 dB", "80 Hz: 1 dBm", "80 hz: 1 db", "=", ":"})
        EXPECT_EQ(gainsOf(titled(std::string(line) + "\n170 Hz: 1 dB\n1000 Hz: 1 dB\n")), refused) << line;
}

TEST(EqualizerText, ThatIsNoUtf8GivesNothing)
{
    EXPECT_EQ(gainsOf(titled("# gr\xFC\xDF\n80 Hz: 1 dB\n170 Hz: 1 dB\n1000 Hz: 1 dB\n")), refused);
    EXPECT_EQ(gainsOf(titled("# \xC3\n80 Hz: 1 dB\n170 Hz: 1 dB\n1000 Hz: 1 dB\n")), refused);
    using namespace std::string_literals;
    EXPECT_EQ(gainsOf(titled("80 Hz: 1 dB\0\n170 Hz: 1 dB\n1000 Hz: 1 dB\n"s)), refused);
}

TEST(EqualizerText, OfAnEqualizerWithoutBandsIsItsFirstLine)
{
    EqualizerBands none;
    EXPECT_EQ(equalizerText(none), "Larkspin equalizer, version 1\n");
    EXPECT_TRUE(readEqualizerText(titled(""), none));
    EXPECT_FALSE(readEqualizerText("", none));
}

TEST(EqualizerText, GivesBackEachGainToTheBit)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<float> gain(-15, 15);
    std::vector<float> gains{0.0F,
                             -0.0F,
                             15.0F,
                             -15.0F,
                             std::nextafter(15.0F, 0.0F),
                             std::numeric_limits<float>::denorm_min(),
                             std::numeric_limits<float>::min(),
                             0.1F,
                             1e-10F};
    while (gains.size() < 20000)
        gains.push_back(gain(random));
    EqualizerBands saved = tenBands();
    EqualizerBands loaded = tenBands();
    for (std::size_t first = 0; first < gains.size(); first += 10) {
        for (std::size_t index = 0; index < 10; ++index)
            saved.band[index].gain = gains[first + index];
        const QByteArray text = equalizerText(saved);
        ASSERT_TRUE(readEqualizerText({text.data(), static_cast<std::size_t>(text.size())}, loaded))
            << text.toStdString();
        ASSERT_EQ(gainBits(loaded), gainBits(saved));
    }
}

TEST(EqualizerText, GivesBackOddCentresAsWell)
{
    EqualizerBands saved = bandsAt({0.1F, 33.333332F, 100000, 1e-7F, 3e38F});
    for (std::size_t index = 0; index < saved.count; ++index)
        saved.band[index].gain = static_cast<float>(index) - 2.5F;
    EqualizerBands loaded = bandsAt({0.1F, 33.333332F, 100000, 1e-7F, 3e38F});
    const QByteArray text = equalizerText(saved);
    ASSERT_TRUE(readEqualizerText({text.data(), static_cast<std::size_t>(text.size())}, loaded))
        << text.toStdString();
    EXPECT_EQ(gainBits(loaded), gainBits(saved));
}

// A text changed at random places is read whole or refused whole, whatever it has become.
TEST(EqualizerText, DamagedInThousandsOfWaysNeverGivesHalfOrImpossibleGains)
{
    std::mt19937 random(7);
    const auto below = [&random](std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(random);
    };
    EqualizerBands saved = tenBands();
    for (std::size_t index = 0; index < 10; ++index)
        saved.band[index].gain = static_cast<float>(index) * 1.37F - 5;
    const QByteArray bytes = equalizerText(saved);
    const std::string whole(bytes.data(), static_cast<std::size_t>(bytes.size()));
    const std::vector<std::string> pieces{"nan",
                                          "inf",
                                          "1e38",
                                          "-",
                                          "+",
                                          "\n",
                                          "\r\n",
                                          "#",
                                          "80 Hz: 1 dB\n",
                                          "\xEF\xBB\xBF",
                                          std::string(1, '\0'),
                                          "9999999999999999999999",
                                          "0x",
                                          " ",
                                          ":",
                                          "dB",
                                          "\xFF"};
    int taken = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text = whole;
        const std::size_t wounds = 1 + below(4);
        for (std::size_t wound = 0; wound < wounds && !text.empty(); ++wound) {
            const std::size_t place = below(text.size());
            const std::size_t length = below(std::min<std::size_t>(text.size() - place, 40) + 1);
            switch (below(6)) {
            case 0:
                text[place] = static_cast<char>(below(256));
                break;
            case 1:
                text[place] = static_cast<char>(text[place] ^ (1 << below(8)));
                break;
            case 2:
                text.erase(place, length);
                break;
            case 3:
                text.insert(place, pieces[below(pieces.size())]);
                break;
            case 4:
                text.insert(place, text.substr(below(text.size()), length));
                break;
            default:
                text.resize(place);
            }
        }
        EqualizerBands bands = tenBands();
        bands.band[3].gain = 3;
        const EqualizerBands before = bands;
        // Of its own size on the heap, so that a sanitizer sees the first byte read beyond it.
        const std::vector<char> tight(text.begin(), text.end());
        if (readEqualizerText({tight.data(), tight.size()}, bands)) {
            ++taken;
            for (std::size_t index = 0; index < bands.count; ++index)
                ASSERT_LE(std::abs(bands.band[index].gain), 15.0F) << text;
        } else {
            ASSERT_EQ(bands.band, before.band) << text;
        }
        ASSERT_EQ(bands.count, before.count);
        for (std::size_t index = 0; index < bands.count; ++index) {
            ASSERT_EQ(bands.band[index].frequency, before.band[index].frequency);
            ASSERT_EQ(bands.band[index].bandwidth, before.band[index].bandwidth);
        }
    }
    // Some damage is only another digit: both ways were walked.
    EXPECT_GT(taken, 100);
    EXPECT_LT(taken, 10000);
}

TEST(EqualizerFile, GivesBackWhatWasSaved)
{
    const SoundFiles files;
    const QString path = files.path("new/folders/für mich.edj");
    EqualizerBands saved = tenBands();
    saved.band[0].gain = 0.1F;
    saved.band[9].gain = -14.999999F;
    ASSERT_EQ(saveEqualizerFile(path, saved), EngineError::None);
    EqualizerBands loaded = tenBands();
    ASSERT_EQ(loadEqualizerFile(path, loaded), EngineError::None);
    EXPECT_EQ(gainBits(loaded), gainBits(saved));
    EXPECT_EQ(everythingIn(files.path("new/folders")), QStringList{"für mich.edj"});
    EXPECT_EQ(sound::test::contentOf(path), equalizerText(saved));
}

TEST(EqualizerFile, ReplacesAnOlderOneWhole)
{
    const SoundFiles files;
    const QString path = files.write("a.edj", QByteArray(100'000, 'x'));
    ASSERT_EQ(saveEqualizerFile(path, tenBands()), EngineError::None);
    EXPECT_EQ(sound::test::contentOf(path), equalizerText(tenBands()));
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"a.edj"});
}

TEST(EqualizerFile, OnAFullDiscIsToldAndLeavesTheOldFileUntouched)
{
    const SoundFiles files;
    const QString path = files.write("a.edj", "what was there before");
    {
        const DiscOf full(100);
        EXPECT_EQ(saveEqualizerFile(path, tenBands()), EngineError::FileCreationFailed);
    }
    EXPECT_EQ(sound::test::contentOf(path), "what was there before");
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"a.edj"});
}

TEST(EqualizerFile, WhereNoFileCanBeMadeIsToldSo)
{
    const SoundFiles files;
    const QString file = files.write("plain", "a file, no folder");
    const QString pipe = files.path("pipe.edj");
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString& path : {file + "/a.edj", files.folder(), pipe, QString("/dev/full"), QString("/proc/a.edj"),
                                QString(), files.path(QString(300, 'x')), files.path("a") + QChar::Null + "b.edj"})
        EXPECT_EQ(saveEqualizerFile(path, tenBands()), EngineError::FileCreationFailed) << path.toStdString();
    EXPECT_EQ(sound::test::contentOf(file), "a file, no folder");
    EXPECT_EQ(everythingIn(files.folder()), QStringList({"pipe.edj", "plain"}));
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(pipe).constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

TEST(EqualizerFile, ThatIsNoRegularFileOrTooLargeChangesNothing)
{
    const SoundFiles files;
    const QString pipe = files.path("pipe.edj");
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const QString huge = files.path("huge.edj");
    const QByteArray text = equalizerText(threeBands());
    {
        QFile file(huge);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        ASSERT_TRUE(file.resize(qint64{1} << 40));
    }
    for (const QString& path :
         {pipe, huge, files.folder(), files.path("missing.edj"), QString("/dev/zero"), QString(),
          files.write("empty.edj", ""), files.write("long.edj", text + QByteArray(65536, '\n')),
          files.write("binary.edj", QByteArray(4096, '\0'))}) {
        EqualizerBands bands = threeBands();
        EXPECT_EQ(loadEqualizerFile(path, bands), EngineError::InvalidEqualizerFile) << path.toStdString();
        EXPECT_EQ(bands.band, threeBands().band) << path.toStdString();
    }
}

TEST(EqualizerFile, OfTheGreatestLengthIsRead)
{
    const SoundFiles files;
    const QByteArray text = equalizerText(threeBands());
    EqualizerBands bands = bandsAt({80, 170, 1000});
    const QString path = files.write("a.edj", text + QByteArray(65536 - text.size(), '\n'));
    EXPECT_EQ(loadEqualizerFile(path, bands), EngineError::None);
    EXPECT_EQ(bands.band, threeBands().band);
}

}  // namespace
