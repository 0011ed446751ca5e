#pragma once

namespace sound {

/// Of the seven classes of a thread's priority, from 0, idle, over 3, normal, to 6, time critical.
struct ThreadPriority
{
    static constexpr int idle = 0;
    static constexpr int normal = 3;
    static constexpr int timeCritical = 6;

    int index = normal;
};

/// Gives the calling thread, and no other, the nice level of this class.
///
/// A thread inherits the level of the one that starts it, and that is the normal one: the others are so many steps
/// above or below. What lies above is a privilege: where the system does not grant it the thread rises as far as it
/// may, which on most systems is nowhere. A thread that once went below cannot come back either, so one job does
/// not change that of the next only where each has a thread of its own.
void takePriority(ThreadPriority priority);

}  // namespace sound
