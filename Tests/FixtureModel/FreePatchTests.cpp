// SPDX-License-Identifier: MIT
#include "FixtureModel/PatchRun.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>
#include <vector>

TEST(FreePatch, GoesBehindEverythingPatchedAndPastTakenUniverses)
{
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    using Case = std::tuple<std::vector<PatchedSpan>, int, std::vector<int>, PatchAddress>;
    for (const auto& [patched, channels, taken, next] : {
             Case{{}, 512, {}, {0, 0, 1}},
             // Not in the order of the wire, and with a gap that stays a gap.
             Case{{{{0, 3, 40}, 10}, {{0, 1, 500}, 12}, {{0, 3, 1}, 3}}, 3, {}, {0, 3, 50}},
             Case{{{{0, 15, 1}, 3}, {{1, 0, 7}, 3}}, 3, {}, {1, 0, 10}},
             Case{{{{0, 2, 343}, 169}}, 1, {}, {0, 2, 512}},
             Case{{{{0, 2, 343}, 170}}, 3, {}, {0, 3, 1}},
             Case{{{{0, 15, 343}, 170}}, 3, {}, {1, 0, 1}},
             Case{{{{0, 0, 1}, 1}}, 512, {}, {0, 1, 1}},
             // Past a taken universe only the universe moves on.
             Case{{{{0, 14, 500}, 13}}, 3, {17, 15, 16}, {1, 2, 1}},
             Case{{{{0, 0, 1}, 36}}, 3, {0}, {0, 1, 37}},
             // A document may hold any number.
             Case{{{{most, most, most}, 512}}, 3, {}, {most, 0, 1}},
             Case{{{{-5, -7, -100}, 3}}, 3, {}, {0, 0, 1}},
         })
        EXPECT_EQ(NextFreePatch(patched, channels, taken), next)
            << next.subnet << '/' << next.universe << '/' << next.channel;
}

TEST(PatchRun, GoesOnBehindTheElementBeforeAndWrapsAtTheEnds)
{
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    using Case = std::tuple<PatchAddress, int, int, PatchAddress>;
    for (const auto& [before, taken, channels, next] : {
             Case{{0, 0, 1}, 170, 170, {0, 0, 171}},
             Case{{0, 0, 171}, 170, 170, {0, 0, 341}},
             Case{{0, 0, 341}, 170, 170, {0, 1, 1}},
             Case{{0, 0, 171}, 170, 171, {0, 1, 1}}, // 341 to 511 would just fit
             Case{{0, 0, 1}, 36, 3, {0, 0, 37}},
             Case{{0, 0, 1}, 512, 512, {0, 1, 1}},
             Case{{0, 0, 511}, 0, 0, {0, 0, 511}},
             Case{{0, 15, 500}, 36, 36, {1, 0, 1}},
             Case{{15, 15, 500}, 36, 36, {0, 0, 1}},
             // A document may hold any number.
             Case{{most, most, most}, 3, 3, {0, 0, 1}},
             Case{{-3, -5, -7}, 3, 3, {-3, -5, -4}},
         })
        EXPECT_EQ(NextInRun(before, taken, channels), next)
            << before.subnet << '/' << before.universe << '/' << before.channel;
}
