// SPDX-License-Identifier: MIT
#include "FixtureModel/FreePatch.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

PatchAddress Next(const std::vector<PatchedSpan>& patched, std::int32_t channels,
                  const std::vector<std::int32_t>& taken = {})
{
    return NextFreePatch(patched, channels, taken);
}

} // namespace

TEST(FreePatch, GoesBehindEverythingPatched)
{
    EXPECT_EQ(Next({}, 36), (PatchAddress{0, 0, 1}));
    EXPECT_EQ(Next({{{0, 0, 1}, 36}}, 36), (PatchAddress{0, 0, 37}));
    // Not in the order of the wire, and with a gap that stays a gap.
    EXPECT_EQ(Next({{{0, 3, 40}, 10}, {{0, 1, 500}, 12}, {{0, 3, 1}, 3}}, 3),
              (PatchAddress{0, 3, 50}));
    EXPECT_EQ(Next({{{0, 15, 1}, 3}, {{1, 0, 7}, 3}}, 3), (PatchAddress{1, 0, 10}));
}

TEST(FreePatch, TakesTheNextUniverseWhenOneIsFull)
{
    EXPECT_EQ(Next({{{0, 2, 343}, 169}}, 1), (PatchAddress{0, 2, 512}));
    EXPECT_EQ(Next({{{0, 2, 343}, 170}}, 3), (PatchAddress{0, 3, 1}));
    EXPECT_EQ(Next({{{0, 15, 343}, 170}}, 3), (PatchAddress{1, 0, 1}));
    EXPECT_EQ(Next({{{0, 0, 1}, 1}}, 512), (PatchAddress{0, 1, 1}));
}

TEST(FreePatch, PassesUniversesThatAreTaken)
{
    EXPECT_EQ(Next({}, 3, {0}), (PatchAddress{0, 1, 1}));
    EXPECT_EQ(Next({{{0, 14, 500}, 13}}, 3, {17, 15, 16}), (PatchAddress{1, 2, 1}));
    // Only the universe moves on.
    EXPECT_EQ(Next({{{0, 0, 1}, 36}}, 3, {0}), (PatchAddress{0, 1, 37}));
}

TEST(FreePatch, HoldsAtAnyNumbersOfADocument)
{
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(Next({{{most, most, most}, 512}}, 3), (PatchAddress{most, 0, 1}));
    EXPECT_EQ(Next({{{-5, -7, -100}, 3}}, 3), (PatchAddress{0, 0, 1}));
}
