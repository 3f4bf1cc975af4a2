// SPDX-License-Identifier: MIT
#include "FixtureModel/Rounding.h"

#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include <gtest/gtest.h>

namespace {

TEST(Rounding, HalvesGoUpward)
{
    for (const auto& [value, rounded] :
         {std::pair(0.5, 1.0), {0.49, 0.0}, {-0.5, 0.0}, {-0.51, -1.0}, {-1.5, -1.0}, {2.0, 2.0}})
        EXPECT_EQ(Rounding::HalfUp(value), rounded) << value;
}

TEST(Rounding, WholeDegreesLieAtOrBelowAFullTurn)
{
    constexpr double hair = 1e-4;
    // Degrees, within a full turn, whole, and whole with a tolerance of a hair.
    for (const auto& [degrees, within, whole, wholeWithHair] :
         {std::array<double, 4>{725.5, 5.5, 5, 5},
          {360, 360, 360, 360},
          {720, 360, 360, 360},
          {360.5, 0.5, 0, 0},
          {360 + hair / 2, hair / 2, 0, 360},
          {360 + 1.5 * hair, 1.5 * hair, 0, 0},
          {90 - hair / 2, 90 - hair / 2, 89, 90},
          {90 - 1.5 * hair, 90 - 1.5 * hair, 89, 89},
          {-1.5, -1.5, -2, -2},
          {-725, -725, -725, -725}})
    {
        EXPECT_NEAR(Rounding::WithinFullTurn(degrees), within, 1e-9) << degrees;
        EXPECT_EQ(Rounding::WholeDegrees(degrees), whole) << degrees;
        EXPECT_EQ(Rounding::WholeDegrees(degrees, hair), wholeWithHair) << degrees;
    }
    EXPECT_FALSE(std::signbit(Rounding::WholeDegrees(-0.0)));
    EXPECT_LE(Rounding::WholeDegrees(std::numeric_limits<float>::max()), 360);
}

} // namespace
