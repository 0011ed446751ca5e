#include "sound/media/counting/MpegFrames.h"

#include "sound/media/counting/CodedHeads.h"

#include <algorithm>

namespace sound {
namespace {

/// Every decoder adds so many frames of its own before the first that was encoded.
constexpr std::int64_t decoderDelay = 528 + 1;

/// The first frame of a file can hold a tag in place of sound.
struct Tag
{
    bool replacesSound = false;
    bool tellsDelay = false;
    std::int64_t codedFrames = 0;  // as it claims
    std::int64_t delay = 0;        // of the encoder, in frames of sound
    std::int64_t padding = 0;
};

Tag readTag(FileBytes& bytes, std::int64_t frameStart)
{
    const auto frame = bytes.at(frameStart, 256);
    Tag tag;
    if (frame.size() < 64)
        return tag;
    if (is(frame.subspan(4 + 32), "VBRI")) {
        tag.replacesSound = bigEndian32(frame.subspan(4 + 32 + 14)) != 0;
        return tag;
    }
    const bool low = (frame[1] >> 3 & 3) != 3;
    const bool mono = frame[3] >> 6 == 3;
    std::size_t at = 4 + (low ? (mono ? 9 : 17) : (mono ? 17 : 32));
    if (!is(frame.subspan(at), "Xing") && !is(frame.subspan(at), "Info"))
        return tag;
    const std::uint32_t flags = bigEndian32(frame.subspan(at + 4));
    at += 8;
    std::uint32_t codedBytes = 0;
    if ((flags & 1) != 0) {
        tag.codedFrames = bigEndian32(frame.subspan(at));
        at += 4;
    }
    if ((flags & 2) != 0) {
        codedBytes = bigEndian32(frame.subspan(at));
        at += 4;
    }
    tag.replacesSound = tag.codedFrames != 0 || codedBytes != 0;
    if ((flags & 4) != 0)
        at += 100;  // a table of places
    if ((flags & 8) != 0)
        at += 4;                            // the quality
    constexpr std::size_t delayPlace = 21;  // behind the encoder's name
    if (at + delayPlace + 3 > frame.size())
        return tag;
    const auto encoder = frame.subspan(at);
    if (is(encoder, "LAME") || is(encoder, "Lavf") || is(encoder, "Lavc")) {
        const std::uint32_t both = bigEndian32(encoder.subspan(delayPlace - 1)) & 0xFFFFFF;
        tag.tellsDelay = true;
        tag.delay = both >> 12;
        tag.padding = both & 0xFFF;
    }
    return tag;
}

/// Where the first frame is that another one of its kind follows.
std::int64_t firstFrameFrom(FileBytes& bytes, std::int64_t begin, std::int64_t end)
{
    for (std::int64_t offset = begin; offset < end; ++offset) {
        const auto head = readMpegHead(bytes.at(offset, longestCodedHead));
        if (!head)
            continue;
        const auto next = readMpegHead(bytes.at(offset + head->size, longestCodedHead));
        if ((next && next->kind == head->kind) || offset + head->size == end)
            return offset;
    }
    return -1;
}

}  // namespace

std::optional<FrameCount> countMpegFrames(const RegularFile& file, SampleRate rate)
{
    FileBytes bytes(file);
    const std::int64_t end = beginOfId3v1Tag(bytes);
    std::int64_t begin = firstFrameFrom(bytes, endOfId3Tags(bytes), end);
    if (begin < 0)
        return std::nullopt;
    const Tag tag = readTag(bytes, begin);
    if (tag.replacesSound)
        begin += readMpegHead(bytes.at(begin, longestCodedHead))->size;

    const WalkedFrames walked = walkFrames(bytes, begin, end, readMpegHead);
    std::int64_t frames = walked.frames;
    if (tag.tellsDelay) {
        // The padding is cut only where the tag says that it is, so that a file which has lost its end loses no
        // more.
        const std::int64_t claimed = tag.codedFrames * walked.first.frames;
        const std::int64_t soundEnd = claimed - tag.padding + decoderDelay;
        if (tag.codedFrames > 0)
            frames -= std::max<std::int64_t>(0, std::min(walked.frames, claimed) - soundEnd);
        frames -= tag.delay + decoderDelay;
    }
    if (walked.count > 0)
        frames = frames * rate.hertz / walked.first.rate;
    return frames > 0 ? std::optional(FrameCount{frames}) : std::nullopt;
}

}  // namespace sound
