#pragma once

#include <QString>

class DiscDevice;

/// The tracks that are to become a disc, and how they are to be written. The engine owns it.
class AudioProject
{
public:
    virtual ~AudioProject();

    static constexpr int discAtOnce = 232;
    static constexpr int trackAtOnce = 2;

    /// What GetTrackFormat tells.
    enum Format : int
    {
        Wav = 0,
        Ogg = 1,
        Mp3 = 2,
        Wma = 3,
    };

    /// `discAtOnce`: the tracks follow each other without a pause, and the whole disc is one run of the laser. All
    /// other numbers: each track by itself, with two seconds of silence before it.
    virtual void SetWriteMode(int mode) = 0;

    /// A code of the device's GetWriteSpeedCode; 0 is as fast as disc and device can.
    virtual void SetWriteSpeed(int code) = 0;

    virtual bool GetTestMode() = 0;

    /// Everything is done as if, and nothing is written.
    virtual void SetTestMode(bool test) = 0;
    virtual void SetBurnProof(bool on) = 0;

    /// All files are decoded before the writing begins.
    virtual void SetCacheFiles(bool on) = 0;

    /// Asks the write under way to end, which it does within a second, with the stage Cancelled; the device may be
    /// busy with that for longer. A disc whose last sector has been sent is still written, and Completed. Nothing
    /// while there is no write.
    virtual void AbortWrite() = 0;

    /// Begins to write and returns; DiscEngine's signals follow. @p ok is false, and none follow, while a write is
    /// under way, without a device or a track, and with more tracks than a disc can have.
    virtual void StartWrite(DiscDevice* device, bool& ok) = 0;

    /// Puts a file in at @p position, from 1, before the track that has it; what is beyond the end is the end. A
    /// name without a folder lies in the current one. @p ok is false, and the tracks are as before, where the file
    /// is no sound of a format above, or less than a disc can hold: below 44100 Hz. Also while a write is under
    /// way.
    ///
    /// What is in the file is counted for its true length, which may mean to read all of it; not so for a track
    /// that has just been removed.
    virtual void AddTrack(const QString& file, int position, bool& ok) = 0;

    /// Positions are from 1. One that no track has removes nothing, and has no file, the format Wav and the length
    /// 0.
    virtual void RemoveTrack(int position) = 0;
    virtual int GetTrackCount() = 0;
    virtual QString GetTrackFile(int position) = 0;
    virtual int GetTrackFormat(int position) = 0;

    /// Sectors, as DiscLength takes them: what the track needs on the disc without the gap before it.
    virtual qint64 GetTrackLength(int position) = 0;

    virtual void ClearTracks() = 0;

    /// Sectors that all tracks need, however they are written. The pauses between tracks that are written one by
    /// one come on top; where there is no room for them the write fails before anything is decoded.
    virtual qint64 GetRequiredSpace() = 0;

    /// 1, music, is the only kind there is.
    virtual void SetProjectKind(int kind) = 0;
};
