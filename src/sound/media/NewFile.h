#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

namespace sound {

/// A new file that has no name yet, and takes its own in place of the file that bears it.
///
/// A hidden name it has for the instant in which it takes the place of another file, and before that where the file
/// system knows no files without a name (that of a memory stick, say): a program that is ended by force then leaves
/// it.
///
/// Only a regular file is replaced: never a folder, a pipe or a device.
///
/// **Threads.** One at a time.
class NewFile
{
public:
    /// Makes the folders that are missing. Null where the file cannot be made.
    static std::unique_ptr<NewFile> create(const QString& path);

    /// Closes the file, and takes it away again unless it has its name.
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// To read and to write.
    int descriptor() const { return file; }

    /// Once. False where it cannot be given the name, which is then still the other file's.
    bool takeName();

    /// As takeName(), with another name in the same folder, and only where nothing bears that. After a false one it
    /// may be tried with the next.
    bool takeFreeName(const QString& fileName);

    /// So that the new name outlives a sudden end of the machine.
    void bringNameToDisc() const;

private:
    NewFile(int file, QByteArray name, QByteArray growingName);

    int file;
    QByteArray name;
    QByteArray growingName;  // empty while the file has no name, and once it has its own
};

}  // namespace sound
