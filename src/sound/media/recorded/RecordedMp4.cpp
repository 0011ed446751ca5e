#include "sound/media/recorded/RecordedMp4.h"

#include "sound/media/WrittenContainer.h"

#include <array>
#include <cstring>
#include <limits>
#include <string>

extern "C" {
#include <libavutil/intreadwrite.h>
}

namespace sound {
namespace {

constexpr auto family = SoundFormat::Family::Mp4;

/// The head waits for the first fragment: only then it is known how much of its begin is the encoder's delay.
std::string fragmentOptions(const AVCodecContext& codec)
{
    return containerOptions(family, codec, false) + ":movflags=frag_custom+delay_moov+default_base_moof";
}

/// What every box begins with.
constexpr std::size_t sizeAndKind = 8;

/// The begin of a box of media of so many bytes: of the usual size, which all players know, where that can be.
std::span<const std::uint8_t> mediaHead(std::int64_t size, std::span<std::uint8_t, 2 * sizeAndKind> bytes)
{
    const bool isLong = size > std::numeric_limits<std::uint32_t>::max();
    AV_WB32(bytes.data(), isLong ? 1 : static_cast<std::uint32_t>(size));  // 1: the size follows
    std::memcpy(bytes.data() + 4, "mdat", 4);
    if (!isLong)
        return bytes.first(sizeAndKind);
    AV_WB64(bytes.data() + sizeAndKind, size);
    return bytes;
}

}  // namespace

RecordedMp4::Behind::Behind(GrowingFile& growing)
    : file(growing)
    , begin(std::numeric_limits<std::int64_t>::max())
{
}

bool RecordedMp4::Behind::writeAt(std::int64_t offset, std::span<const std::byte> bytes)
{
    return offset < begin || file.writeAt(offset, bytes);
}

std::unique_ptr<RecordedMp4> RecordedMp4::begin(GrowingFile& file, const AVCodecContext& codec)
{
    std::unique_ptr<RecordedMp4> mp4(new RecordedMp4(file, codec));
    return mp4->writeHeads() ? std::move(mp4) : nullptr;
}

RecordedMp4::RecordedMp4(GrowingFile& growing, const AVCodecContext& encoder)
    : file(growing)
    , codec(encoder)
    , fragments(AvOutput::create(file, containerOf(family)))
    , behindFragments(file)
    , index(AvOutput::create(behindFragments, containerOf(family)))
{
}

bool RecordedMp4::writeHeads()
{
    return fragments && index && addSound(*fragments, codec) && addSound(*index, codec) &&
           fragments->writeHead(fragmentOptions(codec).c_str()) && fragments->flush() &&
           index->writeHead(containerOptions(family, codec, false).c_str()) && index->flush();
}

bool RecordedMp4::add(AVPacket& packet)
{
    if (failed)
        return false;
    fragment.emplace_back(av_packet_clone(&packet));
    framesInFragment += packet.duration;
    if (!fragment.back() || !fragments->write(packet, codec.time_base))
        return goBack();
    return framesInFragment < codec.sample_rate / 2 || endFragment() || goBack();
}

bool RecordedMp4::endFragment()
{
    if (fragment.empty())
        return true;
    // Of the first fragment the library writes the head only.
    const bool whole = (kept > 0 || fragments->endGathering()) && fragments->endGathering() && fragments->flush();
    if (!whole || !enterIntoIndex(fragments->place()))
        return false;
    kept = fragments->place();
    fragment.clear();
    framesInFragment = 0;
    return true;
}

/// The coded frames of the fragment lie one behind the other at its end. Where they are the index takes from where
/// it is made to believe that it writes them itself.
bool RecordedMp4::enterIntoIndex(std::int64_t end)
{
    std::int64_t place = end;
    for (const AvPacket& packet : fragment)
        place -= packet->size;
    for (const AvPacket& packet : fragment) {
        const int size = packet->size;
        if (!index->goTo(place) || !index->write(*packet, codec.time_base))
            return false;
        place += size;
    }
    return index->flush();
}

bool RecordedMp4::finish()
{
    const bool whole = !failed && endFragment() && (kept == 0 ? writeEmpty() : writeIndex() && declareMedia());
    return whole || goBack();
}

/// A sound without a single coded frame.
bool RecordedMp4::writeEmpty()
{
    const auto output = AvOutput::create(file, containerOf(family));
    return output && addSound(*output, codec) &&
           output->writeHead(containerOptions(family, codec, false).c_str()) && output->finish();
}

bool RecordedMp4::writeIndex()
{
    behindFragments.from(kept);
    return index->goTo(kept) && index->finish() && file.bringToDisc();
}

/// Only what is on the disc, so that a sudden end of the machine cannot leave the file without any index.
bool RecordedMp4::declareMedia()
{
    std::array<std::uint8_t, sizeAndKind> first = {};
    if (file.readAt(0, std::as_writable_bytes(std::span(first))) < first.size())
        return false;
    const auto place = std::int64_t{AV_RB32(first.data())};
    std::array<std::uint8_t, 2 * sizeAndKind> media = {};
    if (file.readAt(place, std::as_writable_bytes(std::span(media))) < media.size() ||
        std::memcmp(media.data() + 4, "moov", 4) != 0)
        return false;
    return file.writeAt(place, std::as_bytes(mediaHead(kept - place, media)));
}

/// To what the file was when all was well. Always false.
bool RecordedMp4::goBack()
{
    failed = true;
    file.cutTo(kept);
    return false;
}

}  // namespace sound
