#pragma once

#include <QString>

/// The folders that the program reads from and writes to. Paths are separated by '/'.
namespace modSpecialFolders {

/// The user's documents folder, without a separator at its end; empty where there is none.
QString documentsFolder();

/// "Larkspin Recordings" in the user's documents, with a separator at its end so that callers append file names.
/// It is not created here. Without a documents folder the path is the bare relative part.
QString recordingsFolder();

/// Where the playlist files live from run to run, created when it is missing. No separator at its end.
QString applicationFolder();

/// Where the manual lies: beside the program, or where an installed program keeps its data. No separator at its
/// end.
QString helpFolder();

}  // namespace modSpecialFolders
