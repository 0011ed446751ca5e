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
    const auto track = readDiscTrack(file.startsWith(u'/') ? file : QDir::currentPath() + u'/' + file);
    if (!track)
        return;
    const std::ptrdiff_t before = std::clamp(position - 1, 0, GetTrackCount());
    order.tracks.insert(order.tracks.begin() + before, *track);
    ok = true;
}

void SoundAudioProject::RemoveTrack(int position)
{
    if (trackAt(position) != nullptr)
        order.tracks.erase(order.tracks.begin() + (position - 1));
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
    const bool hasPauses = !order.discAtOnce && !order.tracks.empty();
    qint64 sectors = hasPauses ? (GetTrackCount() - 1) * qint64{Sectors::pause} : 0;
    for (const DiscTrack& track : order.tracks)
        sectors += track.sectors();
    return sectors;
}

}  // namespace sound
