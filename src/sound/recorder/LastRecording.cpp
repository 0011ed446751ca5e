#include "sound/recorder/LastRecording.h"

#include "sound/media/DecodedSound.h"

#include <chrono>
#include <utility>

namespace sound {

using namespace std::chrono_literals;

namespace {

constexpr auto watchInterval = 20ms;

}  // namespace

LastRecording::LastRecording(RenderThread::MakeOutput make)
    : makeOutput(std::move(make))
{
    watch.setInterval(watchInterval);
    watch.callOnTimeout([this] { follow(); });
}

LastRecording::~LastRecording() = default;

bool LastRecording::play(const QString& path, std::function<void()> ended)
{
    stop();
    OpenedSound opened = DecodedSound::open(path);
    if (!opened.sound || opened.sound->length() == FrameCount{0})
        return false;
    if (!player)
        player = std::make_unique<Player>(makeOutput);
    player->load(std::move(opened.sound));
    player->play();
    whenEnded = std::move(ended);
    watch.start();
    return true;
}

void LastRecording::stop()
{
    whenEnded = nullptr;
    if (player)
        player->close();
}

void LastRecording::follow()
{
    const bool finished = player->takeFinished();
    if (!player->busy())
        watch.stop();
    if (!finished || !whenEnded)
        return;
    const auto tell = whenEnded;
    stop();
    tell();
}

}  // namespace sound
