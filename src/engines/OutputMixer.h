#pragma once

/// How loud the system's speakers are set: asked once, when the program starts, and never changed from here.
///
/// **Order.** mixerOpen, then mixerGetLineControls, then mixerGetControlDetails, each once and only if the one
/// before it succeeded. What is open is closed with the object.
///
/// **Threads.** Main thread only. The three together wait a fraction of a second at most, also for a system that
/// never answers.
class OutputMixer
{
public:
    virtual ~OutputMixer();

    /// 0, or another number where there is no mixer to open.
    virtual int mixerOpen() = 0;

    /// Whether there are speakers and they have a volume control.
    virtual bool mixerGetLineControls() = 0;

    /// What the control stands at, as one value for all channels: 0 is silence, 65535 the full volume and all above
    /// it. -1 where it can't be read.
    virtual int mixerGetControlDetails() = 0;
};
