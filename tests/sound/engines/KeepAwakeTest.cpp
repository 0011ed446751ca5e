#include "sound/engines/KeepAwake.h"

#include "sound/ChildProcess.h"
#include "sound/Eventually.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QFile>
#include <QTemporaryDir>

using namespace sound;
using namespace sound::test;

namespace {

/// A message bus of the test's own.
class PrivateBus
{
public:
    bool start()
    {
        const QString told = folder.filePath("told");
        daemon =
            std::make_unique<ChildProcess>("dbus-daemon",
                                           QStringList{"--session", "--nofork", "--nopidfile", "--print-address",
                                                       "--address=unix:dir=" + folder.path()},
                                           QStringList{}, "", told, folder.filePath("log"));
        return eventually([&] {
            QFile file(told);
            if (file.open(QIODevice::ReadOnly))
                address = QString::fromLocal8Bit(file.readAll());
            return address.endsWith('\n');
        });
    }

    QDBusConnection connect(const QString& name) const
    {
        return QDBusConnection::connectToBus(address.trimmed(), name);
    }

private:
    QTemporaryDir folder;
    QString address;
    std::unique_ptr<ChildProcess> daemon;
};

/// Someone on the bus who is asked for things, and answers when the test wants it.
class Desktop : public QDBusVirtualObject
{
public:
    Desktop(QDBusConnection connection, const QString& service, const QString& path)
        : bus(std::move(connection))
    {
        EXPECT_TRUE(bus.registerVirtualObject(path, this));
        EXPECT_TRUE(bus.registerService(service));
    }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override
    {
        calls << message.interface() + '.' + message.member();
        last = message;
        if (answersAtOnce)
            answer();
        return true;
    }

    /// Every question with another cookie.
    void answer()
    {
        if (refuses)
            bus.send(last.createErrorReply(QDBusError::AccessDenied, "No"));
        else if (last.member() == "Inhibit")
            bus.send(last.createReply(++cookie));
        else
            bus.send(last.createReply());
    }

    bool answersAtOnce = true;
    bool refuses = false;
    QStringList calls;
    QDBusMessage last;
    uint cookie = 76;

private:
    QDBusConnection bus;
};

const QString powerManager = "org.freedesktop.PowerManagement";
const QString powerManagerPath = "/org/freedesktop/PowerManagement/Inhibit";
const QString sessionManager = "org.gnome.SessionManager";
const QString sessionManagerPath = "/org/gnome/SessionManager";

class KeepAwakeTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(bus.start());
        ASSERT_TRUE(connection("program").isConnected());
        keepAwake = std::make_unique<KeepAwake>("Recording sound", connection("program"));
    }

    ~KeepAwakeTest() override
    {
        keepAwake.reset();
        for (const QString& name : connected)
            QDBusConnection::disconnectFromBus(name);
    }

    QDBusConnection connection(const QString& name)
    {
        connected << name;
        return bus.connect(name);
    }

    PrivateBus bus;
    QStringList connected;
    std::unique_ptr<KeepAwake> keepAwake;
};

TEST_F(KeepAwakeTest, ThePowerManagerIsAskedOnceAndGivenItsPromiseBack)
{
    Desktop power(connection("power"), powerManager, powerManagerPath);
    Desktop session(connection("session"), sessionManager, sessionManagerPath);
    keepAwake->keep(true);
    keepAwake->keep(true);
    ASSERT_TRUE(eventually([&] { return power.calls.size() == 1; }));
    EXPECT_EQ(power.last.arguments(), (QVariantList{"larkspin", "Recording sound"}));
    keepAwake->keep(false);
    keepAwake->keep(false);
    ASSERT_TRUE(eventually([&] { return power.calls.size() == 2; }));
    EXPECT_EQ(power.last.arguments(), QVariantList{77U});

    keepAwake->keep(true);
    ASSERT_TRUE(eventually([&] { return power.calls.size() == 3; }));
    keepAwake->keep(false);
    ASSERT_TRUE(eventually([&] { return power.calls.size() == 4; }));
    EXPECT_EQ(power.last.arguments(), QVariantList{78U});
    EXPECT_EQ(power.calls, (QStringList{powerManager + ".Inhibit.Inhibit", powerManager + ".Inhibit.UnInhibit",
                                        powerManager + ".Inhibit.Inhibit", powerManager + ".Inhibit.UnInhibit"}));
    EXPECT_TRUE(session.calls.isEmpty());
}

