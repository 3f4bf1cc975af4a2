// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// How often something happens, from a count of it that is read now and then: the mean over the
/// last four spaces between readings. A count that falls back was begun again, and so is the mean.
class RateMeter
{
public:
    /// `now` is in nanoseconds of the monotonic clock.
    void Read(std::uint64_t count, std::int64_t now);
    /// 0 until there are two readings.
    [[nodiscard]] double PerSecond() const;
    [[nodiscard]] bool IsKnown() const { return known_ >= 2; }

private:
    struct Reading
    {
        std::uint64_t count = 0;
        std::int64_t time = 0;
    };

    std::array<Reading, 5> readings_{}; ///< the newest first
    std::size_t known_ = 0;
};
