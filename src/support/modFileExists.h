#pragma once

#include <QString>

namespace modFileExists {

/// Whether @p path names a file that is there now, hidden and read-only ones included; with @p foldersToo also a
/// folder. The answer is the same, false, for an empty path, one that is not absolute, and one whose disc or mount
/// is gone. Links count as what they lead to; pipes, sockets and devices are no files.
bool FileExists(const QString& path, bool foldersToo = false);

}  // namespace modFileExists