TEST_F(KeepAwakeTest, WithoutAPowerManagerTheSessionManagerIsAskedNotToSuspend)
{
    Desktop session(connection("session"), sessionManager, sessionManagerPath);
    keepAwake->keep(true);
    ASSERT_TRUE(eventually([&] { return session.calls.size() == 1; }));
    EXPECT_EQ(session.last.arguments(), (QVariantList{"larkspin", 0U, "Recording sound", 4U}));
    keepAwake->keep(false);
    ASSERT_TRUE(eventually([&] { return session.calls.size() == 2; }));
    EXPECT_EQ(session.last.arguments(), QVariantList{77U});
    EXPECT_EQ(session.calls, (QStringList{sessionManager + ".Inhibit", sessionManager + ".Uninhibit"}));
}

TEST_F(KeepAwakeTest, APromiseThatIsNoLongerWantedWhenItComesIsGivenBack)
{
    Desktop power(connection("power"), powerManager, powerManagerPath);
    power.answersAtOnce = false;
    keepAwake->keep(true);
    ASSERT_TRUE(eventually([&] { return power.calls.size() == 1; }));
    keepAwake->keep(false);
    power.answer();
    ASSERT_TRUE(eventually([&] { return power.calls.size() == 2; }));
    EXPECT_EQ(power.last.member(), "UnInhibit");
    EXPECT_EQ(power.last.arguments(), QVariantList{77U});
}

TEST_F(KeepAwakeTest, APromiseThatIsWantedAgainWhenItComesIsKept)
{
    Desktop power(connection("power"), powerManager, powerManagerPath);
    power.answersAtOnce = false;
    keepAwake->keep(true);
    ASSERT_TRUE(eventually([&] { return power.calls.size() == 1; }));
    keepAwake->keep(false);
    keepAwake->keep(true);
    power.answersAtOnce = true;
    power.answer();
    keepAwake->keep(true);
    keepAwake.reset();
    ASSERT_TRUE(eventually([&] { return power.calls.size() >= 2; }));
    EXPECT_EQ(power.calls, (QStringList{powerManager + ".Inhibit.Inhibit", powerManager + ".Inhibit.UnInhibit"}));
}

TEST_F(KeepAwakeTest, ItsEndGivesThePromiseBack)
{
    Desktop power(connection("power"), powerManager, powerManagerPath);
    keepAwake->keep(true);
    ASSERT_TRUE(eventually([&] { return power.calls.size() == 1; }));
    keepAwake.reset();
    ASSERT_TRUE(eventually([&] { return power.calls.size() == 2; }));
    EXPECT_EQ(power.last.arguments(), QVariantList{77U});
}

TEST_F(KeepAwakeTest, WhoRefusesIsAskedAgainWithTheNextRecording)
{
    Desktop session(connection("session"), sessionManager, sessionManagerPath);
    session.refuses = true;
    keepAwake->keep(true);
    ASSERT_TRUE(eventually([&] { return session.calls.size() == 1; }));
    session.refuses = false;
    EXPECT_TRUE(eventually([&] {
        keepAwake->keep(false);
        keepAwake->keep(true);
        return session.calls.size() > 1;
    }));
    EXPECT_EQ(session.calls[1], sessionManager + ".Inhibit");
}

TEST(KeepAwakeWithoutABusTest, NothingHappens)
{
    KeepAwake keepAwake("Recording sound", QDBusConnection("a bus that was never connected to"));
    keepAwake.keep(true);
    QCoreApplication::processEvents();
    keepAwake.keep(false);
}

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
