// SPDX-License-Identifier: MIT
#pragma once

/// The program's two rules of rounding. All numbers are finite: callers judge them before.
namespace Rounding {

/// The nearest whole number, halves upward, below zero too: -0.5 gives 0.
[[nodiscard]] double HalfUp(double value);

/// An angle of any size less as many full turns of 360 degrees as bring it to 360 or below: 360
/// stays, 720 gives 360. A negative angle stays as it is.
[[nodiscard]] double WithinFullTurn(double degrees);

/// The whole degree at or below WithinFullTurn(degrees): 725.5 gives 5, -1.5 gives -2. An angle
/// that is within `tolerance` below a whole degree counts as that degree, and one within it above a
/// full turn as that full turn.
[[nodiscard]] double WholeDegrees(double degrees, double tolerance = 0);

} // namespace Rounding
