#include "sound/mp3/SoundMp3EncoderEngine.h"

#include "sound/DiscOf.h"
#include "sound/mp3/EncoderOnFiles.h"
#include "sound/mp3/Mp3Music.h"

#include <sys/resource.h>
#include <unistd.h>
#include <QCoreApplication>
#include <chrono>
#include <cmath>
#include <limits>
#include <thread>

using namespace sound;
using namespace sound::test;
using ::testing::ElementsAre;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

class SoundMp3EncoderEngineTest : public EncoderOnFiles
{
protected:
    /// A file with more silence than any encoding comes to the end of while a test runs. It takes no room on the
    /// disc.
    QString writeEndless(const QString& name) const
    {
        const QString path = files.write(name, riff(formChunk() + dataChunk({}, 0xFFFFFFFF), 0));
        EXPECT_TRUE(QFile::resize(path, qint64{1} << 40));
        return path;
    }

    /// Whether an encoding is in the middle of its file: the first percents come only hours after.
    bool isUnderWay()
    {
        return eventually([&] { return !percents.empty() && openInFolder() > 1; });
    }

    int openInFolder() const
    {
        const QDir descriptors("/proc/self/fd");
        int count = 0;
        for (const QString& number : descriptors.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot))
            count += QFile::symLinkTarget(descriptors.filePath(number)).startsWith(files.folder() + '/') ? 1 : 0;
        return count;
    }

    /// Encodes another file once all that has been asked for before is over.
    void waitForTheOthers()
    {
        const auto before = static_cast<int>(done());
        files.write("last.wav", musicWave(Keeping::Bits16, 8000, 1, 0.05));
        choose("last.wav", "last.mp3");
        ASSERT_TRUE(engine->Encode());
        ASSERT_TRUE(waitFor(before + 1));
        QFile::remove(files.path("last.wav"));
        QFile::remove(files.path("last.mp3"));
    }

    /// Whether nothing more is told, however long the event loop turns.
    bool staysQuiet()
    {
        const auto before = percents.size();
        for (int turn = 0; turn < 20; ++turn)
            QCoreApplication::processEvents();
        return percents.size() == before;
    }

    const QByteArray small = musicWave(Keeping::Bits16, 8000, 1);
};

