#pragma once

#include "sound/disc/DiscPlan.h"

#include <QByteArray>
#include <QString>

namespace sound {

/// The cue sheet of a disc whose sectors lie in the file @p image beside it, with the pauses before the tracks,
/// where the plan has any: index 00 is where a pause begins, 01 where the track does.
///
/// In UTF-8. Cue sheets know no way to write a quotation mark within a text, nor a new line: the one becomes an
/// apostrophe, the other a blank. Texts end after 80 characters, as readers expect.
QByteArray cueSheet(const DiscPlan& plan, const QString& image);

/// Sectors of silence that lie before the track, from 0, in such a file.
std::int64_t pauseBefore(const DiscPlan& plan, int track);

/// Sectors of all such a file.
std::int64_t imageSectors(const DiscPlan& plan);

}  // namespace sound
