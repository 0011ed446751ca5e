#pragma once

#include "sound/media/AvOutput.h"
#include "sound/media/CoverPicture.h"
#include "sound/media/SoundFormat.h"
#include "sound/media/SoundTags.h"

#include <optional>

namespace sound {

/// Puts tags into the container of a sound file, as its format holds them. Inside this folder only.
///
/// Made when the sound's stream is there and the head is not yet written, which holds the texts; the cover mostly
/// follows it.
class WrittenTags
{
public:
    /// @p output and @p tags outlive this.
    WrittenTags(AvOutput& output, SoundFormat::Family family, const SoundTags& tags);

    /// Whether nothing of the tags can be kept.
    bool isEmpty() const { return empty; }

    /// After the head. False where the disc is full or fails.
    bool writeCover();

private:
    void addText(const char* name, const QString& text);
    void addCoverStream();
    void addCoverComment();

    AvOutput& output;
    const SoundTags& tags;
    std::optional<CoverPicture> picture;
    AVStream* coverStream = nullptr;
    bool empty = true;
};

}  // namespace sound
