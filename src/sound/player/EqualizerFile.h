#pragma once

#include "engines/EngineError.h"
#include "sound/dsp/Equalizer.h"

#include <QByteArray>
#include <QString>
#include <string_view>

/// The gains of an equalizer as a file (".edj"): a text in UTF-8 that a person can read and edit.
///
///     Larkspin equalizer, version 1
///     80 Hz: 3.5 dB
///     170 Hz: -2 dB
///
/// The first line says what it is. Each line behind it is a band: its centre in hertz and its gain in decibels,
/// from -15 to 15, with a point before the fraction. The bands are those of the equalizer, each of them once, in
/// any order. Empty lines and lines that begin with # are passed over; blanks and tabs between the words of a line,
/// CR before the line's end and a byte order mark do not matter. The width of a band is the player's, not the
/// file's.
///
/// Main thread only.
namespace sound {

/// Lowest band first, in as many digits as tell each gain from its neighbours: read back it is the same to the bit.
QByteArray equalizerText(const EqualizerBands& bands);

/// Takes over the gains that the text gives to these bands. False, and no band changed, where it is not such a text
/// or its bands are not these.
bool readEqualizerText(std::string_view text, EqualizerBands& bands);

/// Writes the file, which appears whole or not at all; folders that are missing are made. None, or
/// FileCreationFailed.
EngineError saveEqualizerFile(const QString& path, const EqualizerBands& bands);

/// Takes over the gains of the file. None; or InvalidEqualizerFile, and no band changed, where it cannot be read or
/// is no such text.
EngineError loadEqualizerFile(const QString& path, EqualizerBands& bands);

}  // namespace sound
