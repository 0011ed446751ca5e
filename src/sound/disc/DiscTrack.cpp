#include "sound/disc/DiscTrack.h"

#include "sound/disc/DiscErrors.h"
#include "sound/disc/DiscFormats.h"
#include "sound/disc/DiscPlan.h"
#include "sound/media/OpenedFrames.h"

#include <sys/stat.h>
#include <QFile>
#include <algorithm>

namespace sound {
namespace {

std::int64_t roundedUp(std::int64_t dividend, std::int64_t divisor)
{
    return (dividend + divisor - 1) / divisor;
}

std::optional<FileStamp> stampOf(const QString& file)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(file).constData(), &status) != 0)
        return std::nullopt;
    constexpr std::int64_t perSecond = 1'000'000'000;
    return FileStamp{status.st_dev, status.st_ino, status.st_size,
                     status.st_mtim.tv_sec * perSecond + status.st_mtim.tv_nsec};
}

}  // namespace

FrameCount DiscTrack::discFrames() const
{
    return {roundedUp(length.value * discRate.hertz, rate.hertz)};
}

std::int64_t DiscTrack::sectors() const
{
    return std::max<std::int64_t>(roundedUp(discFrames().value, Sectors::frames), Sectors::shortestTrack);
}

std::optional<DiscTrack> readDiscTrack(const QString& file)
{
    const auto format = discFormatOf(file);
    if (!format)
        return std::nullopt;
    const auto stamp = stampOf(file);  // before the sound: a change meanwhile is one
    const OpenedFrames opened = openFrames(file);
    if (!stamp || !opened.stream || opened.stream->rate() < DiscTrack::discRate)
        return std::nullopt;
    return DiscTrack{file, *format, opened.stream->rate(), opened.stream->length(), *stamp};
}

bool isUntouched(const DiscTrack& track)
{
    return stampOf(track.file) == track.stamp;
}

std::optional<DiscWriteError> changeOf(const DiscTrack& track)
{
    if (isUntouched(track))
        return std::nullopt;
    const OpenedFrames opened = openFrames(track.file);
    if (!opened.stream)
        return unreadableSourceError(track.file);
    if (opened.stream->rate() != track.rate || opened.stream->length() != track.length)
        return changedSourceError(track);
    return std::nullopt;
}

DiscWriteError changedSourceError(const DiscTrack& track)
{
    return sourceFileError(track.file, code(EngineError::InvalidSoundFile),
                           QStringLiteral("The file has been changed since it was added"));
}

}  // namespace sound
