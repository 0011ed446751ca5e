#include "sound/units/Frames.h"

#include <algorithm>
#include <limits>

namespace sound {
namespace {

std::int64_t scaled(std::int64_t value, std::int64_t numerator, std::int64_t denominator)
{
    if (denominator <= 0)
        return 0;
    // 128 bits, so that no position of any rate can overflow on its way through the product.
    __extension__ using Wide = __int128;
    const Wide doubled = static_cast<Wide>(value) * numerator * 2 + denominator;
    const Wide divisor = static_cast<Wide>(denominator) * 2;
    Wide quotient = doubled / divisor;
    if (doubled < 0 && doubled % divisor != 0)
        --quotient;
    return static_cast<std::int64_t>(quotient);
}

}  // namespace

FramePosition frameAt(Milliseconds moment, SampleRate rate)
{
    return {scaled(moment.count(), rate.hertz, 1000)};
}

Milliseconds millisecondsAt(FramePosition position, SampleRate rate)
{
    const std::int64_t value = scaled(position.value, 1000, rate.hertz);
    return Milliseconds{std::min<std::int64_t>(value, std::numeric_limits<std::int32_t>::max())};
}

Milliseconds durationOf(FrameCount length, SampleRate rate)
{
    return millisecondsAt(endOf(length), rate);
}

FrameCount framesIn(std::chrono::microseconds time, SampleRate rate)
{
    return {scaled(time.count(), rate.hertz, 1'000'000)};
}

}  // namespace sound
