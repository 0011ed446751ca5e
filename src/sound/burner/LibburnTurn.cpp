#include "sound/burner/LibburnTurn.h"

#include <libburn/libburn.h>

namespace sound {

namespace {

std::mutex libburnInUse;

char fromSorryOn[] = "SORRY";

}  // namespace

LibburnTurn::LibburnTurn()
    : turn(libburnInUse, std::try_to_lock)
{
    if (!turn.owns_lock() || burn::burn_initialize() == 0)
        return;
    started = true;
    char never[] = "NEVER";
    char noPrefix[] = "";
    burn::burn_msgs_set_severities(fromSorryOn, never, noPrefix);
}

LibburnTurn::~LibburnTurn()
{
    if (started)
        burn::burn_finish();
}

std::vector<LibburnMessage> LibburnTurn::newMessages()
{
    std::vector<LibburnMessage> messages;
    char text[BURN_MSGS_MESSAGE_LEN] = "";
    char severity[80] = "";
    LibburnMessage message;
    while (burn::burn_msgs_obtain(fromSorryOn, &message.code, text, &message.systemError, severity) > 0) {
        message.text = QString::fromLocal8Bit(text).trimmed();
        messages.push_back(message);
    }
    return messages;
}

}  // namespace sound
