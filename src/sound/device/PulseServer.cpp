#include "sound/device/PulseServer.h"

#include <pulse/context.h>
#include <pulse/mainloop.h>
#include <pulse/operation.h>

namespace sound {

PulseServer::PulseServer(std::chrono::milliseconds wait)
    : longestWait(wait)
    , mainloop(pa_mainloop_new())
{
}

PulseServer::~PulseServer()
{
    disconnect();
    pa_mainloop_free(mainloop);
}

void PulseServer::disconnect()
{
    if (connection == nullptr)
        return;
    pa_context_disconnect(connection);
    pa_context_unref(connection);
    connection = nullptr;
}

bool PulseServer::connect()
{
    startWaiting();
    disconnect();
    connection = pa_context_new(pa_mainloop_get_api(mainloop), "Larkspin");
    if (connection == nullptr || pa_context_connect(connection, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
        return false;
    const auto settled = [this] { return isConnected() || !PA_CONTEXT_IS_GOOD(pa_context_get_state(connection)); };
    return waitFor(settled) && isConnected();
}

bool PulseServer::isConnected() const
{
    return connection != nullptr && pa_context_get_state(connection) == PA_CONTEXT_READY;
}

void PulseServer::startWaiting()
{
    deadline = Clock::now() + longestWait;
}

bool PulseServer::isAnswered(pa_operation* question)
{
    if (question == nullptr)
        return false;
    const bool answered = waitFor([question] { return pa_operation_get_state(question) != PA_OPERATION_RUNNING; });
    const bool done = answered && pa_operation_get_state(question) == PA_OPERATION_DONE;
    pa_operation_cancel(question);
    pa_operation_unref(question);
    return done;
}

bool PulseServer::waitFor(const std::function<bool()>& condition)
{
    while (!condition()) {
        const auto left = std::chrono::duration_cast<std::chrono::microseconds>(deadline - Clock::now());
        if (left.count() <= 0 || pa_mainloop_prepare(mainloop, static_cast<int>(left.count())) < 0 ||
            pa_mainloop_poll(mainloop) < 0 || pa_mainloop_dispatch(mainloop) < 0)
            return false;
    }
    return true;
}

}  // namespace sound
