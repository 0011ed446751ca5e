#include "sound/burner/WriterReplies.h"

#include <initializer_list>
#include <string>

namespace writerreplies {

namespace {

constexpr int cdR = 0x09;
constexpr int dvdR = 0x11;

void put(Bytes& bytes, std::size_t at, std::uint64_t value, int size)
{
    for (int i = 0; i < size; ++i)
        bytes[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(value >> (8 * (size - 1 - i)));
}

void append(Bytes& bytes, std::initializer_list<int> more)
{
    for (const int byte : more)
        bytes.push_back(static_cast<std::uint8_t>(byte));
}

// Minutes, seconds and frames; those of the lead-in count from the far end of a hundred minutes.
void putTime(Bytes& bytes, std::size_t at, int sector)
{
    const int frames = sector + (sector < -150 ? 450150 : 150);
    put(bytes, at, static_cast<unsigned>(frames / 75 / 60), 1);
    put(bytes, at + 1, static_cast<unsigned>(frames / 75 % 60), 1);
    put(bytes, at + 2, static_cast<unsigned>(frames % 75), 1);
}

}  // namespace

Bytes inquiry()
{
    Bytes reply{5, 0x80, 5, 2, 31, 0, 0, 0};
    const std::string who = "LARKTESTEMULATED WRITER 1.00";
    reply.insert(reply.end(), who.begin(), who.end());
    return reply;
}

Bytes modeSense(int page, const WriterAbilities& writer)
{
    if (page == 0x05) {
        Bytes reply(8 + 52);
        put(reply, 0, reply.size() - 2, 2);
        put(reply, 8, 0x0532, 2);
        return reply;
    }
    if (page != 0x2a)
        return {};
    constexpr int fastest = 8467;
    Bytes reply(8 + 36);
    put(reply, 0, reply.size() - 2, 2);
    put(reply, 8, 0x2a22, 2);
    reply[8 + 2] = 3;
    reply[8 + 3] = static_cast<std::uint8_t>((writer.writesCds ? 3 : 0) | (writer.writesTests ? 4 : 0));
    reply[8 + 4] = static_cast<std::uint8_t>((writer.protectsFromUnderrun ? 0x80 : 0) | 1);
    put(reply, 8 + 8, fastest, 2);
    put(reply, 8 + 12, 2048, 2);
    put(reply, 8 + 14, fastest, 2);
    put(reply, 8 + 18, writer.writesCds ? fastest : 0, 2);
    put(reply, 8 + 28, writer.writesCds ? fastest : 0, 2);
    put(reply, 8 + 30, writer.writesCds ? 1 : 0, 2);
    put(reply, 8 + 34, fastest, 2);
    return reply;
}

Bytes configuration(int profile, const WriterAbilities& writer)
{
    Bytes reply(8);
    append(reply, {0, 0, 3, 8, 0, cdR, profile == cdR ? 1 : 0, 0, 0, dvdR, profile == dvdR ? 1 : 0, 0});
    const int abilities = (writer.protectsFromUnderrun ? 0x40 : 0) | (writer.writesTests ? 4 : 0) |
                          (writer.writesSubchannels ? 1 : 0);
    append(reply, {0, 0x2d, 1, 4, abilities, 0, 0, 0});
    append(reply, {0, 0x2e, 1, 4, abilities | 0x20, 0, 8, 0});
    append(reply, {1, 0x07, 1, 4, 0x1f, 0, 0, 0});
    put(reply, 0, reply.size() - 4, 4);
    put(reply, 6, static_cast<unsigned>(profile), 2);
    return reply;
}

Bytes discInformation(bool blank, int leadIn, int latestLeadOut)
{
    Bytes reply(34);
    put(reply, 0, 32, 2);
    reply[2] = blank ? 0 : 0x0e;
    reply[3] = reply[4] = reply[5] = reply[6] = 1;
    reply[7] = 0x20;
    putTime(reply, 17, leadIn);
    putTime(reply, 21, latestLeadOut);
    return reply;
}

Bytes trackInformation(int next, int room)
{
    Bytes reply(36);
    put(reply, 0, 34, 2);
    reply[2] = reply[3] = 1;
    reply[6] = 0x40;
    reply[7] = 1;
    put(reply, 8, static_cast<unsigned>(next), 4);
    put(reply, 12, static_cast<unsigned>(next), 4);
    put(reply, 16, static_cast<unsigned>(room), 4);
    return reply;
}

// In full: the first track, the last one, the lead-out, and the one track that there is.
Bytes tableOfContents(int format, int leadOut)
{
    if (format != 2)
        return {};
    Bytes reply{0, 0, 1, 1};
    append(reply, {1, 0x10, 0, 0xa0, 0, 0, 0, 0, 1, 0, 0});
    append(reply, {1, 0x10, 0, 0xa1, 0, 0, 0, 0, 1, 0, 0});
    append(reply, {1, 0x10, 0, 0xa2, 0, 0, 0, 0, 0, 0, 0});
    putTime(reply, reply.size() - 3, leadOut);
    append(reply, {1, 0x10, 0, 1, 0, 0, 0, 0, 0, 2, 0});
    put(reply, 0, reply.size() - 2, 2);
    return reply;
}

Bytes performance(int type, int sectors, const WriterAbilities& writer)
{
    Bytes reply(8);
    if (type == 3)
        for (const int writing : writer.measuredSpeeds) {
            const std::size_t at = reply.size();
            reply.resize(at + 16);
            put(reply, at + 4, static_cast<unsigned>(sectors), 4);
            put(reply, at + 8, 8467, 4);
            put(reply, at + 12, static_cast<unsigned>(writing), 4);
        }
    put(reply, 0, reply.size() - 4, 4);
    return reply;
}

Bytes capacity(int sectors)
{
    Bytes reply(8);
    put(reply, 0, static_cast<unsigned>(sectors > 0 ? sectors - 1 : 0), 4);
    put(reply, 4, 2048, 4);
    return reply;
}

Bytes emptyBuffer()
{
    constexpr int size = 2048 * 1024;
    Bytes reply(12);
    put(reply, 0, 10, 2);
    put(reply, 4, size, 4);
    put(reply, 8, size, 4);
    return reply;
}

// Six bits of each byte carry them.
Bytes textPacks(const Bytes& subchannels)
{
    Bytes packs;
    for (std::size_t i = 0; i + 3 < subchannels.size(); i += 4) {
        const unsigned bits = (subchannels[i] & 0x3fU) << 18U | (subchannels[i + 1] & 0x3fU) << 12U |
                              (subchannels[i + 2] & 0x3fU) << 6U | (subchannels[i + 3] & 0x3fU);
        packs.resize(packs.size() + 3);
        put(packs, packs.size() - 3, bits, 3);
    }
    return packs;
}

}  // namespace writerreplies
