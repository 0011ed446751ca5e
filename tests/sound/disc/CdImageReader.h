#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

#include <cdio/cdio.h>
#include <cdio/cdtext.h>
#include <cdio/paranoia/cdda.h>
#include <cdio/paranoia/paranoia.h>

namespace sound::test {

/// A disc image as a program that rips CDs sees it. Tracks are from 1.
class CdImageReader
{
public:
    explicit CdImageReader(const QString& cueSheet)
        : disc(cdio_open(cueSheet.toLocal8Bit().constData(), DRIVER_BINCUE), cdio_destroy)
        , drive(disc ? cdio_cddap_identify_cdio(disc.get(), CDDA_MESSAGE_FORGETIT, nullptr) : nullptr,
                cdio_cddap_close_no_free_cdio)
    {
        if (drive && cdio_cddap_open(drive.get()) != 0)
            drive.reset();
    }

    bool isOpen() const { return drive != nullptr; }
    int tracks() const { return cdio_cddap_tracks(drive.get()); }
    long start(int track) const { return cdio_cddap_track_firstsector(drive.get(), number(track)); }
    long discEnd() const { return cdio_get_track_lsn(disc.get(), CDIO_CDROM_LEADOUT_TRACK); }

    /// Where the track ends: where the next one or the pause before it begins.
    long end(int track) const
    {
        if (track == tracks())
            return discEnd();
        const lsn_t pause = cdio_get_track_pregap_lsn(disc.get(), number(track + 1));
        return pause >= 0 && pause != CDIO_INVALID_LSN ? pause : start(track + 1);
    }

    /// The sound from one sector to another.
    QByteArray sound(long from, long to) const
    {
        const std::unique_ptr<cdrom_paranoia_t, void (*)(cdrom_paranoia_t*)> reader(cdio_paranoia_init(drive.get()),
                                                                                    cdio_paranoia_free);
        cdio_paranoia_modeset(reader.get(), PARANOIA_MODE_DISABLE);
        cdio_paranoia_seek(reader.get(), static_cast<int32_t>(from), SEEK_SET);
        QByteArray bytes;
        for (long sector = from; sector < to; ++sector) {
            const std::int16_t* samples = cdio_paranoia_read(reader.get(), nullptr);
            if (samples == nullptr)
                break;
            bytes.append(reinterpret_cast<const char*>(samples), CDIO_CD_FRAMESIZE_RAW);
        }
        return bytes;
    }

    QByteArray sound(int track) const { return sound(start(track), end(track)); }

    /// Of a track, or of the disc as number 0.
    QString text(cdtext_field_t field, int track) const
    {
        const cdtext_t* texts = cdio_get_cdtext(disc.get());
        const char* text = texts != nullptr ? cdtext_get_const(texts, field, number(track)) : nullptr;
        return QString::fromUtf8(text);
    }

private:
    static track_t number(int track) { return static_cast<track_t>(track); }

    std::unique_ptr<CdIo_t, void (*)(CdIo_t*)> disc;
    std::unique_ptr<cdrom_drive_t, bool (*)(cdrom_drive_t*)> drive;
};

}  // namespace sound::test
