#pragma once

namespace sound {

/// Ends another thread's sleep in poll(). Any thread may notify(); the sleeping one watches descriptor() for input
/// and calls clear().
class Wakeup
{
public:
    Wakeup();
    ~Wakeup();
    Wakeup(const Wakeup&) = delete;
    Wakeup& operator=(const Wakeup&) = delete;

    int descriptor() const { return event; }
    void notify();
    void clear();

private:
    int event;
};

}  // namespace sound
