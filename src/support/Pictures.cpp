#include "support/Pictures.h"

QIcon programIcon()
{
    return QIcon(QStringLiteral(":/larkspin/larkspin.svg"));
}
