#include "sound/player/Player.h"

#include "sound/media/SampleSource.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace sound {

using namespace std::chrono_literals;

Player::Player(const RenderThread::MakeOutput& makeOutput)
    : renderThread(makeOutput)
{
    renderThread.publish(wantedSettings);
}

Player::~Player() = default;

void Player::publish()
{
    mainThread.expect();
    ++transport.serial;
    renderThread.publish(transport);
}

void Player::jumpTo(FramePosition place)
{
    ++transport.jump;
    transport.position = place;
    atEnd = false;
    if (loaded)
        loaded->source().willReadNear(place);
}

void Player::load(std::shared_ptr<const SampleSource> source)
{
    auto next = std::make_unique<LoadedSound>(std::move(source), ++soundSerial);
    if (loaded)
        leaving.push_back(std::move(loaded));
    loaded = std::move(next);
    transport.sound = loaded.get();
    transport.window = wholeOf(loaded->source().length());
    transport.motion = Transport::Motion::Stopped;
    jumpTo({0});
    publish();
}

void Player::close()
{
    if (!loaded)
        return;
    leaving.push_back(std::move(loaded));
    transport.sound = nullptr;
    transport.window = {};
    transport.motion = Transport::Motion::Stopped;
    jumpTo({0});
    publish();
}

const SampleSource* Player::source() const
{
    return loaded ? &loaded->source() : nullptr;
}

std::shared_ptr<const SampleSource> Player::share() const
{
    return loaded ? loaded->share() : nullptr;
}

void Player::play()
{
    // The end may have been heard, but not taken notice of yet.
    const bool justEnded = transport.motion == Transport::Motion::Playing && status() == PlayerEngine::Stopped;
    if (atEnd || justEnded)
        jumpTo({0});
    transport.window = wholeOf(loaded->source().length());
    transport.motion = Transport::Motion::Playing;
    publish();
}

bool Player::playWindow(int begin, int end, bool repeats)
{
    const SampleRate rate = loaded->source().rate();
    const FramePosition soundEnd = endOf(loaded->source().length());
    PlayWindow window;
    window.begin = std::clamp(frameAt(Milliseconds{begin}, rate), FramePosition{0}, soundEnd);
    window.end = std::clamp(frameAt(Milliseconds{end}, rate), FramePosition{0}, soundEnd);
    window.repeats = repeats;
    if (window.length().value <= 0) {
        stop();
        return false;
    }
    transport.window = window;
    transport.motion = Transport::Motion::Playing;
    jumpTo(window.begin);
    publish();
    return true;
}

void Player::pause()
{
    transport.motion = Transport::Motion::Paused;
    publish();
}

void Player::resume()
{
    transport.motion = Transport::Motion::Playing;
    publish();
}

void Player::stop()
{
    // Said again and again while a sound stands at its beginning: nothing new for the render thread.
    if (transport.motion == Transport::Motion::Stopped && !atEnd && transport.position == FramePosition{0})
        return;
    transport.window = wholeOf(loaded->source().length());
    transport.motion = Transport::Motion::Stopped;
    jumpTo({0});
    publish();
}

void Player::seek(int milliseconds)
{
    const FramePosition soundEnd = endOf(loaded->source().length());
    FramePosition place =
        std::clamp(frameAt(Milliseconds{milliseconds}, loaded->source().rate()), FramePosition{0}, soundEnd);
    if (transport.window.repeats && place >= transport.window.end)
        place = transport.window.begin;
    jumpTo(place);
    publish();
}

// Whether what is heard now came from the last jump, or still from before.
bool Player::isHeard(const Snapshot& snapshot) const
{
    return snapshot.jump == transport.jump;
}

PlayerEngine::Status Player::status() const
{
    if (!loaded)
        return PlayerEngine::Empty;
    if (transport.motion == Transport::Motion::Paused)
        return PlayerEngine::Paused;
    if (transport.motion == Transport::Motion::Stopped || atEnd)
        return PlayerEngine::Stopped;
    const Snapshot& snapshot = renderThread.snapshot();
    return isHeard(snapshot) && snapshot.ended ? PlayerEngine::Stopped : PlayerEngine::Playing;
}

double Player::heardFrame() const
{
    mainThread.expect();
    const Snapshot& snapshot = renderThread.snapshot();
    if (!isHeard(snapshot))
        return static_cast<double>(transport.position.value);
    const auto age = std::clamp<std::chrono::duration<double>>(std::chrono::steady_clock::now() - snapshot.moment,
                                                               0s, AudioOutput::longestDelay);
    double running = snapshot.position + age.count() * snapshot.framesASecond;
    if (!snapshot.window.repeats)
        running = std::min(running, static_cast<double>(snapshot.window.end.value));
    return foldedIn(snapshot.window, running);
}

int Player::position() const
{
    if (!loaded)
        return 0;
    const FramePosition frame{std::max<std::int64_t>(0, std::llround(heardFrame()))};
    return static_cast<int>(millisecondsAt(frame, loaded->source().rate()).count());
}

int Player::duration() const
{
    if (!loaded)
        return 0;
    return static_cast<int>(durationOf(loaded->source().length(), loaded->source().rate()).count());
}

void Player::change(const Settings& settings)
{
    mainThread.expect();
    wantedSettings = settings;
    renderThread.publish(wantedSettings);
}

bool Player::takeFinished()
{
    const Snapshot& snapshot = renderThread.snapshot();
    std::erase_if(leaving, [&](const std::unique_ptr<LoadedSound>& sound) {
        return snapshot.sound > sound->serial() || (snapshot.sound == 0 && snapshot.serial == transport.serial);
    });
    const bool finished =
        loaded && transport.motion == Transport::Motion::Playing && !atEnd && isHeard(snapshot) && snapshot.ended;
    if (finished) {
        atEnd = true;
        transport.motion = Transport::Motion::Stopped;
        // Not published: the render thread knows best that its sound has ended.
    }
    return finished;
}

bool Player::busy() const
{
    return !leaving.empty() || (loaded && transport.motion == Transport::Motion::Playing);
}

Peaks Player::takePeaks()
{
    return renderThread.takePeaks();
}

}  // namespace sound
