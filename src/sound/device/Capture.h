#pragma once

#include "sound/units/Frames.h"

#include <QString>
#include <memory>
#include <vector>

namespace sound {

class CaptureRing;
class Wakeup;

/// A way into a device: the microphone or the line socket of a sound card.
struct InputLine
{
    QString key;   ///< What the system knows it by.
    QString name;  ///< What the user reads.
};

/// Something to record from.
struct CaptureDevice
{
    QString key;
    QString name;
    SampleRate rate;  ///< Its own.
    int volume = 0;   ///< 0 to 100, of the loudest channel.

    /// At least one: a device that tells none is a line of its own, with an empty key.
    std::vector<InputLine> lines;
    int currentLine = 0;
};

/// Brings what a device captures into a ring, until it is destroyed or the device goes away. It never goes over to
/// another device by itself.
class Capture
{
public:
    virtual ~Capture();

    /// Whether nothing will come any more: the device was unplugged, or the sound server ended. Any thread.
    virtual bool ended() const = 0;
};

/// What the system has to record from. Each call asks it anew and waits for the answer, but not longer than a
/// moment; where there is none the answers are empty and nothing is changed. Main thread.
class CaptureDevices
{
public:
    virtual ~CaptureDevices();

    /// The default one comes first.
    virtual std::vector<CaptureDevice> devices() = 0;

    /// The device of this key as it is now; one without a key where it is gone.
    virtual CaptureDevice device(const QString& key) = 0;

    virtual void selectLine(const QString& key, const QString& line) = 0;

    /// 0 to 100 for the loudest channel; the others keep their proportion. One that is there already is left as it
    /// is, to the system's last digit.
    virtual void setVolume(const QString& key, int volume) = 0;

    virtual void setMuted(const QString& key, bool muted) = 0;

    /// Captures in stereo, at the rate that @p device tells. @p reader is notified when frames have come, and at
    /// the end; it and the ring outlive the capture. Null where the device cannot be used.
    virtual std::unique_ptr<Capture> capture(const CaptureDevice& device, CaptureRing& ring, Wakeup& reader) = 0;
};

}  // namespace sound
