#pragma once

/// Why an engine's last operation failed, as LastError() tells it and modActiveSoundErrDesc puts it into words.
///
/// Only the codes that an engine of this program reports have a name here; the table of texts knows more.
enum class EngineError : int
{
    None = 0,
    InvalidPlayer = -1,    ///< There is no player of this number.
    NotEnoughMemory = -2,  ///< No memory, or no room on the disc for what does not fit into memory.
    ParameterOutOfRange = -3,
    InvalidSoundFile = -6,    ///< Not a sound, of no known format, or broken beyond reading.
    FileCreationFailed = -8,  ///< A file could not be written: folder read-only, disc full.
    AlreadyInitialized = -14,
    NoSoundLoaded = -20,
    Unsupported = -24,
    EqualizerBandNotAvailable = -28,
    InvalidDrive = -35,    ///< The drive that a CD track names is not there.
    DriveNotReady = -36,   ///< No disc in it, or it cannot be read.
    InvalidCdTrack = -37,  ///< The disc has no track of this number.
    NotAnAudioTrack = -41,
    NotInitialized = -49,  ///< InitPlayers or InitEditor has not been called.
    InvalidEqualizerFile = -75,
    InvalidPosition = -80,  ///< An empty or reversed range.
    InvalidExportSettings = -82,
    Unknown = -100,
    EditorBusy = -110,
    EditorEmpty = -111,
    PlayerBusy = -114,
};

constexpr int code(EngineError error)
{
    return static_cast<int>(error);
}
