#include "sound/disc/DiscImageDrive.h"

#include "sound/disc/CueSheet.h"
#include "sound/disc/DiscErrors.h"
#include "sound/media/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QStorageInfo>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <memory>
#include <span>
#include <utility>

namespace sound {
namespace {

constexpr std::int64_t sectorsAtOnce = 64;

// A hard disc takes what is written when it likes; asked only at the end, that could take many seconds.
constexpr std::int64_t bytesUntilOnDisc = std::int64_t{32} * 1024 * 1024;

const char* const imageEnding = ".bin";
const char* const sheetEnding = ".cue";

WriteOutcome failure(const DiscWriteError& error)
{
    return {WriteOutcome::Failed, error};
}

/// As errno says.
WriteOutcome outputFailure(const QString& file)
{
    return failure(outputFileError(file, errno));
}

DiscWriteError tooLong(const DiscImageDrive& drive)
{
    DiscWriteError error;
    error.kind = DiscWriteError::device;
    error.deviceError = {EFBIG, QStringLiteral("The tracks, and the pauses between them, are longer than a disc"),
                         QStringLiteral("Larkspin"), drive.name()};
    error.description = error.deviceError.description;
    return error;
}

/// The sectors of an image in their order; or nowhere, for a test.
class ImageSectors
{
public:
    explicit ImageSectors(WholeFile* imageFile)
        : file(imageFile)
    {
    }

    /// False as errno says.
    bool append(std::span<const std::byte> sectors)
    {
        if (file == nullptr)
            return true;
        if (!file->writeAt(size, sectors))
            return false;
        size += static_cast<std::int64_t>(sectors.size());
        if (size - onDisc < bytesUntilOnDisc)
            return true;
        onDisc = size;
        return file->bringToDisc();
    }

    bool appendSilence(std::int64_t sectors)
    {
        const std::vector<std::byte> silence(static_cast<std::size_t>(sectors * Sectors::bytes));
        return append(silence);
    }

private:
    WholeFile* file;
    std::int64_t size = 0;
    std::int64_t onDisc = 0;
};

/// Failed means that the image did, as errno says.
WriteOutcome::End copySectors(const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch, ImageSectors& image)
{
    std::vector<std::byte> buffer(static_cast<std::size_t>(sectorsAtOnce * Sectors::bytes));
    for (int number = 0; number < static_cast<int>(plan.tracks.size()); ++number) {
        watch.stage(DiscStage::Writing, number);
        if (!image.appendSilence(pauseBefore(plan, number)))
            return WriteOutcome::Failed;
        const std::int64_t length = plan.tracks[static_cast<std::size_t>(number)].sectors;
        for (std::int64_t done = 0; done < length;) {
            if (watch.givenUp())
                return WriteOutcome::GivenUp;
            const std::int64_t count = std::min(length - done, sectorsAtOnce);
            const std::span<std::byte> sectors(buffer.data(), static_cast<std::size_t>(count * Sectors::bytes));
            if (!feed.read(sectors))
                return WriteOutcome::FeedFailed;
            if (!image.append(sectors))
                return WriteOutcome::Failed;
            done += count;
            watch.written(number, done);
        }
    }
    return WriteOutcome::Written;
}

}  // namespace

DiscImageDrive::DiscImageDrive(QString intoFolder, std::function<QDateTime()> clock)
    : folder(std::move(intoFolder))
    , now(std::move(clock))
{
}

QString DiscImageDrive::name() const
{
    return QStringLiteral("Disc image writer (to %1)").arg(QDir(folder).dirName());
}

std::optional<DiscWriteError> DiscImageDrive::objectionTo(const DiscPlan& plan)
{
    return imageSectors(plan) > Sectors::wholeDisc ? std::optional(tooLong(*this)) : std::nullopt;
}

WriteOutcome DiscImageDrive::write(const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch)
{
    if (const auto objection = objectionTo(plan))
        return failure(*objection);
    if (!plan.test)
        return writeImage(plan, feed, watch);
    ImageSectors nowhere(nullptr);
    return {copySectors(plan, feed, watch, nowhere)};
}

WriteOutcome DiscImageDrive::writeImage(const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch) const
{
    // The names of months are the same in all languages, as in those of recordings.
    const QString wanted =
        QStringLiteral("Disc image ") + QLocale::c().toString(now(), QStringLiteral("MMM-dd-yyyy hh-mm"));
    const QString file = path(freeName(wanted) + imageEnding);
    errno = 0;
    const std::unique_ptr<WholeFile> image = WholeFile::create(file);
    if (!image)
        return outputFailure(file);
    const QStorageInfo storage(folder);
    if (storage.isValid() && storage.bytesAvailable() < imageSectors(plan) * Sectors::bytes)
        return failure(outputFileError(file, ENOSPC));

    ImageSectors sectors(image.get());
    const WriteOutcome::End end = copySectors(plan, feed, watch, sectors);
    if (end == WriteOutcome::Failed)
        return outputFailure(file);
    if (end != WriteOutcome::Written)
        return {end};
    watch.stage(DiscStage::UpdatingVolume, static_cast<int>(plan.tracks.size()) - 1);
    if (!image->bringToDisc())
        return outputFailure(file);
    if (watch.givenUp())
        return {WriteOutcome::GivenUp};
    return nameImage(plan, *image, wanted);
}

/// Another program may have taken the name that was free when the image was begun.
WriteOutcome DiscImageDrive::nameImage(const DiscPlan& plan, WholeFile& image, const QString& wanted) const
{
    QString name = freeName(wanted);
    while (!image.finishAs(name + imageEnding)) {
        if (errno != EEXIST)
            return outputFailure(path(name + imageEnding));
        name = freeName(wanted);
    }
    const WriteOutcome outcome = writeSheet(plan, name);
    if (outcome.end != WriteOutcome::Written)
        QFile::remove(path(name + imageEnding));
    return outcome;
}

WriteOutcome DiscImageDrive::writeSheet(const DiscPlan& plan, const QString& name) const
{
    const QString file = path(name + sheetEnding);
    const QByteArray text = cueSheet(plan, name + imageEnding);
    errno = 0;
    const std::unique_ptr<WholeFile> sheet = WholeFile::create(file);
    const auto bytes = std::as_bytes(std::span(text.constData(), static_cast<std::size_t>(text.size())));
    if (!sheet || !sheet->writeAt(0, bytes) || !sheet->finishAs(name + sheetEnding))
        return outputFailure(file);
    return {};
}

QString DiscImageDrive::path(const QString& fileName) const
{
    return QDir(folder).filePath(fileName);
}

bool DiscImageDrive::isFree(const QString& name) const
{
    return std::ranges::none_of(std::array{imageEnding, sheetEnding}, [&](const char* ending) {
        const QFileInfo there(path(name + ending));
        return there.exists() || there.isSymLink();
    });
}

QString DiscImageDrive::freeName(const QString& wanted) const
{
    QString name = wanted;
    for (int number = 2; !isFree(name); ++number)
        name = wanted + u' ' + QString::number(number);
    return name;
}

}  // namespace sound
