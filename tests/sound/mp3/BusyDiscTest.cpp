#include "sound/HandMadeWave.h"
#include "sound/mp3/EncoderOnFiles.h"

#include <sys/syscall.h>
#include <unistd.h>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

using namespace sound;
using namespace sound::test;
using namespace std::chrono_literals;

namespace {

/// Takes a file only once it is no longer busy.
class Disc
{
public:
    void getBusy()
    {
        const std::lock_guard lock(mutex);
        busy = true;
    }

    void getReady()
    {
        const std::lock_guard lock(mutex);
        busy = false;
        changed.notify_all();
    }

    void take()
    {
        std::unique_lock lock(mutex);
        ++waitingFiles;
        changed.wait(lock, [this] { return !busy; });
        --waitingFiles;
    }

    int waiting()
    {
        const std::lock_guard lock(mutex);
        return waitingFiles;
    }

    /// False where it is busy all that time.
    bool isReadyWithin(std::chrono::seconds time)
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, time, [this] { return !busy; });
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    bool busy = false;
    int waitingFiles = 0;
};

Disc disc;

}  // namespace

/// In place of the library's.
extern "C" int fsync(int file)
{
    disc.take();
    return static_cast<int>(::syscall(SYS_fsync, file));
}

namespace {

class BusyDisc : public EncoderOnFiles
{
protected:
    BusyDisc()
    {
        disc.getBusy();
        files.write("out.mp3", "what was there before");
    }

    ~BusyDisc() override
    {
        disc.getReady();
        EXPECT_TRUE(eventually([] { return disc.waiting() == 0; }));
    }

    void encodeUntilTheDiscHasToTake(std::chrono::seconds silence)
    {
        const QString input =
            files.write("in.wav", riff(formChunk({.channels = 1}) + dataChunk({}, 0xFFFFFFFF), 0));
        ASSERT_TRUE(QFile::resize(input, 44 + silence.count() * 44'100 * 2));
        choose("in.wav", "out.mp3");
        engine->Bitrate(320);
        engine->FastMode(true);
        ASSERT_TRUE(engine->Encode());
        ASSERT_TRUE(eventually([] { return disc.waiting() == 1; }));
    }

    void expectThatTheEngineDoesNotWaitForIt()
    {
        bool waited = false;
        std::thread patience([&waited] {
            waited = !disc.isReadyWithin(10s);
            disc.getReady();
        });
        engine.reset();
        EXPECT_EQ(disc.waiting(), 1);
        EXPECT_EQ(everything(), QStringList({"in.wav", "out.mp3"}));
        EXPECT_EQ(contentOf(output), "what was there before");
        disc.getReady();
        patience.join();
        EXPECT_FALSE(waited);
    }
};

TEST_F(BusyDisc, HoldsNobodyUpWhoGivesUpInTheMiddleOfASound)
{
    encodeUntilTheDiscHasToTake(10h);
    expectThatTheEngineDoesNotWaitForIt();
}

TEST_F(BusyDisc, HoldsNobodyUpWhoGivesUpAtTheEndOfASound)
{
    encodeUntilTheDiscHasToTake(1s);
    expectThatTheEngineDoesNotWaitForIt();
}

TEST_F(BusyDisc, GetsItsTimeFromWhoeverDoesNot)
{
    encodeUntilTheDiscHasToTake(1s);
    EXPECT_EQ(contentOf(output), "what was there before");
    EXPECT_EQ(done(), 0);
    disc.getReady();
    ASSERT_TRUE(waitFor(1));
    EXPECT_NE(contentOf(output), "what was there before");
}

}  // namespace
