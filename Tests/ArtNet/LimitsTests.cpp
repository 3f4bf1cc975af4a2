// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetLimits.h"

#include <gtest/gtest.h>

namespace {

constexpr std::int64_t Millisecond = 1'000'000;
constexpr std::int64_t Second = 1000 * Millisecond;
constexpr std::int64_t Start = 77 * Second; // the clock does not begin with us

TEST(ReplyLimit, ThirtyConsolesAreAlwaysAnsweredBesideOneThatFloods)
{
    ArtNetReplyLimit limit;
    int flooded = 0;
    for (int poll = 0; poll < 20; ++poll) { // every two and a half seconds, all at once
        const std::int64_t now = Start + poll * Second * 5 / 2;
        for (std::uint32_t console = 2; console < 32; ++console)
            EXPECT_TRUE(limit.Allow(0x02000000 + console, now)) << poll << ' ' << console;
        for (int i = 0; i < 25000; ++i)
            flooded += limit.Allow(0x02000001, now + i * Second / 10000) ? 1 : 0;
    }
    EXPECT_EQ(flooded, 8 + 2 * 50 - 1); // the last of two a second would be due with the next poll
}

TEST(ReplyLimit, AFloodFromEverywhereIsBoundedAndPasses)
{
    ArtNetReplyLimit limit;
    int answered = 0;
    for (std::uint32_t i = 0; i < 500'000; ++i)
        answered += limit.Allow(0x02000000 + i, Start + i * Second / 100'000) ? 1 : 0;
    EXPECT_NEAR(answered, 64 + 5 * 16, 1);
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(limit.Allow(0x02000001, Start + 10 * Second), i < 8);
}

TEST(ErrorLimit, EachErrorOnceASecondAndThreeInAll)
{
    ArtNetErrorLimit limit;
    const auto unreachable = std::make_error_code(std::errc::network_unreachable);
    EXPECT_TRUE(limit.Allow(unreachable, Start));
    EXPECT_TRUE(limit.Allow(std::make_error_code(std::errc::no_such_device), Start + 1));
    EXPECT_FALSE(limit.Allow(unreachable, Start + Second - 1));
    EXPECT_TRUE(limit.Allow(std::make_error_code(std::errc::network_down), Start + 2));
    EXPECT_FALSE(limit.Allow(std::make_error_code(std::errc::io_error), Start + 3));
    EXPECT_TRUE(limit.Allow(unreachable, Start + Second));
}

TEST(ConflictLog, EachUniverseAndPairOnceAndFewOfThemAtATime)
{
    ArtNetConflictLog log;
    const std::uint32_t a = 0x0200000A;
    const std::uint32_t b = 0x0200000B;
    std::vector<ArtNetSourceConflict> conflicts{{4, a, b}, {5, a, b}, {7, a, b}, {8, b, a + 2}};
    const std::string end = ": the first one counts until it is silent for 2.5 s";
    EXPECT_EQ(log.Take(conflicts),
              (std::vector{"2.0.0.10 and 2.0.0.11 both send Port-Address 4-5, 7" + end,
                           "2.0.0.11 and 2.0.0.12 both send Port-Address 8" + end}));
    conflicts = {{4, b, a}, {8, a + 2, b}}; // the other way round
    EXPECT_TRUE(log.Take(conflicts).empty());
    std::size_t lines = 0;
    for (std::uint32_t i = 0; i < 5000; ++i) {
        conflicts = {{4, a, i}, {5, a, i + 100'000}, {6, a, i + 200'000}};
        const std::size_t now = log.Take(conflicts).size();
        EXPECT_LE(now, 2U);
        lines += now;
    }
    EXPECT_EQ(lines, 1024U - 4U);
}

TEST(FloodGauge, AFullShowIsNoFloodAndAFloodEndsWithItsLastTick)
{
    ArtNetFloodGauge gauge;
    // Four times 256 universes in each tick of 25 ms, each time in one burst.
    for (int frame = 0; frame < 100; ++frame)
        EXPECT_FALSE(gauge.IsFlood(1024, Start + frame * 25 * Millisecond));
    const std::int64_t later = Start + 10 * Second;
    for (int i = 0; i < 1000; ++i) // 100 a millisecond
        EXPECT_EQ(gauge.IsFlood(100, later + i * Millisecond), i >= 10) << i;
    EXPECT_TRUE(gauge.IsFlood(1, later + 1020 * Millisecond));
    EXPECT_FALSE(gauge.IsFlood(1, later + 1070 * Millisecond));
}

} // namespace