TEST_F(SoundMp3EncoderEngineTest, ThePercentsRiseAndTheLastIsTheHundredThatComesWithTheFile)
{
    files.write("in.wav", musicWave(Keeping::Bits16, 44'100, 2, 20));
    choose("in.wav", "out.mp3");
    engine->HighQuality(true);
    std::vector<bool> fileThere;
    QObject::connect(engine.get(), &Mp3EncoderEngine::EncodePercent, [&, main = std::this_thread::get_id()](int) {
        EXPECT_EQ(std::this_thread::get_id(), main);
        fileThere.push_back(QFile::exists(output));
    });
    ASSERT_TRUE(engine->Encode());
    EXPECT_THAT(percents, ElementsAre());
    ASSERT_TRUE(waitFor(1));
    EXPECT_GE(percents.front(), 0);
    EXPECT_GE(percents.size(), 3U);
    EXPECT_EQ(std::adjacent_find(percents.begin(), percents.end(), std::greater_equal()), percents.end());
    EXPECT_EQ(percents.back(), 100);
    EXPECT_FALSE(fileThere.front());
    EXPECT_TRUE(fileThere.back());
    EXPECT_EQ(everything(), QStringList({"in.wav", "out.mp3"}));
    EXPECT_TRUE(staysQuiet());
}

TEST_F(SoundMp3EncoderEngineTest, AnEncodingThatIsAskedForDuringAnotherFollowsItWithThePropertiesOfItsCall)
{
    files.write("long.wav", musicWave(Keeping::Bits16, 44'100, 2, 3));
    files.write("short.wav", small);
    choose("long.wav", "one.mp3");
    ASSERT_TRUE(engine->Encode());
    choose("short.wav", "two.mp3");
    engine->Bitrate(32);
    ASSERT_TRUE(engine->Encode());
    choose("short.wav", "three.mp3");
    engine->Bitrate(64);
    ASSERT_TRUE(engine->Encode());
    engine->Mode(3);
    engine->RawInput(true);
    choose("nothing", "nothing.mp3");

    ASSERT_TRUE(waitFor(1));
    EXPECT_TRUE(QFile::exists(files.path("one.mp3")));
    ASSERT_TRUE(waitFor(3));
    EXPECT_TRUE(staysQuiet());
    EXPECT_EQ(everything(), QStringList({"long.wav", "one.mp3", "short.wav", "three.mp3", "two.mp3"}));

    // Each percent of each but once, and the hundred last.
    auto begin = percents.begin();
    for (int encoding = 0; encoding < 3; ++encoding) {
        const auto end = std::find(begin, percents.end(), 100) + 1;
        EXPECT_EQ(std::adjacent_find(begin, end, std::greater_equal()), end);
        begin = end;
    }
    EXPECT_EQ(begin, percents.end());

    engine = std::make_unique<SoundMp3EncoderEngine>();
    SoundMp3EncoderEngine alone;
    for (const auto& [name, bitrate] : {std::pair("two.mp3", 32), std::pair("three.mp3", 64)}) {
        bool there = false;
        QObject::connect(&alone, &Mp3EncoderEngine::EncodePercent, [&](int percent) { there = percent == 100; });
        alone.InputFile(files.path("short.wav"));
        alone.OutputFile(files.path("alone.mp3"));
        alone.Bitrate(bitrate);
        ASSERT_TRUE(alone.Encode());
        ASSERT_TRUE(eventually([&] { return there; }));
        alone.disconnect();
        EXPECT_EQ(contentOf(files.path(name)) == contentOf(files.path("alone.mp3")), true) << name;
    }
}

TEST_F(SoundMp3EncoderEngineTest, AnEncodingMayBeAskedForBySomeoneWhoIsTold)
{
    files.write("in.wav", small);
    choose("in.wav", "out.mp3");
    int asked = 0;
    QObject::connect(engine.get(), &Mp3EncoderEngine::EncodePercent, [&](int percent) {
        if (percent == 100 && ++asked < 3) {
            EXPECT_TRUE(engine->Encode());
        }
    });
    ASSERT_TRUE(engine->Encode());
    ASSERT_TRUE(waitFor(3));
    EXPECT_TRUE(staysQuiet());
    EXPECT_EQ(asked, 3);
}

TEST_F(SoundMp3EncoderEngineTest, AFileOfBeforeKeepsItsNameUntilTheNewOneIsWhole)
{
    files.write("in.wav", musicWave(Keeping::Bits16, 44'100, 2, 5));
    files.write("out.mp3", "what was there before");
    choose("in.wav", "out.mp3");
    std::vector<QByteArray> seen;
    QObject::connect(engine.get(), &Mp3EncoderEngine::EncodePercent, [&] { seen.push_back(contentOf(output)); });
    ASSERT_TRUE(engine->Encode());
    ASSERT_TRUE(waitFor(1));
    EXPECT_EQ(seen.front(), "what was there before");
    EXPECT_EQ(everything(), QStringList({"in.wav", "out.mp3"}));
    const QByteArray whole = contentOf(output);
    for (const QByteArray& content : seen)
        EXPECT_TRUE(content == "what was there before" || content == whole);
}

TEST_F(SoundMp3EncoderEngineTest, TheFolderOfTheOutputIsMade)
{
    files.write("in.wav", small);
    choose("in.wav", "new/folders/out.mp3");
    ASSERT_TRUE(engine->Encode());
    ASSERT_TRUE(waitFor(1));
    EXPECT_TRUE(QFile::exists(files.path("new/folders/out.mp3")));
}

TEST_F(SoundMp3EncoderEngineTest, DestroyedInTheMiddleItEndsSoonAndLeavesNothing)
{
    writeEndless("in.wav");
    files.write("out.mp3", "what was there before");
    choose("in.wav", "out.mp3");
    engine->HighQuality(true);
    ASSERT_TRUE(engine->Encode());
    ASSERT_TRUE(engine->Encode());
    ASSERT_TRUE(isUnderWay());
    const auto begin = Clock::now();
    engine.reset();
    // A machine that is busy otherwise takes its time; the encoding would take days.
    EXPECT_LT(Clock::now() - begin, 2s);
    EXPECT_EQ(everything(), QStringList({"in.wav", "out.mp3"}));
    EXPECT_EQ(contentOf(output), "what was there before");
    EXPECT_TRUE(staysQuiet());
}

TEST_F(SoundMp3EncoderEngineTest, ItMayBeDestroyedBySomeoneWhoIsTold)
{
    writeEndless("in.wav");
    choose("in.wav", "out.mp3");
    QObject::connect(engine.get(), &Mp3EncoderEngine::EncodePercent, [this] { engine.reset(); });
    ASSERT_TRUE(engine->Encode());
    ASSERT_TRUE(eventually([this] { return !engine; }));
    EXPECT_EQ(everything(), QStringList("in.wav"));

    engine = std::make_unique<SoundMp3EncoderEngine>();
    files.write("small.wav", small);
    choose("small.wav", "out.mp3");
    QObject::connect(engine.get(), &Mp3EncoderEngine::EncodePercent, [this](int percent) {
        if (percent == 100)
            engine.reset();
    });
    ASSERT_TRUE(engine->Encode());
    ASSERT_TRUE(engine->Encode());
    ASSERT_TRUE(eventually([this] { return !engine; }));
    EXPECT_TRUE(QFile::exists(output));
}

TEST_F(SoundMp3EncoderEngineTest, ADiscThatFillsUpLeavesWhatWasThere)
{
    files.write("in.wav", musicWave(Keeping::Bits16, 44'100, 2, 10));
    files.write("old.mp3", "what was there before");
    for (const char* name : {"old.mp3", "new.mp3"}) {
        choose("in.wav", name);
        const DiscOf full(100'000);
        ASSERT_TRUE(engine->Encode());
        waitForTheOthers();
    }
    EXPECT_EQ(done(), 2);
    EXPECT_EQ(everything(), QStringList({"in.wav", "old.mp3"}));
    EXPECT_EQ(contentOf(files.path("old.mp3")), "what was there before");
}

TEST_F(SoundMp3EncoderEngineTest, WhereNoOutputCanBeMadeNothingIsTold)
{
    files.write("in.wav", small);
    for (const QString& path : {files.path("in.wav/out.mp3"), QString("/proc/out.mp3"), QString(), files.folder(),
                                output + QChar(QChar::Null)}) {
        choose("in.wav", {});
        engine->OutputFile(path);
        ASSERT_TRUE(engine->Encode());
    }
    waitForTheOthers();
    EXPECT_EQ(done(), 1);
    EXPECT_EQ(everything(), QStringList("in.wav"));
}

TEST_F(SoundMp3EncoderEngineTest, AnInputThatCannotBeEncodedIsRefusedAtOnce)
{
    files.write("empty.wav", {});
    files.write("text.wav", "no sound");
    files.write("three.wav", riff(formChunk({.channels = 3}) + dataChunk(countingBytes(600))));
    for (const char* name : {"empty.wav", "text.wav", "three.wav", "not there.wav", ""}) {
        choose(name, "out.mp3");
        EXPECT_FALSE(engine->Encode()) << name;
    }
    choose("empty.wav", "out.mp3");
    engine->RawInput(true);
    EXPECT_FALSE(engine->Encode());
    EXPECT_TRUE(staysQuiet());
    EXPECT_THAT(percents, ElementsAre());
    EXPECT_EQ(everything(), QStringList({"empty.wav", "text.wav", "three.wav"}));
}

TEST_F(SoundMp3EncoderEngineTest, AnInputThatVanishesBeforeItsTurnIsPassedOver)
{
    writeEndless("long.wav");
    files.write("in.wav", small);
    choose("long.wav", "long.mp3");
    ASSERT_TRUE(engine->Encode());
    choose("in.wav", "out.mp3");
    ASSERT_TRUE(engine->Encode());
    ASSERT_TRUE(QFile::remove(files.path("in.wav")));
    // The one before fails as well: of its file nothing is left but the head.
    ASSERT_TRUE(isUnderWay());
    ASSERT_TRUE(QFile::resize(files.path("long.wav"), 1000));
    waitForTheOthers();
    EXPECT_EQ(done(), 1);
    EXPECT_EQ(everything(), QStringList("long.wav"));
}

TEST_F(SoundMp3EncoderEngineTest, AnOutputIsNeverPutOverItsInput)
{
    files.write("in.wav", small);
    const QByteArray path = QFile::encodeName(files.path("in.wav"));
    ASSERT_EQ(::symlink(path.constData(), QFile::encodeName(files.path("symbolic.wav")).constData()), 0);
    ASSERT_EQ(::link(path.constData(), QFile::encodeName(files.path("linked.wav")).constData()), 0);
    for (const QString& name : {QString("in.wav"), "../" + QDir(files.folder()).dirName() + "/in.wav",
                                QString("symbolic.wav"), QString("linked.wav")}) {
        choose("in.wav", name);
        EXPECT_FALSE(engine->Encode()) << name.toStdString();
    }
    EXPECT_TRUE(staysQuiet());
    EXPECT_EQ(contentOf(files.path("in.wav")), small);
}

TEST_F(SoundMp3EncoderEngineTest, NorWhereItsNameComesToMeanTheInputMeanwhile)
{
    const QByteArray sound = musicWave(Keeping::Bits16, 44'100, 2, 30);
    files.write("in.wav", sound);
    choose("in.wav", "out.mp3");
    engine->HighQuality(true);
    ASSERT_TRUE(engine->Encode());
    ASSERT_TRUE(isUnderWay());
    ASSERT_EQ(::link(QFile::encodeName(files.path("in.wav")).constData(), QFile::encodeName(output).constData()),
              0);
    waitForTheOthers();
    EXPECT_EQ(done(), 1);
    EXPECT_EQ(contentOf(output) == sound, true);
}

TEST_F(SoundMp3EncoderEngineTest, SoundFarBeyondFullScaleIsEncoded)
{
    QByteArray samples;
    std::minstd_rand random(1);
    for (int i = 0; i < 40'000; ++i) {
        const float loudest = std::numeric_limits<float>::max();
        const float value = i % 1000 < 500 ? loudest : static_cast<float>(random() % 65'536) - 32'768;
        samples += littleEndian(std::bit_cast<std::uint32_t>(i % 3 == 0 ? -value : value), 4);
    }
    files.write("in.wav", riff(formChunk(formOf(Keeping::Float32, 44'100, 2)) + dataChunk(samples)));
    choose("in.wav", "out.mp3");
    for (const int bitrate : {32, 128, 320}) {
        engine->Bitrate(bitrate);
        const QByteArray bytes = encoded();
        ASSERT_FALSE(bytes.isEmpty());
        for (const float sample : decodedByFfmpeg(output, 2))
            ASSERT_TRUE(std::isfinite(sample));
    }
    engine->UseVbr(true);
    EXPECT_FALSE(encoded().isEmpty());
}

TEST_F(SoundMp3EncoderEngineTest, ThePriorityIsThatOfTheThreadThatEncodesAndOfNoOther)
{
    const auto levelOf = [](id_t thread) { return ::getpriority(PRIO_PROCESS, thread); };
    const auto threads = [] { return QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot); };
    const auto self = static_cast<id_t>(::gettid());
    const int normal = levelOf(self);
    writeEndless("in.wav");
    const std::vector<int> changes = {19, 10, 5, 0, -5, -10, -15};
    for (int index = 0; index < 7; ++index) {
        const QStringList before = threads();
        SoundMp3EncoderEngine encoder;
        encoder.InputFile(files.path("in.wav"));
        encoder.OutputFile(output);
        encoder.Priority(index);
        encoder.Priority(7);
        encoder.Priority(-1);
        bool told = false;
        QObject::connect(&encoder, &Mp3EncoderEngine::EncodePercent, [&] { told = true; });
        ASSERT_TRUE(encoder.Encode());
        ASSERT_TRUE(eventually([&] { return told && openInFolder() > 1; }));
        QStringList added = threads();
        for (const QString& thread : before)
            added.removeAll(thread);
        // Others bring to the disc what it makes; it is there before them.
        ASSERT_FALSE(added.isEmpty());
        const auto isEarlier = [](const QString& a, const QString& b) { return a.toUInt() < b.toUInt(); };
        const int level = levelOf(std::min_element(added.begin(), added.end(), isEarlier)->toUInt());
        const int wanted = std::clamp(normal + changes[static_cast<std::size_t>(index)], -20, 19);
        if (index <= ThreadPriority::normal) {
            EXPECT_EQ(level, wanted) << index;
        } else {
            // What lies above is a privilege.
            EXPECT_LE(level, normal) << index;
            EXPECT_GE(level, wanted) << index;
        }
        EXPECT_EQ(levelOf(self), normal);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
