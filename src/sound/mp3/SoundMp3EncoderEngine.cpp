#include "sound/mp3/SoundMp3EncoderEngine.h"

#include <chrono>
#include <optional>

namespace sound {

using namespace std::chrono_literals;

namespace {

constexpr auto encodingWatchInterval = 10ms;

constexpr int worstVbrQuality = 9;

// No frame of an MP3 stream has fewer or more.
constexpr int lowestBitrate = 8;
constexpr int highestBitrate = 320;

void setWithin(std::optional<int>& property, int value, int least, int most)
{
    if (value >= least && value <= most)
        property = value;
}

}  // namespace

SoundMp3EncoderEngine::SoundMp3EncoderEngine()
{
    watch.setInterval(encodingWatchInterval);
    connect(&watch, &QTimer::timeout, this, [this] { watchEncoding(); });
}

SoundMp3EncoderEngine::~SoundMp3EncoderEngine() = default;

void SoundMp3EncoderEngine::Priority(int index)
{
    if (index >= ThreadPriority::idle && index <= ThreadPriority::timeCritical)
        order.priority = {index};
}

void SoundMp3EncoderEngine::Mode(short index)
{
    if (index >= 0 && index <= static_cast<short>(StereoMode::Mono))
        order.switches.stereoMode = static_cast<StereoMode>(index);
}

void SoundMp3EncoderEngine::Bitrate(int rate)
{
    setWithin(order.switches.bitrate, rate, lowestBitrate, highestBitrate);
}

void SoundMp3EncoderEngine::VbrQuality(int quality)
{
    setWithin(order.switches.vbrQuality, quality, 0, worstVbrQuality);
}

void SoundMp3EncoderEngine::MinVbrBitrate(int rate)
{
    setWithin(order.switches.leastBitrate, rate, lowestBitrate, highestBitrate);
}

void SoundMp3EncoderEngine::MaxVbrBitrate(int rate)
{
    setWithin(order.switches.largestBitrate, rate, lowestBitrate, highestBitrate);
}

bool SoundMp3EncoderEngine::Encode()
{
    if (!EncodingJob::isPossible(order))
        return false;
    waiting.push_back(order);
    if (!underWay)
        beginNext();
    return true;
}

void SoundMp3EncoderEngine::beginNext()
{
    if (waiting.empty()) {
        watch.stop();
        return;
    }
    percentTold = -1;
    underWay = std::make_unique<EncodingJob>(waiting.front());
    waiting.pop_front();
    watch.start();
}

// Whoever is told may destroy the engine: nothing comes behind that.
void SoundMp3EncoderEngine::watchEncoding()
{
    if (underWay->ended()) {
        const bool succeeded = underWay->succeeded();
        underWay.reset();
        beginNext();
        if (succeeded)
            emit EncodePercent(100);
        return;
    }
    const int percent = underWay->percent();
    if (percent != percentTold) {
        percentTold = percent;
        emit EncodePercent(percent);
    }
}

}  // namespace sound
