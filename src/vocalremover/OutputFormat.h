#pragma once

#include <QString>

class EncodeFormats;

/// Chooses the format of the next export by the end of a path, upper or lower case: as a save does, and FLAC for
/// one that ends in "flac". No dot is looked for: what the naming rule makes of "song.flac" ends in "lac" and is
/// WAV.
void SelectOutputFormat(const QString& path, EncodeFormats& formats);
