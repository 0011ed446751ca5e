#pragma once

#include <QByteArray>
#include <QString>

namespace sound {

/// What a sound file tells of its sound, as far as it stays true of a copy at another tempo. What is empty is not
/// told.
struct SoundTags
{
    QString title;
    QString artist;
    QString album;
    QString albumArtist;
    QString track;  // its number, maybe of how many: "3", "3/12"
    QString date;   // mostly the year alone
    QString genre;

    /// The picture as a PNG or JPEG file.
    QByteArray cover;

    bool operator==(const SoundTags&) const = default;
};

/// Reads what the sound file at @p path tells; nothing where it is no sound file, or a track of a CD. A cover that
/// is broken, of another kind or larger than 16 MiB counts as none, and texts end after 1000 characters.
///
/// Nothing but the named file is read, and it is not trusted, as DecodedSound says. Any thread.
SoundTags readSoundTags(const QString& path);

}  // namespace sound
