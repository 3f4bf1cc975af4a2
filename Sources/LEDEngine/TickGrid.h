// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>

/// The moments at which ticks are due: 25 ms apart on the monotonic clock, from the first tick on.
/// So the rate is exact however long ticks take and however late they come: a late tick moves no
/// later one, and one that was missed is not made up for. Times are nanoseconds.
class TickGrid
{
public:
    static constexpr std::int64_t Interval = 25'000'000;
    /// Between two frames: every tick has one while received DMX is merged, else every fourth.
    [[nodiscard]] static constexpr std::int64_t FrameInterval(bool merging)
    {
        return merging ? Interval : 4 * Interval;
    }

    /// Until the next tick is due: 0 or below when one is. Before the first tick there is no next.
    [[nodiscard]] std::int64_t TimeToTick(std::int64_t now) const
    {
        return next_ == 0 ? std::numeric_limits<std::int64_t>::max() : next_ - now;
    }
    /// A tick begins now: the moment that it was due.
    std::int64_t Begin(std::int64_t now);
    /// The tick has ended: how long until the next one is due, in milliseconds, rounded up.
    [[nodiscard]] int End(std::int64_t now);

private:
    /// The last moment of the grid that is not after `now`.
    [[nodiscard]] std::int64_t LastUntil(std::int64_t now) const;

    std::int64_t next_ = 0; ///< 0 before the first tick
};
