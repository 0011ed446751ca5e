#include "sound/disc/SoundAudioProject.h"

#include <QDir>
#include <algorithm>

namespace sound {

DiscWriter::~DiscWriter() = default;

SoundAudioProject::SoundAudioProject(DiscWriter& discWriter, std::int64_t reserve)
    : writer(discWriter)
{
    order.reserve = reserve;
}

const DiscTrack* SoundAudioProject::trackAt(int position) const
{
    const auto index = static_cast<std::size_t>(position) - 1;
    return position >= 1 && index < order.tracks.size() ? &order.tracks[index] : nullptr;
}

void SoundAudioProject::StartWrite(DiscDevice* device, bool& ok)
{
    const bool canBeADisc = !order.tracks.empty() && order.tracks.size() <= Sectors::mostTracks;
    ok = canBeADisc && !writer.isWriting() && writer.begin(device, order);
}

void SoundAudioProject::AddTrack(const QString& file, int position, bool& ok)
{
    ok = false;
    if (writer.isWriting())
        return;
    const QString path = file.startsWith(u'/') ? file : QDir::currentPath() + u'/' + file;
    auto track = countedBefore(path);
    if (!track)
        track = readDiscTrack(path);
    if (!track)
        return;
    const std::ptrdiff_t before = std::clamp(position - 1, 0, GetTrackCount());
    order.tracks.insert(order.tracks.begin() + before, *track);
    ok = true;
}

void SoundAudioProject::RemoveTrack(int position)
{
    const DiscTrack* track = trackAt(position);
    if (track == nullptr)
        return;
    lastRemoved = *track;
    order.tracks.erase(order.tracks.begin() + (position - 1));
}

/// A track is moved by being removed and added again, and need not be counted for that.
std::optional<DiscTrack> SoundAudioProject::countedBefore(const QString& file) const
{
    const bool isThatOne = lastRemoved && lastRemoved->file == file && isUntouched(*lastRemoved);
    return isThatOne ? lastRemoved : std::nullopt;
}

QString SoundAudioProject::GetTrackFile(int position)
{
    const DiscTrack* track = trackAt(position);
    return track != nullptr ? track->file : QString();
}

int SoundAudioProject::GetTrackFormat(int position)
{
    const DiscTrack* track = trackAt(position);
    return track != nullptr ? track->format : Wav;
}

qint64 SoundAudioProject::GetTrackLength(int position)
{
    const DiscTrack* track = trackAt(position);
    return track != nullptr ? track->sectors() : 0;
}

qint64 SoundAudioProject::GetRequiredSpace()
{
    qint64 sectors = 0;
    for (const DiscTrack& track : order.tracks)
        sectors += track.sectors();
    return sectors;
}

}  // namespace sound
