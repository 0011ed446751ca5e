#pragma once

/// The system that the program runs on, as it reports itself.
struct HostPlatform
{
    bool isWindowsNt = false;
    int majorVersion = 0;

    static HostPlatform current();
};

/// Whether a platform reads no MP3 files for a disc, so that a dialog does not offer them.
constexpr bool IsNoMp3Platform(const HostPlatform& platform)
{
    constexpr int withoutMp3 = 6;
    return platform.isWindowsNt && platform.majorVersion == withoutMp3;
}
