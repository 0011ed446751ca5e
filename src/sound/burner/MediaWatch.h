#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace sound {

/// Whether a drive still has in it what it had. The kernel tells so without a look at the disc and without the
/// motor: it notes when the disc was changed, and knows where the tray is.
///
/// What cannot be asked has changed: a drive that cannot be opened, because it is gone or another program uses it;
/// one that is not ready yet, or does not tell; a kernel that does not answer. What another program writes to a
/// disc that stays in the drive is not seen.
class MediaWatch
{
public:
    /// @p address is the device's file. It is opened only while the kernel is asked.
    explicit MediaWatch(std::string address);

    /// Since the last question; false the first time, and after forget(). Who then looks at the disc will be told
    /// by the next question of all that has changed since this one, also during the look.
    bool isUnchanged();

    /// A disc was in the drive at the last question, as the kernel sees it.
    bool hasDisc() const;

    void forget() { last.reset(); }

private:
    struct Media
    {
        int status = 0;               // of the drive, its tray included, as the kernel's header numbers it
        std::int64_t changedAt = -1;  // on the kernel's clock; the same for all where it does not tell

        bool operator==(const Media&) const = default;
    };

    static std::optional<Media> mediaAt(const std::string& address);
    static std::optional<Media> mediaOf(int file);

    const std::string address;
    std::optional<Media> last;
};

}  // namespace sound
