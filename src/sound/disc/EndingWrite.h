#pragma once

#include <QEventLoopLocker>
#include <QObject>
#include <QTimer>
#include <memory>

namespace sound {

class DiscWrite;

/// Sees a write to its end that is over for the user: it has been given up, and its drive is still busy with that.
/// Drives need half a minute for it, and a drive that is left alone in it keeps its tray shut. So the program stays
/// until then too, whatever windows it still has. It goes by itself when the write has ended, and where the
/// application ends before, that waits for it.
///
/// **Threads.** The main thread.
class EndingWrite : public QObject
{
public:
    static void see(std::shared_ptr<DiscWrite> write);

private:
    explicit EndingWrite(std::shared_ptr<DiscWrite> write);

    const std::shared_ptr<DiscWrite> write;
    const QEventLoopLocker programStays;
    QTimer looks;
};

}  // namespace sound
