#pragma once

#include <string>

namespace burn {
struct burn_drive;
struct burn_drive_info;
}  // namespace burn

namespace sound {

class LibburnTurn;

/// A drive while something is done with it. Nobody else has it meanwhile, and afterwards everybody may.
///
/// A drive that another program uses is left alone, at once. An open tray stays open.
class GrabbedDrive
{
public:
    /// @p address is the device's file; the turn must be granted.
    GrabbedDrive(const LibburnTurn& turn, const std::string& address);
    ~GrabbedDrive();
    GrabbedDrive(const GrabbedDrive&) = delete;
    GrabbedDrive& operator=(const GrabbedDrive&) = delete;

    bool isThere() const { return drives != nullptr; }

    /// Why it is not, as far as the system told: an errno, or 0.
    int systemError() const { return error; }

    /// As libburn takes it; only while it is there.
    burn::burn_drive* drive() const;

    /// It is opened when it is given back.
    void openAtEnd() { opens = true; }

private:
    void forget();

    burn::burn_drive_info* drives = nullptr;
    int error = 0;
    bool opens = false;
};

}  // namespace sound
