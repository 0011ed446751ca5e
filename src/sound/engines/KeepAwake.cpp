#include "sound/engines/KeepAwake.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

namespace sound {

/// Someone on the bus who may be asked.
struct KeepAwake::Keeper
{
    const char* service;
    const char* path;
    const char* interface;
    const char* release;
    bool isSessionManager;

    QDBusMessage call(const char* method) const
    {
        QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
        message.setAutoStartService(false);
        return message;
    }

    QDBusMessage question(const QString& reason) const
    {
        constexpr uint noWindow = 0;
        constexpr uint againstSuspending = 4;
        const QString program = QStringLiteral("larkspin");
        QDBusMessage message = call("Inhibit");
        if (isSessionManager)
            message << program << noWindow << reason << againstSuspending;
        else
            message << program << reason;
        return message;
    }

    void letSleep(const QDBusConnection& bus, uint cookie) const
    {
        QDBusMessage message = call(release);
        message << cookie;
        bus.asyncCall(message);
    }

    static const Keeper all[];
};

const KeepAwake::Keeper KeepAwake::Keeper::all[] = {
    {"org.freedesktop.PowerManagement", "/org/freedesktop/PowerManagement/Inhibit",
     "org.freedesktop.PowerManagement.Inhibit", "UnInhibit", false},
    {"org.gnome.SessionManager", "/org/gnome/SessionManager", "org.gnome.SessionManager", "Uninhibit", true},
};

KeepAwake::KeepAwake(QString reasonToTell, const QDBusConnection& sessionBus)
    : reason(std::move(reasonToTell))
    , bus(sessionBus)
{
}

// A promise that is still to come must be given back too.
KeepAwake::~KeepAwake()
{
    keep(false);
    if (!asking)
        return;
    QDBusPendingCallWatcher* late = asking.release();
    late->disconnect();
    late->setParent(QCoreApplication::instance());
    QObject::connect(late, &QDBusPendingCallWatcher::finished,
                     [on = bus, keeper = asked](QDBusPendingCallWatcher* call) {
                         const QDBusPendingReply<uint> reply = *call;
                         call->deleteLater();
                         if (reply.isValid())
                             keeper->letSleep(on, reply.value());
                     });
}

void KeepAwake::keep(bool awake)
{
    wanted = awake;
    if (wanted && asked == nullptr && bus.isConnected())
        ask(Keeper::all[0]);
    else if (!wanted && asked != nullptr && !asking)
        release();
}

// Who gives no cookie does not know the question: the next one is asked. A promise that is not wanted any more when
// it comes is given back.
void KeepAwake::ask(const Keeper& keeper)
{
    asked = &keeper;
    asking = std::make_unique<QDBusPendingCallWatcher>(bus.asyncCall(keeper.question(reason)));
    QObject::connect(asking.get(), &QDBusPendingCallWatcher::finished, [this](QDBusPendingCallWatcher* call) {
        const QDBusPendingReply<uint> reply = *call;
        asking.release()->deleteLater();
        const Keeper* next = asked + 1;
        if (reply.isValid()) {
            cookie = reply.value();
            if (!wanted)
                release();
        } else if (wanted && next != std::end(Keeper::all)) {
            ask(*next);
        } else {
            asked = nullptr;
        }
    });
}

void KeepAwake::release()
{
    asked->letSleep(bus, cookie);
    asked = nullptr;
}

}  // namespace sound
