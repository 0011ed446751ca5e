#pragma once

class AudioProject;
class DiscDevice;

/// What a disc writer's window holds besides its controls; its parts share it.
struct DiscState
{
    /// Taken when the window opens, and used to its end.
    AudioProject* Project = nullptr;

    /// The device that is chosen; null where the machine has none.
    DiscDevice* Device = nullptr;

    /// No write is under way. The window begins as if one were: until its load is through it does not close.
    bool WindowIdle = false;
};
