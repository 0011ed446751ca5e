#include "sound/media/CoverPicture.h"

#include <algorithm>
#include <array>

namespace sound {
namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t mostBytes = std::size_t{16} * 1024 * 1024;

bool beginsWith(Bytes bytes, Bytes mark)
{
    return bytes.size() >= mark.size() && std::equal(mark.begin(), mark.end(), bytes.begin());
}

std::uint32_t bigEndian(Bytes bytes)
{
    std::uint32_t number = 0;
    for (const std::uint8_t byte : bytes)
        number = number << 8 | byte;
    return number;
}

std::optional<CoverPicture> pictureOf(CoverPicture::Kind kind, std::uint32_t width, std::uint32_t height)
{
    constexpr std::uint32_t largestSide = 0xFFFF;
    if (width == 0 || height == 0 || width > largestSide || height > largestSide)
        return std::nullopt;
    return CoverPicture{kind, static_cast<int>(width), static_cast<int>(height)};
}

/// A chain of chunks, each its size, its name, its content and a sum, from IHDR to IEND.
std::optional<CoverPicture> pngIn(Bytes bytes)
{
    constexpr std::array<std::uint8_t, 8> signature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    constexpr std::array<std::uint8_t, 4> head = {'I', 'H', 'D', 'R'};
    constexpr std::array<std::uint8_t, 4> end = {'I', 'E', 'N', 'D'};
    constexpr std::size_t aroundContent = 12;
    constexpr std::size_t headSize = 13;
    if (!beginsWith(bytes, signature))
        return std::nullopt;
    const Bytes first = bytes.subspan(signature.size());
    if (first.size() < aroundContent + headSize || bigEndian(first.first(4)) != headSize ||
        !beginsWith(first.subspan(4), head))
        return std::nullopt;
    for (Bytes rest = first; rest.size() >= aroundContent;) {
        if (beginsWith(rest.subspan(4), end))
            return pictureOf(CoverPicture::Kind::Png, bigEndian(first.subspan(8, 4)),
                             bigEndian(first.subspan(12, 4)));
        const std::size_t size = bigEndian(rest.first(4));
        if (size > rest.size() - aroundContent)
            break;
        rest = rest.subspan(aroundContent + size);
    }
    return std::nullopt;
}

/// Whether a segment with this mark begins the picture itself and tells its size.
bool tellsJpegSize(std::uint8_t mark)
{
    constexpr std::array<std::uint8_t, 3> others = {0xC4, 0xC8, 0xCC};
    return mark >= 0xC0 && mark <= 0xCF && std::ranges::find(others, mark) == others.end();
}

/// A chain of segments, each a mark, its size and its content; the last is followed by the picture and the mark of
/// the end.
std::optional<CoverPicture> jpegIn(Bytes bytes)
{
    constexpr std::array<std::uint8_t, 3> signature = {0xFF, 0xD8, 0xFF};
    constexpr std::array<std::uint8_t, 2> end = {0xFF, 0xD9};
    constexpr std::size_t sizePlaces = 9;  // mark, size of the segment, bits a sample, height, width
    if (!beginsWith(bytes, signature))
        return std::nullopt;
    Bytes rest = bytes.subspan(2);
    while (rest.size() >= sizePlaces && rest[0] == 0xFF) {
        if (rest[1] == 0xFF) {  // may stand before any mark
            rest = rest.subspan(1);
            continue;
        }
        if (tellsJpegSize(rest[1])) {
            const bool whole = std::search(rest.begin(), rest.end(), end.begin(), end.end()) != rest.end();
            return whole ? pictureOf(CoverPicture::Kind::Jpeg, bigEndian(rest.subspan(7, 2)),
                                     bigEndian(rest.subspan(5, 2)))
                         : std::nullopt;
        }
        const std::size_t size = 2 + bigEndian(rest.subspan(2, 2));
        if (size < 4 || size > rest.size())
            break;
        rest = rest.subspan(size);
    }
    return std::nullopt;
}

void append(QByteArray& bytes, qsizetype number)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.append(static_cast<char>(static_cast<std::uint32_t>(number) >> shift & 0xFF));
}

}  // namespace

std::optional<CoverPicture> coverPictureIn(std::span<const std::uint8_t> bytes)
{
    if (bytes.size() > mostBytes)
        return std::nullopt;
    const auto png = pngIn(bytes);
    return png ? png : jpegIn(bytes);
}

QByteArray flacPictureBlock(const CoverPicture& picture, const QByteArray& bytes)
{
    constexpr int frontCover = 3;
    constexpr int bitsPerPixel = 24;
    const QByteArray mimeType = picture.mimeType();
    QByteArray block;
    append(block, frontCover);
    append(block, mimeType.size());
    block += mimeType;
    append(block, 0);  // no description
    append(block, picture.width);
    append(block, picture.height);
    append(block, bitsPerPixel);
    append(block, 0);  // no palette
    append(block, bytes.size());
    return block + bytes;
}

}  // namespace sound
