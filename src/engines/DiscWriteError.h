#pragma once

#include <QString>

/// What a drive said when it failed.
struct DiscDeviceError
{
    int code = 0;
    QString description;

    /// Who made the drive, and what it is called.
    QString maker;
    QString model;

    bool operator==(const DiscDeviceError&) const = default;
};

/// What went wrong with a file.
struct DiscFileError
{
    int code = 0;
    QString description;
    QString fileName;

    bool operator==(const DiscFileError&) const = default;
};

/// Why a write failed. What else is set depends on the kind.
struct DiscWriteError
{
    static constexpr int device = 1;      ///< `deviceError`
    static constexpr int outputFile = 2;  ///< `fileError`: what is written, or the cache
    static constexpr int sourceFile = 3;  ///< `fileError`: a track
    static constexpr int system = 5;      ///< `systemCode`, an errno, and `description`

    /// One of these; any other is told by `description` alone.
    int kind = 0;
    QString description;
    DiscDeviceError deviceError;
    DiscFileError fileError;
    int systemCode = 0;

    bool operator==(const DiscWriteError&) const = default;
};
