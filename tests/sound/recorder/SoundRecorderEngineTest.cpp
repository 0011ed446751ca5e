#include "sound/recorder/SoundRecorderEngine.h"

#include "sound/Comparison.h"
#include "sound/Eventually.h"
#include "sound/SoundFiles.h"
#include "sound/device/AudioOutput.h"
#include "sound/recorder/FakeDevices.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QFile>
#include <QStringList>
#include <limits>
#include <vector>

using namespace sound;
using namespace sound::test;

namespace {

constexpr SampleRate rate{48000};

std::vector<float> stretch(int milliseconds, int level)
{
    std::vector<float> samples;
    for (int frame = 0; frame < milliseconds * 48; ++frame) {
        samples.push_back(static_cast<float>(level + frame % 50) / 32768);
        samples.push_back(static_cast<float>(-level - frame % 47) / 32768);
    }
    return samples;
}

/// Plays much faster than the sound.
class QuickOutput : public AudioOutput
{
public:
    void open(SampleRate) override {}
    void start() override {}
    void stop() override {}
    void wait(std::chrono::milliseconds) override
    {
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
        room = {4096};
    }
    void wake() override {}
    FrameCount wanted() override { return room; }
    void write(const float*, FrameCount count) override { room = room - count; }
    FrameCount delay() override { return {0}; }

private:
    FrameCount room{4096};
};

class SoundRecorderEngineTest : public ::testing::Test
{
protected:
    SoundRecorderEngineTest()
    {
        CaptureDevice card{"card", "Sound card", rate, 70, {{"mic", "Microphone"}, {"line", "Line in"}}, 1};
        CaptureDevice monitor{"monitor", "Monitor of speakers", rate, 100, {{{}, "Monitor of speakers"}}, 0};
        devices.present = {card, monitor};
        makeEngine();
    }

    void makeEngine()
    {
        engine = std::make_unique<SoundRecorderEngine>(RecorderParts{
            std::make_unique<FakeCaptureDevices>(devices), std::make_unique<NoBarMeters>(),
            [] { return std::make_unique<QuickOutput>(); }, [this](bool awake) { awakeness.push_back(awake); }});
        engine->EncodeFormats().FormatForRecording(RecorderEncodeFormats::Wav);
        engine->EncodeFormats().SampleRate(rate.hertz);
        engine->EncodeFormats().Channels(2);
        QObject::connect(engine.get(), &RecorderEngine::RecorderSessionDone, [this] { ++done; });
        QObject::connect(engine.get(), &RecorderEngine::SoundDetected, [this] {
            ++sounds;
            if (onSound)
                onSound();
        });
        QObject::connect(engine.get(), &RecorderEngine::SilenceDetected, [this] {
            ++silences;
            if (onSilence)
                onSilence();
        });
        QObject::connect(engine.get(), &RecorderEngine::RecordingPeaks, [this](short left, short right) {
            highest = std::max(highest, left);
            highestRight = std::max(highestRight, right);
        });
    }

    void open()
    {
        engine->InitRecorder(0, 0, -1);
        ASSERT_EQ(engine->OpenRecordingDevice(0), 0);
    }

    bool taken() const
    {
        return eventually([this] { return devices.ring->waiting() == FrameCount{0}; });
    }

    QString path(const QByteArray& name) const { return files.path(name); }
    std::vector<float> recorded(const QByteArray& name) const { return decodedByFfmpeg(path(name), 2); }

