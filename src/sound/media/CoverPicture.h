#pragma once

#include <QByteArray>
#include <cstdint>
#include <optional>
#include <span>

namespace sound {

/// What is to be known of a cover picture in order to keep it in a sound file. Inside this folder only.
struct CoverPicture
{
    enum class Kind
    {
        Png,
        Jpeg
    };

    Kind kind = Kind::Png;
    int width = 0;  // in pixels
    int height = 0;

    const char* mimeType() const { return kind == Kind::Png ? "image/png" : "image/jpeg"; }
};

/// Nothing where the bytes are no whole PNG or JPEG file, or more than 16 MiB.
std::optional<CoverPicture> coverPictureIn(std::span<const std::uint8_t> bytes);

/// The picture as a block of FLAC metadata, which Ogg files hold in a comment.
QByteArray flacPictureBlock(const CoverPicture& picture, const QByteArray& bytes);

}  // namespace sound
