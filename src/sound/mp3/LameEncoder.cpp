#include "sound/mp3/LameEncoder.h"

#include "sound/media/LameOpening.h"

#include <lame/lame.h>
#include <algorithm>
#include <mutex>
#include <utility>

namespace sound {
namespace {

/// LAME's full scale.
constexpr float lameFullScale = 32768;

/// Beyond this lies no sound, but what a damaged file holds. LAME reckons with squares of it.
constexpr float loudest = 16 * lameFullScale;

float toLame(float sample)
{
    return std::clamp(sample * lameFullScale, -loudest, loudest);
}

/// LAME's preset for speech: its mean bit rate in kbit/s. It is in mono.
constexpr int voicePreset = 56;

constexpr int highQuality = 2;
constexpr int fastQuality = 7;

void chooseStereoMode(lame_t lame, StereoMode mode)
{
    switch (mode) {
    case StereoMode::Stereo:
        lame_set_mode(lame, STEREO);
        return;
    case StereoMode::Joint:
        lame_set_mode(lame, JOINT_STEREO);
        return;
    case StereoMode::MiddleAndSide:
        lame_set_force_ms(lame, 1);
        lame_set_mode(lame, JOINT_STEREO);
        return;
    case StereoMode::Mono:
        lame_set_mode(lame, MONO);
        return;
    }
}

void chooseBitrate(lame_t lame, const Mp3Switches& switches)
{
    if (switches.variableBitrate) {
        // A voice keeps its mean bit rate: that varies too.
        if (lame_get_VBR(lame) == vbr_off)
            lame_set_VBR(lame, vbr_default);
        if (switches.vbrQuality)
            lame_set_VBR_q(lame, *switches.vbrQuality);
        if (switches.leastBitrate)
            lame_set_VBR_min_bitrate_kbps(lame, *switches.leastBitrate);
        if (switches.largestBitrate)
            lame_set_VBR_max_bitrate_kbps(lame, *switches.largestBitrate);
    } else if (switches.bitrate) {
        lame_set_brate(lame, *switches.bitrate);
        lame_set_VBR_min_bitrate_kbps(lame, *switches.bitrate);
    }
}

void chooseQuality(lame_t lame, const Mp3Switches& switches)
{
    if (switches.highQuality)
        lame_set_quality(lame, highQuality);
    if (switches.fast)
        lame_set_quality(lame, fastQuality);
    if (switches.allFrequencies) {
        lame_set_lowpassfreq(lame, -1);
        lame_set_highpassfreq(lame, -1);
    }
    if (switches.mixedBlockTypes)
        lame_set_allow_diff_short(lame, 1);
    if (switches.noShortBlocks)
        lame_set_no_short_blocks(lame, 1);
    if (switches.thresholdOfHearingOnly)
        lame_set_ATHonly(lame, 1);
}

/// As the program does with the same switches. A preset goes before what is asked for besides.
void choose(lame_t lame, const Mp3Switches& switches)
{
    if (switches.voiceMode) {
        lame_set_preset(lame, voicePreset);
        lame_set_mode(lame, MONO);
    }
    if (switches.stereoMode)
        chooseStereoMode(lame, *switches.stereoMode);
    if (switches.downmixToMono)
        lame_set_mode(lame, MONO);
    chooseBitrate(lame, switches);
    chooseQuality(lame, switches);
    lame_set_bWriteVbrTag(lame, switches.noInfoTag ? 0 : 1);
    lame_set_error_protection(lame, switches.checksum ? 1 : 0);
    lame_set_copyright(lame, switches.copyrighted ? 1 : 0);
    lame_set_original(lame, switches.notOriginal ? 0 : 1);
    // What the program does without being asked: the loudness for the tag, and no tags of its own.
    lame_set_findReplayGain(lame, 1);
    lame_set_write_id3tag_automatic(lame, 0);
}

void beQuiet(lame_t lame)
{
    lame_set_errorf(lame, nullptr);
    lame_set_msgf(lame, nullptr);
    lame_set_debugf(lame, nullptr);
}

}  // namespace

void LameEncoder::Closes::operator()(lame_global_struct* lame) const
{
    lame_close(lame);
}

std::unique_ptr<LameEncoder> LameEncoder::create(const Mp3Switches& switches, SampleRate rate, int channels)
{
    const std::lock_guard lock(lameOpening());
    std::unique_ptr<lame_global_struct, Closes> lame(lame_init());
    if (!lame)
        return nullptr;
    beQuiet(lame.get());
    choose(lame.get(), switches);
    if (lame_set_in_samplerate(lame.get(), rate.hertz) != 0 || lame_set_num_channels(lame.get(), channels) != 0 ||
        lame_init_params(lame.get()) != 0)
        return nullptr;
    return std::unique_ptr<LameEncoder>(new LameEncoder(std::move(lame), channels));
}

LameEncoder::LameEncoder(std::unique_ptr<lame_global_struct, Closes> ready, int channels)
    : lame(std::move(ready))
    , channelCount(channels)
    , blockLength{lame_get_framesize(lame.get())}
    , mostAtOnce(std::max(1, lame_get_maximum_number_of_samples(lame.get(), LAME_MAXMP3BUFFER)))
    , left(static_cast<std::size_t>(blockLength.value))
    , right(static_cast<std::size_t>(blockLength.value))
    , output(LAME_MAXMP3BUFFER)
{
}

bool LameEncoder::encode(std::span<const float> interleaved, std::vector<std::byte>& mp3)
{
    const std::size_t most = left.size() * static_cast<std::size_t>(channelCount);
    while (!interleaved.empty()) {
        const auto now = interleaved.first(std::min(most, interleaved.size()));
        if (!encodeBlock(now, mp3))
            return false;
        interleaved = interleaved.subspan(now.size());
    }
    return true;
}

bool LameEncoder::encodeBlock(std::span<const float> interleaved, std::vector<std::byte>& mp3)
{
    const std::size_t frames = interleaved.size() / static_cast<std::size_t>(channelCount);
    // In mono LAME looks at the left channel only.
    if (channelCount == 1) {
        std::ranges::transform(interleaved, left.begin(), toLame);
    } else {
        for (std::size_t frame = 0; frame < frames; ++frame) {
            left[frame] = toLame(interleaved[2 * frame]);
            right[frame] = toLame(interleaved[2 * frame + 1]);
        }
    }
    for (std::size_t done = 0; done < frames;) {
        const auto now = std::min(frames - done, static_cast<std::size_t>(mostAtOnce));
        if (!take(lame_encode_buffer_float(lame.get(), &left[done], &right[done], static_cast<int>(now),
                                           output.data(), static_cast<int>(output.size())),
                  mp3))
            return false;
        done += now;
    }
    return true;
}

bool LameEncoder::finish(std::vector<std::byte>& mp3)
{
    return take(lame_encode_flush(lame.get(), output.data(), static_cast<int>(output.size())), mp3);
}

std::span<const std::byte> LameEncoder::infoTag()
{
    const std::size_t size = lame_get_lametag_frame(lame.get(), output.data(), output.size());
    return std::as_bytes(std::span(output)).first(size <= output.size() ? size : 0);
}

/// @p size as LAME tells it: negative where it has failed.
bool LameEncoder::take(int size, std::vector<std::byte>& mp3)
{
    if (size < 0)
        return false;
    const auto made = std::as_bytes(std::span(output)).first(static_cast<std::size_t>(size));
    mp3.insert(mp3.end(), made.begin(), made.end());
    return true;
}

}  // namespace sound
