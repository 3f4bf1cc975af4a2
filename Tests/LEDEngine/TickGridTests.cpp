// SPDX-License-Identifier: MIT
#include "LEDEngine/TickGrid.h"

#include <gtest/gtest.h>

TEST(TickGridTest, TicksKeepToTheirGridHoweverLateAndLongTheyAre)
{
    constexpr std::int64_t microsecond = 1'000;
    constexpr std::int64_t start = 77'000'000'000;
    struct Tick
    {
        std::int64_t begins; ///< these three in microseconds from the first tick on
        std::int64_t ends;
        std::int64_t due;
        int wait; ///< milliseconds
    };
    TickGrid grid;
    EXPECT_GT(grid.TimeToTick(start), 0);
    for (const auto& [begins, ends, due, wait] : {
             Tick{0, 0, 0, 25},                   //
             Tick{25'000, 25'999, 25'000, 25},    // the rest of a started millisecond is not lost
             Tick{50'900, 52'100, 50'000, 23},    // late
             Tick{75'000, 99'001, 75'000, 1},     // nearly too long
             Tick{100'000, 130'000, 100'000, 20}, // too long: one is left out
             Tick{150'000, 175'000, 150'000, 25}, // until the next one is due: that one is left out
             Tick{290'000, 291'000, 275'000, 9},  // three were missed, and none is made up for
             Tick{300'000, 301'000, 300'000, 24},
         })
    {
        EXPECT_EQ(grid.Begin(start + begins * microsecond), start + due * microsecond) << begins;
        EXPECT_EQ(grid.End(start + ends * microsecond), wait) << begins;
        const std::int64_t next = start + ends * microsecond + wait * 1'000 * microsecond;
        EXPECT_LE(grid.TimeToTick(next), 0) << begins;
        EXPECT_GT(grid.TimeToTick(next - 1'000 * microsecond), 0) << begins;
    }
}
