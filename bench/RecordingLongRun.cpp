// A long recording, fed as fast as it is taken: whether each frame has found its way into the file.
//
// usage: recording_long_run MINUTES FILE.mp3|FILE.wav

#include "sound/device/CaptureRing.h"
#include "sound/media/DecodedSound.h"
#include "sound/recorder/RecordingThread.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <span>
#include <thread>
#include <vector>

using namespace sound;

namespace {

constexpr SampleRate captured{48000};
constexpr SampleRate written{44100};
constexpr FrameCount delivery{960};

/// Two seconds of two tones that swell and fade.
std::vector<float> twoSeconds()
{
    std::vector<float> samples;
    for (int frame = 0; frame < 2 * captured.hertz; ++frame) {
        const double time = static_cast<double>(frame) / captured.hertz;
        const double level = 0.4 + 0.3 * std::sin(time * 3.14159265358979);
        samples.push_back(static_cast<float>(level * std::sin(time * 2764.6)));
        samples.push_back(static_cast<float>(level * std::sin(time * 4146.9)));
    }
    return samples;
}

std::int64_t feed(CaptureRing& ring, RecordingThread& thread, std::int64_t frames)
{
    const std::vector<float> sound = twoSeconds();
    const auto step = static_cast<std::size_t>(delivery.value) * 2;
    const FrameCount plenty = framesIn(std::chrono::seconds{1}, captured);
    std::size_t place = 0;
    std::int64_t fed = 0;
    for (; fed < frames; fed += delivery.value) {
        while (ring.waiting() > plenty)
            std::this_thread::sleep_for(std::chrono::milliseconds{1});
        ring.push(std::span(sound).subspan(place, step));
        thread.reader().notify();
        place = (place + step) % sound.size();
    }
    return fed;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: recording_long_run MINUTES FILE.mp3|FILE.wav\n");
        return 2;
    }
    const std::int64_t frames = QString(argv[1]).toInt() * std::int64_t{60} * captured.hertz;
    const QString path = QString::fromLocal8Bit(argv[2]);
    const SoundFormat format = path.endsWith(".mp3") ? mp3Format(128'000) : wavFormat();

    CaptureRing ring{framesIn(std::chrono::seconds{2}, captured)};
    RecordingThread thread;
    thread.follow(&ring, captured);
    thread.begin(path, {format, written, 2});
    thread.follow(&ring, captured);  // returns when the file has been begun
    const auto begun = std::chrono::steady_clock::now();
    const std::int64_t fed = feed(ring, thread, frames);
    const bool recorded = thread.end();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begun;
    thread.follow(nullptr, captured);

    const OpenedSound opened = DecodedSound::open(path);
    const std::int64_t there = opened.sound ? opened.sound->length().value : 0;
    const std::int64_t due = fed * written.hertz / captured.hertz;
    std::printf("%s: %.1f s, %.0f times as fast as the sound\n", recorded ? "recorded" : "NOT recorded",
                taken.count(), static_cast<double>(fed) / captured.hertz / taken.count());
    std::printf("frames without room %lld, frames in the file %lld of %lld\n",
                static_cast<long long>(ring.lost().value), static_cast<long long>(there),
                static_cast<long long>(due));
    return recorded && ring.lost() == FrameCount{0} && there == due ? 0 : 1;
}
