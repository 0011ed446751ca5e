#pragma once

#include <QIcon>

/// The program's icon, from the program itself: there also when it is not installed.
QIcon programIcon();
