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
    EXPECT_GE(flooded, 8);
    EXPECT_LE(flooded, 8 + 2 * 50);
}

TEST(ReplyLimit, AFloodFromEverywhereIsBoundedAndPasses)
{
    ArtNetReplyLimit limit;
    std::int64_t now = Start;
    std::uint32_t poller = 0x02000000;
    const auto answersIn = [&](std::int64_t duration) {
        int answered = 0;
        for (const std::int64_t end = now + duration; now < end; now += 10'000)
            answered += limit.Allow(poller++, now) ? 1 : 0;
        return answered;
    };
    EXPECT_LE(answersIn(Second), 64 + 16);
    EXPECT_LE(answersIn(10 * Second), 160);
    EXPECT_GE(answersIn(10 * Second), 150);
    now += 5 * Second;
    for (int i = 0; i < 8; ++i)
        EXPECT_TRUE(limit.Allow(0x02000001, now));
}

TEST(ErrorLimit, EachErrorOnceASecondAndThreeInAll)
{
    ArtNetErrorLimit limit;
    const auto unreachable = std::make_error_code(std::errc::network_unreachable);
    EXPECT_TRUE(limit.Allow(unreachable, Start));
    EXPECT_FALSE(limit.Allow(unreachable, Start + Second - 1));
    EXPECT_TRUE(limit.Allow(std::make_error_code(std::errc::no_such_device), Start + 1));
    EXPECT_TRUE(limit.Allow(std::make_error_code(std::errc::network_down), Start + 2));
    EXPECT_FALSE(limit.Allow(std::make_error_code(std::errc::io_error), Start + 3));
    EXPECT_TRUE(limit.Allow(unreachable, Start + Second));
    int lines = 0;
    for (int i = 0; i < 10000; ++i)
        lines += limit.Allow({i, std::system_category()}, Start + 2 * Second + i * Millisecond);
    EXPECT_LE(lines, 31);
    EXPECT_GE(lines, 27);
}

TEST(FloodGauge, AFullShowIsNoFloodAndAFloodEndsWithItsLastTick)
{
    ArtNetFloodGauge gauge;
    std::int64_t now = Start;
    // 256 universes at 44 frames a second, each frame in one burst.
    for (int frame = 0; frame < 100; ++frame, now += Second / 44)
        EXPECT_FALSE(gauge.IsFlood(256, now));
    int calm = 0;
    for (const std::int64_t end = now + Second; now < end; now += Millisecond)
        calm += gauge.IsFlood(100, now) ? 0 : 1;
    EXPECT_LE(calm, 25);
    EXPECT_FALSE(gauge.IsFlood(1, now + 50 * Millisecond));
}

} // namespace
