#pragma once

#include "sound/burner/LibburnTurn.h"

#include "engines/DiscWriteError.h"

namespace sound {

/// Neither a drive's fault nor the system's.
DiscWriteError otherFailure(const QString& description);

/// Why a write failed, from all that libburn said meanwhile. The reason is what the drive or the system said first;
/// all else follows from it. Where neither said anything, it is libburn's own first sentence.
///
/// The code of a drive's error is its sense key, code and qualifier, a byte each: 0x030c00 is a write error of the
/// medium.
DiscWriteError writeFailure(const std::vector<LibburnMessage>& messages, const QString& maker,
                            const QString& model);

/// The drive has gone, maybe before the thread that writes has noticed.
bool tellsLossOfDrive(const LibburnMessage& message);

/// The thread that writes has noticed that it failed, and does nothing any more with what it was to write.
bool tellsEndOfFailedWrite(const LibburnMessage& message);

}  // namespace sound
