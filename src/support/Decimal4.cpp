#include "support/Decimal4.h"

#include <algorithm>
#include <cmath>

// The processor rounds as it does from the start of every program: to the nearest, a half to the even neighbour.
Decimal4 Decimal4::rounded(double number)
{
    constexpr double largest = 9.2e18;
    if (std::isnan(number))
        return {};
    return ofTenThousandths(static_cast<qint64>(std::nearbyint(std::clamp(number * one, -largest, largest))));
}
