#pragma once

#include "sound/player/Player.h"

#include <QString>
#include <QTimer>
#include <functional>
#include <memory>

namespace sound {

/// Plays a recording, as it is, through the output that the player uses. Main thread.
class LastRecording
{
public:
    explicit LastRecording(RenderThread::MakeOutput makeOutput);
    ~LastRecording();

    /// From its beginning. False where there is no such sound. @p ended is called once from the event loop when it
    /// has come to its end, and not where it is stopped or begun again before.
    bool play(const QString& path, std::function<void()> ended);
    void stop();

private:
    void follow();

    const RenderThread::MakeOutput makeOutput;
    std::unique_ptr<Player> player;  // made when it is first needed: it opens the output
    std::function<void()> whenEnded;
    QTimer watch;
};

}  // namespace sound
