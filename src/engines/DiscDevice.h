#pragma once

#include <QString>

/// What a device tells of the disc in it.
class DiscInfo
{
public:
    DiscInfo() = default;
    DiscInfo(bool present, bool blank, qint64 used)
        : present(present)
        , blank(blank)
        , used(used)
    {
    }

    bool GetDiscPresent() const { return present; }

    /// Nothing is on it, and music can be written to it.
    bool GetDiscBlank() const { return blank; }

    /// Sectors.
    qint64 GetDiscUsed() const { return used; }

private:
    bool present = false;
    bool blank = false;
    qint64 used = 0;
};

/// Something that discs are written with: a drive, or a disc image on the hard disc. The engine owns it.
///
/// What is told of a disc, its speeds included, is what the last RefreshDisc found, and nothing before the first
/// one. While a device writes, or is still busy with a write that was given up, RefreshDisc changes nothing.
class DiscDevice
{
public:
    virtual ~DiscDevice();

    static constexpr int underrunProtection = 57;

    virtual QString GetDeviceName() = 0;

    /// Only `underrunProtection` is ever true.
    virtual bool GetCapability(int code) = 0;

    /// It can write audio discs.
    virtual bool IsDeviceUsable() = 0;

    virtual short GetWriteSpeedCount() = 0;

    /// What SetWriteSpeed takes; 0 where there is no such index.
    virtual int GetWriteSpeedCode(short index) = 0;

    /// Multiples of the speed at which a disc is played.
    virtual double GetWriteSpeedRate(int code) = 0;

    /// Hands the written disc over: opens the drive. The argument means nothing.
    virtual void ReleaseDisc(bool) = 0;

    /// Reads the disc that is loaded now. The argument means nothing. Blocks for as long as the drive needs to see
    /// a disc that was just put in, seconds maybe.
    virtual void RefreshDisc(int) = 0;

    virtual DiscInfo GetDiscInfo() = 0;

    /// Sectors; 0 where there is no disc that can be written. The argument means nothing.
    virtual qint64 GetFreeSpace(int) = 0;
};
