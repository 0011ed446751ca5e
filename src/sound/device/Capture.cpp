#include "sound/device/Capture.h"

namespace sound {

Capture::~Capture() = default;
CaptureDevices::~CaptureDevices() = default;

}  // namespace sound
