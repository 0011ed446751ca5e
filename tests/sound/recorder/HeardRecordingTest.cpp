// The recorder engine on the sound server: what is recorded there is read back and compared with what was played.

#include "sound/recorder/SoundRecorderEngine.h"

#include "sound/Eventually.h"
#include "sound/RealTimeMain.h"
#include "sound/Signals.h"
#include "sound/SoundFiles.h"
#include "sound/device/PrivatePulse.h"
#include "sound/device/PulseSources.h"
#include "sound/device/SystemOutput.h"
#include "sound/recorder/FakeDevices.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

using namespace sound;
using namespace sound::test;
using ::testing::HasSubstr;

namespace {

constexpr SampleRate rate{48000};
constexpr int leftHertz = 997;
constexpr int rightHertz = 1499;
constexpr int otherHertz = 2003;

/// A second after which the same may follow: half of full scale on the left, a quarter on the right, in the steps
/// of 16 bits.
std::vector<float> secondOf(int left, int right)
{
    const auto value = [](double level, int hertz, int frame) {
        const double angle = 2 * std::numbers::pi * hertz * frame / rate.hertz;
        return static_cast<float>(std::round(level * 32768 * std::sin(angle)) / 32768);
    };
    std::vector<float> samples;
    for (int frame = 0; frame < rate.hertz; ++frame) {
        samples.push_back(value(0.5, left, frame));
        samples.push_back(value(0.25, right, frame));
    }
    return samples;
}

/// How many frames from the first on are the tone, one after the other; where in the tone it begins is not asked.
std::size_t framesOfTone(const std::vector<float>& recorded)
{
    const std::vector<float> tone = secondOf(leftHertz, rightHertz);
    std::vector<float> twice = tone;
    twice.insert(twice.end(), tone.begin(), tone.end());
    constexpr std::size_t probe = 400;
    const std::int64_t first = recorded.size() < probe ? -1 : frameOfMatch(twice, recorded.data(), probe);
    std::size_t sample = 0;
    while (first >= 0 && sample < recorded.size() &&
           recorded[sample] == tone[(static_cast<std::size_t>(first) * 2 + sample) % tone.size()])
        ++sample;
    return sample / 2;
}

struct Format
{
    const char* file;
    int number;
    int rate;
    int channels;
    double bitRate;    // of MP3 and WMA
    int surplus;       // frames at most that its coding adds and does not tell of
    double level;      // of what was recorded
    double tolerance;  // decibels of that
};

constexpr double exact = 0.1;
constexpr double lossy = 0.3;
constexpr double lameTurnsDownTo = 0.95;  // at bit rates as low as that

const Format formats[] = {
    {"a.wav", RecorderEncodeFormats::Wav, 48000, 2, 0, 0, 1, exact},
    {"b.wav", RecorderEncodeFormats::Wav, 22500, 1, 0, 0, 1, exact},
    {"c.mp3", RecorderEncodeFormats::Mp3, 44100, 2, 320'000, 0, 1, lossy},
    {"d.mp3", RecorderEncodeFormats::Mp3, 44100, 1, 128'000, 0, lameTurnsDownTo, lossy},
    {"e.wma", RecorderEncodeFormats::Wma, 44100, 2, 128'000, 2 * 2048, 1, lossy},
    {"f.ogg", RecorderEncodeFormats::OggVorbis, 48000, 2, 0, 0, 1, lossy},
    {"g.aac", RecorderEncodeFormats::Aac, 44100, 2, 0, 2 * 1024, 1, lossy},
    {"h.m4a", RecorderEncodeFormats::Aac, 44100, 1, 0, 1024, 1, lossy},
};

/// One channel without its first and its last tenth of a second.
std::vector<float> innerPart(const std::vector<float>& sound, const Format& format, int channel)
{
    const std::vector<float> mono = channelOf(sound, format.channels, channel);
    const std::ptrdiff_t margin = format.rate / 10;
    return {mono.begin() + margin, mono.end() - margin};
}

/// What was recorded for so long.
void expectTone(const std::vector<float>& sound, const Format& format, double milliseconds)
{
    constexpr double tolerance = 50;  // milliseconds, of a busy machine
    const double perMillisecond = format.rate / 1000.0;
    const double length = static_cast<double>(sound.size()) / format.channels / perMillisecond;
    EXPECT_GE(length, milliseconds - tolerance);
    EXPECT_LE(length, milliseconds + tolerance + format.surplus / perMillisecond);
    ASSERT_GE(length, 400);
    const double level = format.channels == 1 ? format.level / 2 : format.level;  // the mean of left and right
    const std::vector<float> left = innerPart(sound, format, 0);
    const std::vector<float> right = innerPart(sound, format, format.channels - 1);
    const SampleRate written{format.rate};
    EXPECT_NEAR(measuredFrequency(left, written, leftHertz), leftHertz, 0.1);
    EXPECT_NEAR(measuredFrequency(right, written, rightHertz), rightHertz, 0.1);
    EXPECT_NEAR(decibels(amplitudeAt(left, written, leftHertz), 0.5 * level), 0, format.tolerance);
    EXPECT_NEAR(decibels(amplitudeAt(right, written, rightHertz), 0.25 * level), 0, format.tolerance);
}

class HeardRecordingTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(pulse.start());
        addMicrophone();
        writeTone("tone.raw", leftHertz, rightHertz);
        playing = playInto("mic", files.path("tone.raw"), rate);
        engine.EncodeFormats().FormatForRecording(RecorderEncodeFormats::Wav);
        engine.EncodeFormats().SampleRate(rate.hertz);
        engine.EncodeFormats().Channels(2);
        QObject::connect(&engine, &RecorderEngine::RecorderSessionDone, [this] { ++done; });
        QObject::connect(&engine, &RecorderEngine::RecordingPeaks, [this](short left, short right) {
            ++reports;
            leftPeak = left;
            rightPeak = right;
        });
        engine.VuMeter().StartVuMeter(0);
        engine.InitRecorder(0, 0, -1);
        openDevice("Monitor of MIC");
        ASSERT_TRUE(toneIsHeard());
    }

    void addMicrophone()
    {
        microphone = addOutput("mic", rate);
        pactl({"load-module", "module-remap-source", "master=mic.monitor", "source_name=line",
               "source_properties=device.description=LINE"});
    }

    // Longer than any test.
    void writeTone(const QString& name, int left, int right)
    {
        const std::vector<float> second = secondOf(left, right);
        const QByteArray bytes(reinterpret_cast<const char*>(second.data()),
                               static_cast<qsizetype>(second.size() * sizeof(float)));
        files.write(name, bytes.repeated(30));
    }

    void openDevice(const QString& name)
    {
        for (short device = 0; device < engine.GetRecordingDeviceCount(); ++device) {
            if (engine.GetRecordingDeviceName(device) == name)
                opened = device;
        }
        ASSERT_EQ(engine.GetRecordingDeviceName(opened), name);
        ASSERT_EQ(engine.OpenRecordingDevice(opened), 0);
    }

    bool toneIsHeard()
    {
        return eventually([this] { return std::abs(leftPeak - 16384) < 50; });
    }

    void letPass(int milliseconds)
    {
        QElapsedTimer passed;
        passed.start();
        eventually([&] { return passed.elapsed() >= milliseconds; });
    }

    /// That a tone which began while this was recorded is in it to its end, for a fifth of a second at least.
    void expectBegunTone(const QString& name) const
    {
        std::vector<float> sound = recorded(name);
        const std::int64_t first = firstSound(sound);
        ASSERT_GE(first, 0);
        sound.erase(sound.begin(), sound.begin() + first * 2);
        EXPECT_GE(sound.size() / 2, 48U * 200);
        EXPECT_EQ(framesOfTone(sound), sound.size() / 2);
    }

    QString path(const QString& name) const { return files.path(name); }
    std::vector<float> recorded(const QString& name) const { return decodedByFfmpeg(path(name), 2); }
    qint64 sizeOf(const QString& name) const { return QFile(path(name)).size(); }

    /// Starts, and lets so much of the tone go into the file.
    void recordTo(const QString& name, int milliseconds)
    {
        engine.StartRecordingToFile(path(name));
        ASSERT_TRUE(eventually([&] { return QFile::exists(path(name)); }));
        letPass(milliseconds);
    }

    SoundFiles files;
    PrivatePulse pulse{rate};
    QString microphone;
    std::unique_ptr<ChildProcess> playing;
    int done = 0;
    int reports = 0;
    short leftPeak = 0;
    short rightPeak = 0;
    short opened = -1;
    std::vector<bool> awakeness;
    SoundRecorderEngine engine{RecorderParts{std::make_unique<PulseSources>(), std::make_unique<NoBarMeters>(),
                                             [] { return std::make_unique<SystemOutput>(); },
                                             [this](bool awake) { awakeness.push_back(awake); }}};
};

TEST_F(HeardRecordingTest, EveryFormatHoldsTheToneAtItsFrequencyAndLevelAndForAsLongAsItWasRecorded)
{
    for (const Format& format : formats) {
        SCOPED_TRACE(format.file);
        const QString name(format.file);
        RecorderEncodeFormats& chosen = engine.EncodeFormats();
        chosen.FormatForRecording(format.number);
        chosen.SampleRate(format.rate);
        chosen.Channels(format.channels);
        chosen.Mp3Settings().Bitrate(format.bitRate);
        chosen.WmaSettings().Bitrate(format.bitRate);
        chosen.AacSettings().Mp4Container(name.endsWith(".m4a"));
        QElapsedTimer sinceStart;
        sinceStart.start();
        recordTo(name, 600);
        const auto length = static_cast<double>(sinceStart.elapsed());
        engine.StopRecording();
        expectTone(decodedByFfmpeg(path(name), format.channels), format, length);
    }
    EXPECT_EQ(done, 0);
}

TEST_F(HeardRecordingTest, ASourceThatIsNoMonitorIsRecordedBitForBitOverTwentyFiles)
{
    openDevice("LINE");
    recordTo("0.wav", 100);
    for (int number = 1; number <= 20; ++number) {
        const QString next = QString("%1.wav").arg(number);
        engine.ContinueRecordingToFile(path(next));
        ASSERT_TRUE(eventually([&] { return QFile::exists(path(next)); }));
        letPass(20 + number);
    }
    engine.StopRecording();
    std::vector<float> all;
    for (int number = 0; number <= 20; ++number) {
        const std::vector<float> part = recorded(QString("%1.wav").arg(number));
        all.insert(all.end(), part.begin(), part.end());
    }
    EXPECT_GE(all.size() / 2, 48U * 400);
    EXPECT_EQ(framesOfTone(all), all.size() / 2);
    EXPECT_EQ(awakeness, (std::vector<bool>{true, false}));
}

TEST_F(HeardRecordingTest, WithoutARecordingThePeaksAreThoseOfTheTone)
{
    for (int report = 0; report < 10; ++report) {
        const int before = reports;
        ASSERT_TRUE(eventually([&] { return reports > before; }));
        EXPECT_NEAR(leftPeak, 16384, 40);
        EXPECT_NEAR(rightPeak, 8192, 20);
    }
}

TEST_F(HeardRecordingTest, TheLevelIsTheSourcesOwnAndHeardInThePeaks)
{
    EXPECT_EQ(engine.GetRecordingInputVolume(opened, 0), 100);
    engine.SetRecordingInputVolume(opened, 0, 50);
    EXPECT_THAT(pactl({"get-source-volume", "mic.monitor"}), HasSubstr("front-left: 32768 "));
    EXPECT_THAT(pactl({"get-source-volume", "line"}), HasSubstr("front-left: 65536 "));
    EXPECT_EQ(engine.GetRecordingInputVolume(opened, 0), 50);
    // The server's scale is cubic: half is an eighth of the amplitude.
    EXPECT_TRUE(eventually([this] { return std::abs(leftPeak - 2048) < 10 && std::abs(rightPeak - 1024) < 10; }));
    engine.SetRecordingDeviceInputEnabled(0, false);
    EXPECT_TRUE(eventually([this] { return leftPeak == 0 && rightPeak == 0; }));
    engine.SetRecordingDeviceInputEnabled(0, true);
    engine.SetRecordingInputVolume(opened, 0, 100);
    EXPECT_TRUE(toneIsHeard());
}

TEST_F(HeardRecordingTest, AnUnpluggedSourceEndsTheRecordingWholeAndIsNotReplacedUntilItIsBack)
{
    writeTone("other.raw", otherHertz, otherHertz);
    const auto other = playInto("speakers", path("other.raw"), rate);
    recordTo("a.wav", 500);
    pactl({"unload-module", microphone});
    EXPECT_TRUE(eventually([this] { return done == 1; }));
    const std::vector<float> sound = recorded("a.wav");
    EXPECT_GE(sound.size() / 2, 48U * 400);
    EXPECT_EQ(framesOfTone(sound), sound.size() / 2);

    engine.StartRecordingToFile(path("b.wav"));
    EXPECT_TRUE(eventually([this] { return done == 2; }));
    EXPECT_FALSE(QFile::exists(path("b.wav")));

    addMicrophone();
    playing = playInto("mic", path("tone.raw"), rate);
    ASSERT_TRUE(toneIsHeard());
    recordTo("c.wav", 300);
    engine.StopRecording();
    expectBegunTone("c.wav");
    EXPECT_EQ(done, 2);
    EXPECT_EQ(awakeness, (std::vector<bool>{true, false, true, false}));
}

TEST_F(HeardRecordingTest, AServerThatDiesEndsTheRecordingWholeAndIsUsedWhenItIsBack)
{
    recordTo("a.wav", 500);
    pulse.kill();
    EXPECT_TRUE(eventually([this] { return done == 1; }));
    const std::vector<float> sound = recorded("a.wav");
    EXPECT_GE(sound.size() / 2, 48U * 400);
    EXPECT_EQ(framesOfTone(sound), sound.size() / 2);

    engine.StartRecordingToFile(path("b.wav"));
    EXPECT_TRUE(eventually([this] { return done == 2; }));
    ASSERT_TRUE(pulse.start());
    addMicrophone();
    playing = playInto("mic", path("tone.raw"), rate);
    recordTo("c.wav", 0);
    ASSERT_TRUE(toneIsHeard());
    letPass(300);
    engine.StopRecording();
    expectBegunTone("c.wav");
    EXPECT_EQ(done, 2);
    EXPECT_FALSE(QFile::exists(path("b.wav")));
}

TEST_F(HeardRecordingTest, AServerThatIsHeldUpForAMomentIsWaitedFor)
{
    recordTo("a.wav", 300);
    pulse.suspend();
    letPass(1500);
    const qint64 before = sizeOf("a.wav");
    pulse.resume();
    ASSERT_TRUE(eventually([&] { return sizeOf("a.wav") > before + 4 * rate.hertz / 2; }));
    EXPECT_TRUE(eventually([&] {
        const std::vector<float> soFar = recorded("a.wav");
        const std::vector<float> end(soFar.end() - 2 * rate.hertz / 4, soFar.end());
        return framesOfTone(end) == end.size() / 2;
    }));
    engine.StopRecording();
    EXPECT_EQ(done, 0);
    EXPECT_GE(framesOfTone(recorded("a.wav")), 48U * 200);
}

TEST_F(HeardRecordingTest, TheReplayIsHeardBitForBitAndItsEndTold)
{
    recordTo("a.wav", 600);
    engine.StopRecording();
    const std::vector<float> sound = recorded("a.wav");
    ASSERT_TRUE(pulse.startRecording());
    engine.RecordedSound().PlayRecordedSound();
    EXPECT_TRUE(eventually([this] { return done == 1; }));
    const auto soFar = static_cast<std::int64_t>(pulse.recordedSoFar().size() / 2);
    ASSERT_TRUE(pulse.waitForFrames(soFar + rate.hertz / 5));
    const std::vector<float> heard = pulse.stopRecording();
    const std::int64_t first = frameOfMatch(heard, sound.data(), 400);
    ASSERT_GE(first, 0);
    ASSERT_GE(heard.size(), static_cast<std::size_t>(first) * 2 + sound.size());
    EXPECT_TRUE(std::equal(sound.begin(), sound.end(), heard.begin() + first * 2));
    const std::vector<float> behind(heard.begin() + first * 2 + static_cast<std::ptrdiff_t>(sound.size()),
                                    heard.end());
    EXPECT_EQ(firstSound(behind), -1);
}

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return sound::test::runRealTimeTests(argc, argv);
}
