#include "sound/media/counting/FrameWalk.h"

namespace sound {
namespace {

/// Whether a head stands at @p offset whose size leads to another one, or to the end.
bool isConfirmed(FileBytes& bytes, std::int64_t offset, std::int64_t end, ReadCodedHead readHead)
{
    const auto head = readHead(bytes.at(offset, longestCodedHead));
    if (!head || offset + head->size > end)
        return false;
    if (offset + head->size == end)
        return true;
    const auto next = readHead(bytes.at(offset + head->size, longestCodedHead));
    return next && next->kind == head->kind;
}

}  // namespace

WalkedFrames walkFrames(FileBytes& bytes, std::int64_t begin, std::int64_t end, ReadCodedHead readHead)
{
    WalkedFrames walked;
    std::optional<std::uint32_t> kind;  // of the last frame, while it has led here
    for (std::int64_t offset = begin; offset < end;) {
        const auto head = readHead(bytes.at(offset, longestCodedHead));
        const bool fits = head && offset + head->size <= end;
        if (!fits || (kind != head->kind && !isConfirmed(bytes, offset, end, readHead))) {
            kind.reset();
            ++offset;
            continue;
        }
        if (walked.count == 0)
            walked.first = *head;
        ++walked.count;
        walked.frames += head->frames * walked.first.rate / head->rate;
        offset += head->size;
        kind = head->kind;
    }
    return walked;
}

}  // namespace sound
