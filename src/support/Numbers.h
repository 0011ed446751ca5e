#pragma once

#include <QStringView>

/// The number that a text begins with, as every text box of the program is read: leading blanks are passed over,
/// the digits up to the first other character count, no digits is 0. Numbers too large for the type give its
/// largest.
int leadingNumber(QStringView text);

/// The nearest whole number; a half goes to the even neighbour. Results outside the type's range are cut to it.
int roundHalfToEven(double number);
