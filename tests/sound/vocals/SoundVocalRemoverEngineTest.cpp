#include "sound/vocals/SoundVocalRemoverEngine.h"

#include "sound/vocals/VocalFiles.h"

#include <gmock/gmock.h>
#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

using namespace sound;
using namespace sound::test;
using namespace std::chrono_literals;
using SoundFiles = sound::test::SoundFiles;
using Clock = std::chrono::steady_clock;

namespace {

template <typename Engine>
class VocalRemoverEngines : public ::testing::Test
{
protected:
    VocalRemoverEngines()
        : engine(std::make_unique<Engine>())
    {
        // Everything passes, so that an output tells which input it is of.
        engine->LowCutOff(8000);
        engine->HighCutOff(200);
    }

    void choose(const QString& input, const QString& output)
    {
        engine->InputFile(files.path(input));
        engine->OutputFile(files.path(output));
    }

    /// Has this done at each percent that is told.
    void atPercent(const std::function<void(short)>& work)
    {
        QObject::connect(engine.get(), &VocalRemoverEngine::ProcessPercent, work);
    }

    const SoundFiles files;
    std::unique_ptr<Engine> engine;
};

using Engines = ::testing::Types<SoundVocalRemoverEngine, SoundVocalRemoverExtendedEngine>;
TYPED_TEST_SUITE(VocalRemoverEngines, Engines);

TYPED_TEST(VocalRemoverEngines, DoTheWholeJobBeforeTheyReturn)
{
    const QByteArray sound = noisyWave(300'000);
    this->files.write("in.wav", sound);
    this->choose("in.wav", "out.wav");
    EXPECT_EQ(this->engine->RemoveVocals(), VocalRemoval::Done);
    EXPECT_EQ(contentOf(this->files.path("out.wav")), sound);
}

TYPED_TEST(VocalRemoverEngines, TellThePercentOnTheCallersThreadAndNeverBack)
{
    this->files.write("in.wav", noisyWave(1'000'000));
    this->choose("in.wav", "out.wav");
    std::vector<short> percents;
    this->atPercent([&, caller = std::this_thread::get_id()](short percent) {
        EXPECT_EQ(std::this_thread::get_id(), caller);
        percents.push_back(percent);
    });
    EXPECT_EQ(this->engine->RemoveVocals(), VocalRemoval::Done);
    ASSERT_FALSE(percents.empty());
    EXPECT_GE(percents.front(), 0);
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
    EXPECT_EQ(percents.back(), 100);
    EXPECT_EQ(std::count(percents.begin(), percents.end(), 100), 1);
}

TYPED_TEST(VocalRemoverEngines, TellThePercentOftenEnoughForAWindowToLive)
{
    endlessFile(this->files, "in.wav");
    this->choose("in.wav", "out.wav");
    std::vector<Clock::duration> waits;
    Clock::time_point last = Clock::now();
    this->atPercent([&](short) {
        const Clock::time_point now = Clock::now();
        waits.push_back(now - last);
        last = now;
        if (waits.size() == 9)
            this->engine->GiveUp();
    });
    EXPECT_EQ(this->engine->RemoveVocals(), VocalRemoval::GivenUp);
    // A machine that is busy otherwise is late now and then.
    ASSERT_GE(waits.size(), 9U);
    std::nth_element(waits.begin(), waits.begin() + 4, waits.begin() + 9);
    EXPECT_LE(waits[4], 30ms);
}

TYPED_TEST(VocalRemoverEngines, GiveUpOutOfTheMiddleAndLeaveNothing)
{
    endlessFile(this->files, "in.wav");
    this->files.write("out.wav", "what was there before");
    this->choose("in.wav", "out.wav");
    this->atPercent([&](short) { this->engine->GiveUp(); });
    EXPECT_EQ(this->engine->RemoveVocals(), VocalRemoval::GivenUp);
    EXPECT_EQ(everythingIn(this->files.folder()), QStringList{"in.wav"});
}

TYPED_TEST(VocalRemoverEngines, GiveUpAtTheLastPercentToo)
{
    this->files.write("in.wav", noisyWave(100));
    this->choose("in.wav", "out.wav");
    this->atPercent([&](short percent) {
        if (percent == 100)
            this->engine->GiveUp();
    });
    EXPECT_EQ(this->engine->RemoveVocals(), VocalRemoval::GivenUp);
    EXPECT_EQ(everythingIn(this->files.folder()), QStringList{"in.wav"});
}

TYPED_TEST(VocalRemoverEngines, HaveNothingToGiveUpWhileNoRemovalRuns)
{
    this->files.write("in.wav", noisyWave(100));
    this->choose("in.wav", "out.wav");
    this->engine->GiveUp();
    EXPECT_EQ(this->engine->RemoveVocals(), VocalRemoval::Done);
    this->engine->GiveUp();
    EXPECT_TRUE(QFile::exists(this->files.path("out.wav")));
}

TYPED_TEST(VocalRemoverEngines, KeepTheirSettingsFromOneRemovalToTheNext)
{
    const QByteArray sound = noisyWave(20'000);
    this->files.write("in.wav", sound);
    this->choose("in.wav", "out.wav");
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(this->engine->RemoveVocals(), VocalRemoval::Done);
        EXPECT_EQ(contentOf(this->files.path("out.wav")), sound);
        ASSERT_TRUE(QFile::remove(this->files.path("out.wav")));
    }
}

TYPED_TEST(VocalRemoverEngines, TellTheReasonOfARefusalAndNoPercent)
{
    this->files.write("in.wav", "no sound");
    this->choose("in.wav", "out.wav");
    std::vector<short> percents;
    this->atPercent([&](short percent) { percents.push_back(percent); });
    EXPECT_EQ(this->engine->RemoveVocals(), VocalRemoval::NotRiff);
    EXPECT_EQ(std::count(percents.begin(), percents.end(), 100), 0);
}

TYPED_TEST(VocalRemoverEngines, RemoveFromAnotherFileInTheMiddleOfARemoval)
{
    const QByteArray outer = noisyWave(200'000);
    const QByteArray inner = noisyWave(1000);
    this->files.write("outer.wav", outer);
    this->files.write("inner.wav", inner);
    this->choose("outer.wav", "out.wav");
    bool within = false;
    this->atPercent([&](short) {
        if (within)
            return;
        within = true;
        this->choose("inner.wav", "out.wav");
        EXPECT_EQ(this->engine->RemoveVocals(), VocalRemoval::Done);
        EXPECT_EQ(contentOf(this->files.path("out.wav")), inner);
    });
    EXPECT_EQ(this->engine->RemoveVocals(), VocalRemoval::Done);
    EXPECT_TRUE(within);
    EXPECT_EQ(contentOf(this->files.path("out.wav")), outer);
}

TYPED_TEST(VocalRemoverEngines, RemoveInTheMiddleOfTheRemovalOfAnotherEngine)
{
    SoundVocalRemoverExtendedEngine other;
    other.LowCutOff(1);
    other.HighCutOff(1);
    const QByteArray inner = noisyWave(1000);
    other.InputFile(this->files.write("inner.wav", inner));
    other.OutputFile(this->files.path("innerOut.wav"));
    endlessFile(this->files, "in.wav");
    this->choose("in.wav", "out.wav");
    this->atPercent([&](short) {
        EXPECT_EQ(other.RemoveVocals(), VocalRemoval::Done);
        this->engine->GiveUp();
    });
    EXPECT_EQ(this->engine->RemoveVocals(), VocalRemoval::GivenUp);
    EXPECT_EQ(contentOf(this->files.path("innerOut.wav")), inner);
    EXPECT_EQ(everythingIn(this->files.folder()), QStringList({"in.wav", "inner.wav", "innerOut.wav"}));
}

TYPED_TEST(VocalRemoverEngines, GiveUpAllRemovalsThatAreUnderWay)
{
    endlessFile(this->files, "in.wav");
    this->choose("in.wav", "out.wav");
    int depth = 0;
    VocalRemoval inner = VocalRemoval::Done;
    this->atPercent([&](short) {
        if (++depth == 1)
            inner = this->engine->RemoveVocals();
        else
            this->engine->GiveUp();
    });
    EXPECT_EQ(this->engine->RemoveVocals(), VocalRemoval::GivenUp);
    EXPECT_EQ(inner, VocalRemoval::GivenUp);
    EXPECT_EQ(everythingIn(this->files.folder()), QStringList{"in.wav"});
}

TYPED_TEST(VocalRemoverEngines, MayBeDestroyedInTheMiddleAndThenTellNothingMore)
{
    endlessFile(this->files, "in.wav");
    this->choose("in.wav", "out.wav");
    int told = 0;
    this->atPercent([&](short) {
        if (++told == 1) {
            EXPECT_EQ(this->engine->RemoveVocals(), VocalRemoval::GivenUp);
            return;
        }
        this->engine.reset();
    });
    EXPECT_EQ(this->engine->RemoveVocals(), VocalRemoval::GivenUp);
    EXPECT_EQ(told, 2);
    EXPECT_EQ(everythingIn(this->files.folder()), QStringList{"in.wav"});
}

}  // namespace
