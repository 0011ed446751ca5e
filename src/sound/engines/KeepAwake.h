#pragma once

#include <QDBusConnection>
#include <QString>
#include <memory>

class QDBusPendingCallWatcher;

namespace sound {

/// Keeps the computer from falling asleep by itself, as far as the user's desktop can be asked for that: through
/// the power manager, or else the session manager, on the session bus. Without a bus, or without either, nothing
/// happens.
///
/// Nothing here waits: answers come through the event loop. Main thread.
class KeepAwake
{
public:
    /// @p reason is what the desktop may show the user.
    explicit KeepAwake(QString reason, const QDBusConnection& bus = QDBusConnection::sessionBus());

    /// Lets it sleep again.
    ~KeepAwake();
    KeepAwake(const KeepAwake&) = delete;
    KeepAwake& operator=(const KeepAwake&) = delete;

    void keep(bool awake);

private:
    struct Keeper;

    void ask(const Keeper& keeper);
    void release();

    const QString reason;
    QDBusConnection bus;
    bool wanted = false;
    const Keeper* asked = nullptr;  // who keeps, or has been asked to
    std::unique_ptr<QDBusPendingCallWatcher> asking;
    uint cookie = 0;  // what the promise is to be given back with
};

}  // namespace sound
