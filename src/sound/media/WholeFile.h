#pragma once

#include "sound/media/NewFile.h"
#include "sound/media/OutputFile.h"

#include <QString>
#include <memory>
#include <stop_token>

namespace sound {

/// A file that is there whole under its name, or not at all.
///
/// It grows without a name in the same folder and takes its own, in place of the file that bore it, when finish()
/// has brought all of it to the disc. Whatever ends the writing before that, be it the end of the program by force,
/// leaves nothing behind and what bore the name untouched, as far as the file system allows: see NewFile.
///
/// **Order.** writeAt() any number of times, bringToDisc() if wanted, then finish() once; without it the file goes
/// with this object.
/// **Threads.** One at a time.
class WholeFile : public OutputFile
{
public:
    /// Makes the folders that are missing. Null where the file cannot be made.
    static std::unique_ptr<WholeFile> create(const QString& path);

    bool writeAt(std::int64_t offset, std::span<const std::byte> bytes) override;

    /// Waits until all that has been written is on the disc, so that finish() takes but an instant. False where the
    /// disc fails now, and where it did before.
    bool bringToDisc();

    /// The same, but it waits no longer than until it is given up, and is false then. The disc may still take the
    /// file after that, even when this object is gone.
    bool bringToDisc(const std::stop_token& givenUp);

    /// False as bringToDisc(), and where the file cannot have its name.
    bool finish();

    /// As finish(), with another name in the same folder, and only where nothing bears that. After a false one it
    /// may be tried with the next.
    bool finishAs(const QString& fileName);

private:
    explicit WholeFile(std::unique_ptr<NewFile> file);

    std::unique_ptr<NewFile> file;
    bool failed = false;
    bool onDisc = false;
};

}  // namespace sound
