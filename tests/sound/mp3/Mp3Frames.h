#pragma once

#include <QByteArray>
#include <array>
#include <cstdint>
#include <vector>

/// What stands in an MP3 stream, read off its bits.
namespace sound::test {

class Bits
{
public:
    explicit Bits(const QByteArray& from)
        : bytes(from)
    {
    }

    unsigned take(int count)
    {
        unsigned number = 0;
        for (; count > 0; --count, ++place) {
            const unsigned byte = place / 8 < bytes.size() ? static_cast<std::uint8_t>(bytes[place / 8]) : 0U;
            number = number << 1 | (byte >> (7 - place % 8) & 1);
        }
        return number;
    }
    void skip(int count) { place += count; }

private:
    QByteArray bytes;
    qsizetype place = 0;
};

/// How many granules of each type of block a stream of MPEG 1 in two channels has: 2 are short blocks. Its first
/// frame is the info tag.
inline std::array<int, 4> blockTypes(const QByteArray& stream)
{
    constexpr std::array bitrates = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0};
    std::array<int, 4> types = {};
    for (qsizetype offset = 0; offset + 36 <= stream.size();) {
        Bits bits(stream.mid(offset, 36));
        if (bits.take(11) != 0x7FF || bits.take(2) != 3 || bits.take(2) != 1)
            break;
        const bool unprotected = bits.take(1) == 1;
        const int bitrate = bitrates[bits.take(4)];
        constexpr int rate = 44'100;
        if (bits.take(2) != 0)
            break;
        const auto padding = static_cast<int>(bits.take(1));
        const bool isTag = offset == 0;
        offset += 144'000 * bitrate / rate + padding;
        if (isTag)
            continue;
        bits.skip(9 + (unprotected ? 0 : 16) + 9 + 3 + 8);
        for (int granule = 0; granule < 4; ++granule) {
            bits.skip(12 + 9 + 8 + 4);
            const bool switched = bits.take(1) == 1;
            ++types[switched ? bits.take(2) : 0];
            bits.skip((switched ? 20 : 22) + 3);
        }
    }
    return types;
}

}  // namespace sound::test
