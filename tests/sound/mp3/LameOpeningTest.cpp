#include "sound/media/LameOpening.h"

#include "sound/SoundFiles.h"
#include "sound/media/SoundFileWriter.h"
#include "sound/mp3/LameEncoder.h"

#include <gtest/gtest.h>
#include <chrono>
#include <future>

using namespace sound;
using namespace std::chrono_literals;

namespace {

/// Whether it opens an encoder, but only when the others are ready with theirs.
template <typename Open>
bool opensAfterTheOthers(const Open& open)
{
    std::unique_lock others(lameOpening());
    std::future<bool> opened = std::async(std::launch::async, open);
    // Many times as long as it takes alone.
    const bool waits = opened.wait_for(100ms) == std::future_status::timeout;
    others.unlock();
    return opened.get() && waits;
}

TEST(LameOpening, IsOneAtATimeInTheWholeProgram)
{
    const sound::test::SoundFiles files;
    EXPECT_TRUE(opensAfterTheOthers([] { return LameEncoder::create({}, {44'100}, 2) != nullptr; }));
    EXPECT_TRUE(opensAfterTheOthers([&files] {
        return SoundFileWriter::create(files.path("a.mp3"), mp3Format(128'000), {44'100}, 2).writer != nullptr;
    }));
}

}  // namespace
