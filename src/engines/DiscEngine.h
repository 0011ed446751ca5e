#pragma once

#include "engines/DiscWriteError.h"

#include <QObject>
#include <QString>

class AudioProject;
class DiscDevice;

/// Where a write is.
enum class DiscStage : int
{
    Preparing = 0,
    CachingImage = 1,  ///< Decoding all tracks, before the writing begins.
    Caching = 2,       ///< Decoding a reserve, where the rest is decoded while the disc is written.
    Writing = 3,
    ClosingTrack = 4,
    LeadIn = 5,
    LeadOut = 6,
    UpdatingVolume = 8,

    // A write ends with one of these.
    Completed = 9,
    Cancelled = 10,
    Failed = 11,
};

/// A file that had a problem, though not one that ends the write.
struct DiscFileReport
{
    QString fileName;
    QString description;

    bool operator==(const DiscFileReport&) const = default;
};

/// Writes audio discs.
///
/// **Discs.** Red Book: sectors of 2352 bytes, which are 588 frames of 44100 Hz, 16 bits and two channels; tracks
/// of whole sectors, at least four seconds long; at most 99 of them. What has another rate, width or number of
/// channels is brought to that.
/// **Threads.** Calls and signals belong to the main thread. Writing has threads of its own.
/// **End.** An engine that is destroyed gives up the write under way.
class DiscEngine : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~DiscEngine() override;

    /// Looks for devices; those found before are gone. The argument means nothing. False where the search itself
    /// fails; the devices are then those that need no search. Nothing is changed while a write is under way.
    virtual bool InitDevices(bool) = 0;
    virtual short GetDeviceCount() = 0;

    /// Null where there is no such index.
    virtual DiscDevice* GetDevice(short index) = 0;

    /// The one that there is.
    virtual AudioProject* GetAudioProject() = 0;

signals:
    /// Percents are 0 to 100, of the whole work and of the track; the track is from 1, and 0 where there is none.
    /// When one of the last three stages comes, the engine is ready for the next write.
    void WriteProgress(int totalPercent, int track, int trackPercent, DiscStage stage);

    /// Whoever sets @p goOn lets the write go on; else it fails for this file.
    void FileWarning(const DiscFileReport& report, bool& goOn);

    /// Follows the stage Failed.
    void WriteError(const DiscWriteError& error);
};
