#pragma once

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <QByteArray>
#include <QTemporaryDir>
#include <cstring>
#include <thread>
#include <vector>

namespace sound::test {

/// A sound server that takes each connection and never says a word. While it lives, this process talks to it.
class SilentServer
{
public:
    SilentServer()
        : serverBefore(qgetenv("PULSE_SERVER"))
    {
        const QByteArray path = folder.filePath("native").toLocal8Bit();
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
        works = bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
                listen(listening, 8) == 0;
        qputenv("PULSE_SERVER", "unix:" + path);
        accepting = std::thread([this] {
            for (int taken = accept(listening, nullptr, nullptr); taken >= 0;
                 taken = accept(listening, nullptr, nullptr))
                connections.push_back(taken);
        });
    }

    ~SilentServer()
    {
        end();
        qputenv("PULSE_SERVER", serverBefore);
    }

    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;

    /// How many connections it took until now, the last moment that it takes any.
    std::size_t end()
    {
        if (!accepting.joinable())
            return connections.size();
        shutdown(listening, SHUT_RDWR);  // wakes the thread
        accepting.join();
        for (const int connection : connections)
            close(connection);
        close(listening);
        return connections.size();
    }

    bool works = false;

private:
    const QTemporaryDir folder;
    const QByteArray serverBefore;
    const int listening = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    std::vector<int> connections;
    std::thread accepting;
};

}  // namespace sound::test
