// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "FixtureModel/FixtureLayout.h"

/// What a cell of a pixel map holds, for a line of text: "Row 2, column 5: channels 13 to 15
/// (R, G, B)", and behind it what is wrong with its pixel.
[[nodiscard]] QString WordsForCell(const PixelMap& map, FixtureLayout::CellFault fault, int cell);

/// The same to be heard, one cell after the other: "row 2, column 5, channel 13".
[[nodiscard]] QString SpokenCell(const PixelMap& map, FixtureLayout::CellFault fault, int cell);
