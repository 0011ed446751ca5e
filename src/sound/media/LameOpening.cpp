#include "sound/media/LameOpening.h"

namespace sound {

std::mutex& lameOpening()
{
    static std::mutex mutex;
    return mutex;
}

}  // namespace sound
