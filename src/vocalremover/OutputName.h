#pragma once

#include <QString>

/// The name that a file without its vocals gets beside the one at @p path: "song.mp3" gives "songNoVocal.mp3".
///
/// The rule counts characters: the last four go, "NoVocal." and the last three come. It knows no dot, so that
/// "song.flac" gives "song.NoVocal.lac", and a name that it has made already gets "NoVocal." once more.
QString nameWithoutVocals(const QString& path);
