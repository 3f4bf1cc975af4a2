// SPDX-License-Identifier: MIT
#include "LEDEngine/TickGrid.h"

std::int64_t TickGrid::LastUntil(std::int64_t now) const
{
    return next_ + (now - next_) / Interval * Interval;
}

std::int64_t TickGrid::Begin(std::int64_t now)
{
    const std::int64_t due = next_ == 0 ? now : LastUntil(now);
    next_ = due + Interval;
    return due;
}

int TickGrid::End(std::int64_t now)
{
    constexpr std::int64_t millisecond = 1'000'000;
    if (now >= next_)
        next_ = LastUntil(now) + Interval;
    return static_cast<int>((next_ - now + millisecond - 1) / millisecond);
}
