#pragma once

#include "engines/DiscWriteError.h"
#include "engines/EngineError.h"

#include <QString>

namespace sound {

/// What the system calls the fault of this errno.
QString systemWords(int systemCode);

DiscWriteError sourceFileError(const QString& file, int code, const QString& description);

/// The source file cannot be reached as the system says, or else holds no sound any more.
DiscWriteError unreadableSourceError(const QString& file);

/// @p systemCode is an errno; 0 counts as a disc that fails.
DiscWriteError outputFileError(const QString& file, int systemCode);

DiscWriteError systemError(int systemCode);

}  // namespace sound
