#include "sound/disc/DiscTextsOf.h"

#include <algorithm>

namespace sound {
namespace {

/// What all of them tell alike; empty where they don't.
QString common(const std::vector<SoundTags>& tracks, QString SoundTags::*text)
{
    if (tracks.empty())
        return {};
    const QString first = tracks.front().*text;
    const bool all = std::ranges::all_of(tracks, [&](const SoundTags& track) { return track.*text == first; });
    return all ? first : QString();
}

}  // namespace

DiscTexts trackTexts(const SoundTags& tags)
{
    return {tags.title, tags.artist};
}

DiscTexts discTexts(const std::vector<SoundTags>& tracks)
{
    const QString album = common(tracks, &SoundTags::album);
    if (album.isEmpty())
        return {};
    const QString albumArtist = common(tracks, &SoundTags::albumArtist);
    return {album, albumArtist.isEmpty() ? common(tracks, &SoundTags::artist) : albumArtist};
}

}  // namespace sound
