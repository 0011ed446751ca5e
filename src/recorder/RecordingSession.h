#pragma once

#include <QObject>
#include <functional>

class QTimer;
class ReadOut;
class RecorderEngine;
class RecordingNames;

/// What runs in a recorder's window: a recording that the user started, the replay of the last one, or nothing.
///
/// The clock counts the ticks of its timer, not the sound: it tells the user that something runs, and where in a
/// part. The engine is told only what it has to do; whether it could is not asked.
class RecordingSession : public QObject
{
    Q_OBJECT

public:
    /// @p random gives numbers from 0 on and below 1. All of it outlives the session.
    RecordingSession(RecorderEngine& Recorder, const RecordingNames& names, ReadOut& lblTime,
                     std::function<double()> random, QObject* parent = nullptr);

    /// Whether a recording runs that the user started, or that a signal has.
    bool isRecording() const { return recordingActive; }

    /// Does nothing during replay. During a recording it begins the next file.
    void cmdRecord_Click();

    /// Ends the recording, or else the replay. Does nothing where neither runs.
    void cmdStop_Click();

    /// Replays from the beginning. Does nothing during a recording.
    void cmdPlay_Click();

    /// Ends the file that is being written and goes on in the next one, whose time counts from zero.
    void startNextPart();

    /// The display stands still, or counts on from there.
    void stopClock();
    void runClock();

private:
    void tmrRecording_Timer();

    /// As 01:23:4 and a last digit that says nothing and only runs, 0 to 8.
    QString FormatElapsed(int milliseconds) const;

    RecorderEngine& Recorder;
    const RecordingNames& names;
    ReadOut& lblTime;
    const std::function<double()> random;
    QTimer* const tmrRecording;

    bool recordingActive = false;
    bool playbackActive = false;
    int elapsedMs = 0;
};
