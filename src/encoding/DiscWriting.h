#pragma once

#include <QObject>

class DiscDevicePanel;
class DiscEngine;
class MsgBox;
class TrackListPanel;
class WindowLife;
class WriteProgressPanel;
struct DiscFileReport;
struct DiscState;
struct DiscWriteError;
enum class DiscStage : int;

/// The parts of a disc writer's window that a write goes through.
struct DiscWritingParts
{
    DiscEngine& AudioBurner;
    DiscDevicePanel& devices;
    TrackListPanel& tracks;
    WriteProgressPanel& progress;
    DiscState& state;
    WindowLife& life;
    MsgBox& msgBox;
};

/// A write, from its command to its end.
///
/// It has two states, idle and writing, in DiscState::WindowIdle. A write that the project has started makes it
/// writing; the stages that end a write make it idle again. In between it lives by the engine's signals: nothing
/// waits.
///
/// A message box turns the event loop. What the engine tells meanwhile is shown, and what the routine that opened
/// the box does next counts in the end.
class DiscWriting : public QObject
{
    Q_OBJECT

public:
    /// The parts outlive it.
    explicit DiscWriting(const DiscWritingParts& parts, QObject* parent = nullptr);

    void SetControlsIdle(bool idle);

private:
    void cmdWriteDisc_Click();
    void cmdCancel_Click();
    bool CheckDiscSpace();

    void AudioBurner_WriteProgress(int totalPercent, int track, int trackPercent, DiscStage stage);
    void AudioBurner_FileWarning(const DiscFileReport& report, bool& goOn);
    void AudioBurner_WriteError(const DiscWriteError& error);
    void writeCompleted();
    void writeCancelled();

    const DiscWritingParts parts;
};
