#include "sound/media/CdTrack.h"

#include "sound/media/RegularFile.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <array>
#include <atomic>
#include <cstring>

#include <cdio/cdio.h>
#include <cdio/logging.h>
#include <cdio/paranoia/cdda.h>
#include <cdio/paranoia/paranoia.h>

namespace sound {
namespace {

constexpr int framesPerSector = CDIO_CD_FRAMESIZE_RAW / 4;
constexpr int cdRate = 44100;
constexpr int cdChannels = 2;

struct DriveCloser
{
    void operator()(cdrom_drive_t* drive) const { cdio_cddap_close_no_free_cdio(drive); }
};
struct DiscCloser
{
    void operator()(CdIo_t* disc) const { cdio_destroy(disc); }
};
struct ParanoiaFreer
{
    void operator()(cdrom_paranoia_t* paranoia) const { cdio_paranoia_free(paranoia); }
};
using Disc = std::unique_ptr<CdIo_t, DiscCloser>;
using Drive = std::unique_ptr<cdrom_drive_t, DriveCloser>;
using Paranoia = std::unique_ptr<cdrom_paranoia_t, ParanoiaFreer>;

/// The library ends the whole program at what it calls an error, unless it is told otherwise.
void keepLibraryQuiet()
{
    cdio_log_set_handler([](cdio_log_level_t, const char*) {});
}

class CdTrackStream : public FrameStream
{
public:
    CdTrackStream(Disc openDisc, Drive openDrive, lsn_t firstSector, lsn_t lastSector, bool isImage)
        : disc(std::move(openDisc))
        , drive(std::move(openDrive))
        , paranoia(cdio_paranoia_init(drive.get()))
        , nextSector(firstSector)
        , endSector(lastSector + 1)
        , frames(std::int64_t{lastSector - firstSector + 1} * framesPerSector)
    {
        // A disc is read with all care but for ever; an image needs none.
        cdio_paranoia_modeset(paranoia.get(),
                              isImage ? PARANOIA_MODE_DISABLE : PARANOIA_MODE_FULL ^ PARANOIA_MODE_NEVERSKIP);
        cdio_paranoia_seek(paranoia.get(), firstSector, SEEK_SET);
    }

    SampleRate rate() const override { return {cdRate}; }
    int channels() const override { return cdChannels; }
    FrameCount length() const override { return {frames}; }

    bool next(std::vector<float>& interleaved) override
    {
        if (nextSector >= endSector || stopped.load(std::memory_order_relaxed))
            return false;
        const std::int16_t* samples = cdio_paranoia_read(paranoia.get(), nullptr);
        if (samples == nullptr)
            return false;
        ++nextSector;
        constexpr int samplesPerSector = framesPerSector * cdChannels;
        for (int i = 0; i < samplesPerSector; ++i)
            interleaved.push_back(static_cast<float>(samples[i]) / 32768.0F);
        return true;
    }

    void stop() override { stopped.store(true, std::memory_order_relaxed); }

private:
    Disc disc;  // each is used by the next
    Drive drive;
    Paranoia paranoia;
    lsn_t nextSector;
    lsn_t endSector;
    std::int64_t frames;
    std::atomic<bool> stopped = false;
};

/// Path of the cue sheet in the stub's folder beside which the image lies; empty where there is none.
QString imageBeside(const QString& stub)
{
    const QDir folder = QFileInfo(stub).dir();
    const QStringList sheets = folder.entryList({"*.cue"}, QDir::Files | QDir::Readable, QDir::Name);
    for (const QString& sheet : sheets) {
        const QString image = QFileInfo(sheet).completeBaseName() + ".bin";
        if (QFileInfo(folder.filePath(image)).isFile())
            return folder.filePath(sheet);
    }
    return {};
}

/// The device of the CD drive whose disc the file lies on; empty where it lies on something else.
QByteArray driveUnder(const QString& path)
{
    struct stat status = {};
    constexpr unsigned cdDrives = 11;  // the kernel's number for them
    if (::stat(QFile::encodeName(path).constData(), &status) != 0 || gnu_dev_major(status.st_dev) != cdDrives)
        return {};
    return "/dev/sr" + QByteArray::number(gnu_dev_minor(status.st_dev));
}

OpenedFrames openTrack(Disc disc, int track, bool isImage)
{
    Drive drive(cdio_cddap_identify_cdio(disc.get(), CDDA_MESSAGE_FORGETIT, nullptr));
    if (!drive)
        return {nullptr, EngineError::DriveNotReady};
    if (isImage)
        drive->bigendianp = 0;  // else the order of the bytes is guessed from how they sound
    if (cdio_cddap_open(drive.get()) != 0)
        return {nullptr, EngineError::DriveNotReady};

    const track_t first = cdio_get_first_track_num(disc.get());
    const track_t count = cdio_cddap_tracks(drive.get());
    if (track < first || track >= first + count)
        return {nullptr, EngineError::InvalidCdTrack};
    const auto number = static_cast<track_t>(track);
    if (cdio_cddap_track_audiop(drive.get(), number) != 1)
        return {nullptr, EngineError::NotAnAudioTrack};
    const lsn_t firstSector = cdio_cddap_track_firstsector(drive.get(), number);
    const lsn_t lastSector = cdio_cddap_track_lastsector(drive.get(), number);
    if (firstSector < 0 || lastSector < firstSector)
        return {nullptr, EngineError::InvalidCdTrack};
    return {std::make_unique<CdTrackStream>(std::move(disc), std::move(drive), firstSector, lastSector, isImage),
            EngineError::None};
}

}  // namespace

std::optional<int> trackNamedBy(std::span<const std::uint8_t> stub)
{
    constexpr std::size_t stubSize = 44;
    constexpr std::size_t trackPlace = 22;
    if (stub.size() < stubSize || std::memcmp(stub.data(), "RIFF", 4) != 0 ||
        std::memcmp(stub.data() + 8, "CDDAfmt ", 8) != 0)
        return std::nullopt;
    return stub[trackPlace] | stub[trackPlace + 1] << 8;
}

OpenedFrames openCdTrack(const QString& path)
{
    const auto file = RegularFile::open(path);
    std::array<std::uint8_t, 44> stub = {};
    const auto track = file && file->readAt(0, stub) == stub.size() ? trackNamedBy(stub) : std::nullopt;
    if (!track)
        return {nullptr, EngineError::InvalidSoundFile};

    keepLibraryQuiet();
    if (const QString image = imageBeside(path); !image.isEmpty()) {
        Disc disc(cdio_open(QFile::encodeName(image).constData(), DRIVER_BINCUE));
        return disc ? openTrack(std::move(disc), *track, true) : OpenedFrames{nullptr, EngineError::DriveNotReady};
    }
    const QByteArray device = driveUnder(path);
    if (device.isEmpty())
        return {nullptr, EngineError::InvalidDrive};
    Disc disc(cdio_open(device.constData(), DRIVER_DEVICE));
    return disc ? openTrack(std::move(disc), *track, false) : OpenedFrames{nullptr, EngineError::DriveNotReady};
}

}  // namespace sound
