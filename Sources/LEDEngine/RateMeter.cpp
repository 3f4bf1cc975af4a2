// SPDX-License-Identifier: MIT
#include "LEDEngine/RateMeter.h"

#include <algorithm>

void RateMeter::Read(std::uint64_t count, std::int64_t now)
{
    if (known_ > 0 && count < readings_.front().count)
        known_ = 0;
    std::shift_right(readings_.begin(), readings_.end(), 1);
    readings_.front() = {count, now};
    known_ = std::min(known_ + 1, readings_.size());
}

double RateMeter::PerSecond() const
{
    constexpr double nanoseconds = 1e9;
    if (known_ < 2)
        return 0;
    const Reading& newest = readings_.front();
    const Reading& oldest = readings_[known_ - 1];
    if (newest.time <= oldest.time)
        return 0;
    return static_cast<double>(newest.count - oldest.count) * nanoseconds /
           static_cast<double>(newest.time - oldest.time);
}
