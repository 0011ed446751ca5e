#include "encoding/IsNoMp3Platform.h"

#include <QOperatingSystemVersion>

HostPlatform HostPlatform::current()
{
    const QOperatingSystemVersion system = QOperatingSystemVersion::current();
    return {system.type() == QOperatingSystemVersion::Windows, system.majorVersion()};
}
