#pragma once

#include <QString>
#include <mutex>
#include <vector>

namespace sound {

/// What libburn had to say of something that went wrong.
struct LibburnMessage
{
    int code = 0;  // libburn's own number
    QString text;
    int systemError = 0;  // an errno, or 0

    bool operator==(const LibburnMessage&) const = default;
};

/// libburn, while something is done with it: started before, and afterwards nothing is left of it, no drive held
/// and no thread. It prints nothing and handles no signals.
///
/// libburn is one for the whole process. Who comes while another is at it is not granted the turn and does without:
/// a disc can take an hour.
class LibburnTurn
{
public:
    LibburnTurn();
    ~LibburnTurn();
    LibburnTurn(const LibburnTurn&) = delete;
    LibburnTurn& operator=(const LibburnTurn&) = delete;

    /// Else libburn is not to be called.
    bool isGranted() const { return started; }

    /// What has come since the last question, the oldest first. Mere notes and warnings are not among it.
    std::vector<LibburnMessage> newMessages();

private:
    std::unique_lock<std::mutex> turn;
    bool started = false;
};

}  // namespace sound
