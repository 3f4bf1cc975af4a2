// SPDX-License-Identifier: MIT
#include "FixtureModel/Rounding.h"

#include <cmath>

namespace {

constexpr double FullTurn = 360;

} // namespace

namespace Rounding {

double HalfUp(double value)
{
    return std::floor(value + 0.5);
}

double WithinFullTurn(double degrees)
{
    if (degrees <= FullTurn)
        return degrees;
    const double rest = std::fmod(degrees, FullTurn);
    return rest == 0 ? FullTurn : rest;
}

double WholeDegrees(double degrees, double tolerance)
{
    // Adding 0 makes a zero of -0, which a file would show with its sign.
    return std::floor(WithinFullTurn(degrees - tolerance) + 2 * tolerance) + 0.0;
}

} // namespace Rounding
