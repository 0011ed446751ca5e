#pragma once

#include <QString>

class EncodeFormats;

/// Chooses the format of a file to be saved by the last three characters of its name, upper or lower case: "mp3",
/// "wma", "aac", "mp4", "ogg"; a name that ends otherwise is a WAV file, whatever it is called. Which filter the
/// dialog showed makes no difference, and there is no choice of quality.
void chooseSaveFormat(const QString& path, EncodeFormats& formats);
