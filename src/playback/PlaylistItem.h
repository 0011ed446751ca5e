#pragma once

#include <QString>
#include <QVector>

/// One sound of the playlist: what the list shows, and where the file is.
struct PlaylistItem
{
    QString label;
    QString path;

    bool operator==(const PlaylistItem&) const = default;
};

/// The file's name less its last four characters, followed by what kind of file its ending stands for.
///
/// The four characters are a dot and three letters. Other extensions leave a trace: "a.flac" keeps its dot, of
/// "ab.wv" the b is lost.
QString playlistLabel(const QString& fileName);

/// The items that an open dialog's answer stands for, in the dialog's order: @p fileName is one path, or a folder
/// and the names of several files with a zero character between them; @p fileTitle is the name of the one file.
QVector<PlaylistItem> playlistItems(const QString& fileName, const QString& fileTitle);
