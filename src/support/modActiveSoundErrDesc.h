#pragma once

#include <QString>

namespace modActiveSoundErrDesc {

/// What a LastError() code of an engine means, as a message box says it behind the failed action. Empty for codes
/// that have no text.
QString description(int code);

}  // namespace modActiveSoundErrDesc