    SoundFiles files;
    FakeDevices devices;
    std::vector<bool> awakeness;
    int done = 0;
    int sounds = 0;
    int silences = 0;
    short highest = 0;
    short highestRight = 0;
    std::function<void()> onSound;
    std::function<void()> onSilence;
    std::unique_ptr<SoundRecorderEngine> engine;
};

TEST_F(SoundRecorderEngineTest, DevicesAndTheirLinesAreToldAsTheyAre)
{
    EXPECT_EQ(engine->GetRecordingDeviceCount(), 0);
    engine->InitRecorder(0, 0, -1);
    EXPECT_EQ(engine->GetRecordingDeviceCount(), 2);
    EXPECT_EQ(engine->GetRecordingDeviceName(0), "Sound card");
    EXPECT_EQ(engine->GetRecordingDeviceName(1), "Monitor of speakers");
    EXPECT_EQ(engine->GetRecordingInputCount(0), 2);
    EXPECT_EQ(engine->GetRecordingInputName(0, 0), "Microphone");
    EXPECT_EQ(engine->GetRecordingInputName(0, 1), "Line in");
    EXPECT_EQ(engine->GetCurrentRecordingInput(0), 1);
    EXPECT_EQ(engine->GetRecordingInputVolume(0, 1), 70);
    EXPECT_EQ(engine->GetRecordingInputCount(1), 1);
    EXPECT_EQ(engine->GetRecordingInputName(1, 0), "Monitor of speakers");
}

TEST_F(SoundRecorderEngineTest, LineAndLevelAndSilenceReachTheDevice)
{
    open();
    engine->SelectRecordingInput(0, 0);
    engine->SetRecordingInputVolume(0, 0, 33);
    engine->SetRecordingDeviceInputEnabled(0, false);
    engine->SetRecordingDeviceInputEnabled(0, true);
    EXPECT_EQ(devices.changes,
              (QStringList{"capture card", "card line mic", "card volume 33", "card muted", "card heard"}));
}

TEST_F(SoundRecorderEngineTest, IndicesThatNameNothingAreAnsweredAndChangeNothing)
{
    engine->InitRecorder(0, 0, -1);
    for (const short device : {short{-1}, short{2}, std::numeric_limits<short>::max()}) {
        EXPECT_EQ(engine->GetRecordingDeviceName(device), "");
        EXPECT_NE(engine->OpenRecordingDevice(device), 0);
        EXPECT_EQ(engine->GetRecordingInputCount(device), 0);
        EXPECT_EQ(engine->GetRecordingInputName(device, 0), "");
        EXPECT_EQ(engine->GetCurrentRecordingInput(device), 0);
        EXPECT_EQ(engine->GetRecordingInputVolume(device, 0), 0);
        engine->SelectRecordingInput(device, 0);
        engine->SetRecordingInputVolume(device, 0, 5);
    }
    for (const short input : {short{-1}, short{2}}) {
        EXPECT_EQ(engine->GetRecordingInputName(0, input), "");
        EXPECT_EQ(engine->GetRecordingInputVolume(0, input), 0);
        engine->SelectRecordingInput(0, input);
        engine->SetRecordingInputVolume(0, input, 5);
    }
    EXPECT_TRUE(devices.changes.isEmpty());
}

TEST_F(SoundRecorderEngineTest, ADeviceThatCannotBeUsedLeavesTheOneBefore)
{
    open();
    devices.unusable = "monitor";
    EXPECT_NE(engine->OpenRecordingDevice(1), 0);
    engine->StartRecordingToFile(path("a.wav"));
    EXPECT_TRUE(eventually([&] { return QFile::exists(path("a.wav")); }));
    const auto sound = stretch(300, 5000);
    devices.give(sound);
    engine->StopRecording();
    expectSame(recorded("a.wav"), sound, 2, rate);
}

TEST_F(SoundRecorderEngineTest, TheOpenDeviceIsNotOpenedAgain)
{
    open();
    EXPECT_EQ(engine->OpenRecordingDevice(0), 0);
    EXPECT_EQ(devices.changes, QStringList{"capture card"});
}

TEST_F(SoundRecorderEngineTest, MeteringRunsFromItsStartOnWithoutARecording)
{
    open();
    devices.give(stretch(20, 32767));
    ASSERT_TRUE(taken());
    QCoreApplication::processEvents();
    EXPECT_EQ(highest, 0);
    engine->VuMeter().StartVuMeter(0);
    devices.give(std::vector<float>{0.5F, 1.0F, -0.5F, 0.0F});
    EXPECT_TRUE(eventually([&] { return highestRight == 32767; }));
}

TEST_F(SoundRecorderEngineTest, ASecondStartGoesOnInTheNewFileWithoutLosingOrDoublingAFrame)
{
    open();
    const auto first = stretch(400, 5000);
    const auto second = stretch(400, -7000);
    engine->StartRecordingToFile(path("first.wav"));
    ASSERT_TRUE(eventually([&] { return QFile::exists(path("first.wav")); }));
    devices.give(first);
    engine->StartRecordingToFile(path("second.wav"));
    ASSERT_TRUE(eventually([&] { return QFile::exists(path("second.wav")); }));
    devices.give(second);
    engine->StopRecording();
    expectSame(recorded("first.wav"), first, 2, rate);
    expectSame(recorded("second.wav"), second, 2, rate);
    EXPECT_EQ(awakeness, (std::vector<bool>{true, false}));
    QCoreApplication::processEvents();
    EXPECT_EQ(done, 0);
}

TEST_F(SoundRecorderEngineTest, ASideOfEightPiecesBecomesEightFilesCutToTheFrame)
{
    open();
    engine->EnableSilenceDetection(true);
    engine->SilenceThreshold(3000);
    engine->SilenceMinimumDuration(2000);
    int parts = 1;
    onSilence = [&] { engine->ContinueRecordingToFile(path(QString("%1.wav").arg(++parts).toUtf8())); };
    engine->StartRecordingToFile(path("1.wav"));
    ASSERT_TRUE(eventually([&] { return QFile::exists(path("1.wav")); }));
    const auto piece = stretch(500, 9000);
    const auto pause = stretch(2500, 0);
    for (int number = 1; number <= 8; ++number) {
        devices.give(piece);
        if (number < 8)
            devices.give(pause);
        ASSERT_TRUE(eventually([&] { return sounds == number && silences == std::min(number, 7); }));
    }
    engine->StopRecording();
    EXPECT_EQ(parts, 8);
    EXPECT_EQ(recorded("1.wav").size() / 2, 2500U * 48);
    for (int number = 2; number <= 7; ++number)
        EXPECT_EQ(recorded(QString("%1.wav").arg(number).toUtf8()).size() / 2, 3000U * 48) << number;
    EXPECT_EQ(recorded("8.wav").size() / 2, 1000U * 48);
}

TEST_F(SoundRecorderEngineTest, TheFirstSoundBeginsTheRecordingItAsksFor)
{
    open();
    engine->EnableSilenceDetection(true);
    engine->SilenceThreshold(3000);
    engine->SilenceMinimumDuration(0);
    engine->StartRecordingToFile(path("waiting.wav"));
    ASSERT_TRUE(eventually([&] { return QFile::exists(path("waiting.wav")); }));
    onSound = [&] {
        engine->EnableSilenceDetection(false);
        engine->StartRecordingToFile(path("take.wav"));
    };
    devices.give(stretch(1500, 0));
    ASSERT_TRUE(taken());
    EXPECT_EQ(sounds, 0);
    devices.give(stretch(200, 9000));
    ASSERT_TRUE(eventually([&] { return sounds == 1; }));
    devices.give(stretch(400, 0));
    engine->StopRecording();
    const auto take = recorded("take.wav");
    EXPECT_EQ(take.size() / 2, (100U + 200 + 400) * 48);
    EXPECT_EQ(take[100 * 48 * 2], 9000 / 32768.0F);
}

TEST_F(SoundRecorderEngineTest, ToContinueWithoutARecordingDoesNothing)
{
    open();
    engine->ContinueRecordingToFile(path("a.wav"));
    engine->StopRecording();
    QCoreApplication::processEvents();
    EXPECT_FALSE(QFile::exists(path("a.wav")));
    EXPECT_EQ(done, 0);
}

TEST_F(SoundRecorderEngineTest, ADeviceThatGoesEndsTheRecordingWholeAndIsNotReplaced)
{
    open();
    engine->StartRecordingToFile(path("a.wav"));
    ASSERT_TRUE(eventually([&] { return QFile::exists(path("a.wav")); }));
    const auto sound = stretch(500, 5000);
    devices.give(sound);
    devices.present.erase(devices.present.begin());
    devices.gone = true;
    EXPECT_TRUE(eventually([&] { return done == 1; }));
    expectSame(recorded("a.wav"), sound, 2, rate);
    EXPECT_EQ(awakeness, (std::vector<bool>{true, false}));

    engine->StartRecordingToFile(path("b.wav"));
    EXPECT_EQ(done, 1);
    EXPECT_TRUE(eventually([&] { return done == 2; }));
    EXPECT_FALSE(QFile::exists(path("b.wav")));
    EXPECT_EQ(devices.changes, QStringList{"capture card"});
}

TEST_F(SoundRecorderEngineTest, WithTheDeviceBackTheNextRecordingWorks)
{
    open();
    devices.gone = true;
    engine->StartRecordingToFile(path("a.wav"));
    ASSERT_TRUE(eventually([&] { return QFile::exists(path("a.wav")); }));
    devices.give(stretch(100, 5000));
    engine->StopRecording();
    EXPECT_EQ(recorded("a.wav").size() / 2, 4800U);
    EXPECT_EQ(devices.changes, (QStringList{"capture card", "capture card"}));
}

TEST_F(SoundRecorderEngineTest, WithoutADeviceARecordingEndsAtOnceFromTheEventLoop)
{
    devices.present.clear();
    engine->InitRecorder(0, 0, -1);
    engine->StartRecordingToFile(path("a.wav"));
    EXPECT_EQ(done, 0);
    EXPECT_TRUE(eventually([&] { return done == 1; }));
    EXPECT_FALSE(QFile::exists(path("a.wav")));
}

TEST_F(SoundRecorderEngineTest, MissingFoldersAreMadeAndAFileThatCannotBeMadeEndsTheRecording)
{
    open();
    engine->StartRecordingToFile(path("new/folders/a.wav"));
    ASSERT_TRUE(eventually([&] { return QFile::exists(path("new/folders/a.wav")); }));
    const auto sound = stretch(100, 5000);
    devices.give(sound);
    engine->ContinueRecordingToFile("/proc/no/b.wav");
    EXPECT_TRUE(eventually([&] { return done == 1; }));
    expectSame(recorded("new/folders/a.wav"), sound, 2, rate);
    EXPECT_EQ(awakeness, (std::vector<bool>{true, false}));
}

TEST_F(SoundRecorderEngineTest, ChannelsThatMakeNoSenseAreKeptUntilARecordingWouldUseThem)
{
    open();
    engine->EncodeFormats().Channels(0);
    engine->EncodeFormats().Channels(1);
    engine->StartRecordingToFile(path("a.wav"));
    ASSERT_TRUE(eventually([&] { return QFile::exists(path("a.wav")); }));
    devices.give(stretch(100, 5000));
    engine->StopRecording();
    EXPECT_EQ(decodedByFfmpeg(path("a.wav"), 1).size(), 4800U);
    engine->EncodeFormats().Channels(0);
    engine->StartRecordingToFile(path("b.wav"));
    EXPECT_TRUE(eventually([&] { return done == 1; }));
    EXPECT_FALSE(QFile::exists(path("b.wav")));
}

TEST_F(SoundRecorderEngineTest, TheLastRecordingIsReplayedAndItsEndTold)
{
    open();
    engine->StartRecordingToFile(path("a.wav"));
    ASSERT_TRUE(eventually([&] { return QFile::exists(path("a.wav")); }));
    devices.give(stretch(300, 5000));
    engine->StopRecording();
    engine->RecordedSound().PlayRecordedSound();
    EXPECT_TRUE(eventually([&] { return done == 1; }));
    engine->RecordedSound().PlayRecordedSound();
    engine->RecordedSound().StopRecordedSound();
    engine->RecordedSound().PlayRecordedSound();
    EXPECT_TRUE(eventually([&] { return done == 2; }));
}

TEST_F(SoundRecorderEngineTest, NothingToReplayIsTold)
{
    engine->RecordedSound().PlayRecordedSound();
    EXPECT_EQ(done, 0);
    EXPECT_TRUE(eventually([&] { return done == 1; }));
    engine->RecordedSound().StopRecordedSound();
}

TEST_F(SoundRecorderEngineTest, ItsEndClosesTheFileWithAllThatWasCaptured)
{
    open();
    engine->StartRecordingToFile(path("a.wav"));
    ASSERT_TRUE(eventually([&] { return QFile::exists(path("a.wav")); }));
    const auto sound = stretch(900, 5000);
    devices.give(sound);
    engine.reset();
    expectSame(recorded("a.wav"), sound, 2, rate);
    EXPECT_EQ(awakeness, (std::vector<bool>{true, false}));
}

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
