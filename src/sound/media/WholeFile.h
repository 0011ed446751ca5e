#pragma once

#include <QByteArray>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace sound {

/// A file that is there whole under its name, or not at all.
///
/// It grows without a name in the same folder and takes its own, in place of the file that bore it, when finish()
/// has brought all of it to the disc. Whatever ends the writing before that, be it the end of the program by force,
/// leaves nothing behind and what bore the name untouched.
///
/// A hidden name it has for the instant in which it takes the place of another file, and all the while where the
/// file system knows no files without a name (that of a memory stick, say): a program that is ended by force then
/// leaves it.
///
/// Only a regular file is replaced: never a folder, a pipe or a device.
///
/// **Order.** writeAt() any number of times, then finish() once. **Threads.** One at a time.
class WholeFile
{
public:
    /// Makes the folders that are missing. Null where the file cannot be made.
    static std::unique_ptr<WholeFile> create(const QString& path);

    /// Takes the file away again unless finish() succeeded.
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    /// False when the disc is full or fails.
    bool writeAt(std::int64_t offset, std::span<const std::byte> bytes);

    /// False where the disc fails now, and where it did before.
    bool finish();

private:
    WholeFile(int file, QByteArray name, QByteArray growingName);

    bool takeName();

    int file;
    QByteArray name;
    QByteArray growingName;  // empty while the file has no name, and once it has its own
    bool failed = false;
};

}  // namespace sound
