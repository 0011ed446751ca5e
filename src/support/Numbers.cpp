#include "support/Numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int largest = std::numeric_limits<int>::max();
constexpr int smallest = std::numeric_limits<int>::min();

}  // namespace

int leadingNumber(QStringView text)
{
    qint64 number = 0;
    for (const QChar character : text.trimmed()) {
        if (character < u'0' || character > u'9')
            break;
        number = number * 10 + (character.unicode() - u'0');
        if (number > largest)
            return largest;
    }
    return static_cast<int>(number);
}

int roundHalfToEven(double number)
{
    if (std::isnan(number))
        return 0;
    const double below = std::floor(number);
    const double rest = number - below;
    const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2.0) != 0.0);
    return static_cast<int>(
        std::clamp(up ? below + 1.0 : below, static_cast<double>(smallest), static_cast<double>(largest)));
}
