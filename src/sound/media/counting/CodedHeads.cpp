#include "sound/media/counting/CodedHeads.h"

#include <array>

namespace sound {

std::optional<CodedFrame> readMpegHead(std::span<const std::uint8_t> bytes)
{
    if (bytes.size() < 4 || bytes[0] != 0xFF || (bytes[1] & 0xE0) != 0xE0)
        return std::nullopt;
    const int version = bytes[1] >> 3 & 3;  // 3 is MPEG 1, 2 is MPEG 2, 0 is MPEG 2.5
    const int layer = 4 - (bytes[1] >> 1 & 3);
    const std::size_t bitRateCode = bytes[2] >> 4;
    const std::size_t rateCode = bytes[2] >> 2 & 3;
    if (version == 1 || layer == 4 || bitRateCode == 0 || bitRateCode == 15 || rateCode == 3)
        return std::nullopt;

    using Rates = std::array<int, 15>;
    static constexpr Rates kilobitsLayer1 = {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448};
    static constexpr Rates kilobitsLayer2 = {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384};
    static constexpr Rates kilobitsLayer3 = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
    static constexpr Rates kilobitsLowLayer1 = {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256};
    static constexpr Rates kilobitsLow = {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
    static constexpr std::array<int, 3> hertz = {44100, 48000, 32000};

    const bool low = version != 3;
    const Rates& kilobits = low ? (layer == 1 ? kilobitsLowLayer1 : kilobitsLow)
                                : (layer == 1   ? kilobitsLayer1
                                   : layer == 2 ? kilobitsLayer2
                                                : kilobitsLayer3);
    const int rate = hertz[rateCode] >> (version == 3 ? 0 : version == 2 ? 1 : 2);
    const int padding = bytes[2] >> 1 & 1;
    const int bitRate = kilobits[bitRateCode] * 1000;
    int size = 0;
    int frames = 0;
    if (layer == 1) {
        frames = 384;
        size = (12 * bitRate / rate + padding) * 4;
    } else {
        frames = layer == 3 && low ? 576 : 1152;
        size = frames / 8 * bitRate / rate + padding;
    }
    const auto kind = static_cast<std::uint32_t>(version << 8 | layer << 4) | static_cast<std::uint32_t>(rateCode);
    return CodedFrame{size, frames, rate, kind};
}

std::optional<CodedFrame> readAdtsHead(std::span<const std::uint8_t> bytes)
{
    static constexpr std::array<int, 13> hertz = {96000, 88200, 64000, 48000, 44100, 32000, 24000,
                                                  22050, 16000, 12000, 11025, 8000,  7350};
    constexpr int headSize = 7;
    if (bytes.size() < headSize || bytes[0] != 0xFF || (bytes[1] & 0xF6) != 0xF0)
        return std::nullopt;
    const std::size_t rateCode = bytes[2] >> 2 & 0x0F;
    const int size = (bytes[3] & 3) << 11 | bytes[4] << 3 | bytes[5] >> 5;
    if (rateCode >= hertz.size() || size < headSize)
        return std::nullopt;
    return CodedFrame{size, 1024, hertz[rateCode], static_cast<std::uint32_t>(rateCode)};
}

std::optional<CodedFrame> readAc3Head(std::span<const std::uint8_t> bytes)
{
    static constexpr std::array<int, 19> kilobits = {32,  40,  48,  56,  64,  80,  96,  112, 128, 160,
                                                     192, 224, 256, 320, 384, 448, 512, 576, 640};
    static constexpr std::array<int, 3> hertz = {48000, 44100, 32000};
    if (bytes.size() < 6 || bytes[0] != 0x0B || bytes[1] != 0x77)
        return std::nullopt;
    const std::size_t rateCode = bytes[4] >> 6;
    const std::size_t sizeCode = bytes[4] & 0x3F;
    const int identification = bytes[5] >> 3;
    if (rateCode == 3 || sizeCode >= 2 * kilobits.size() || identification > 8)
        return std::nullopt;
    // Each frame lasts 1536 samples and is made of 16-bit words; at 44.1 kHz they do not come out even.
    const int words = kilobits[sizeCode / 2] * 1000 / 16 * 1536 / hertz[rateCode] +
                      (rateCode == 1 ? static_cast<int>(sizeCode & 1) : 0);
    return CodedFrame{std::int64_t{words} * 2, 1536, hertz[rateCode], static_cast<std::uint32_t>(rateCode)};
}

}  // namespace sound
