// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

namespace FixtureImport {

/// Where the pixels of a fixture are.
struct PixelGrid
{
    std::int32_t columns = 0;
    std::int32_t rows = 0;
    std::vector<std::int32_t> cells; ///< of each pixel, row by row from the top left
    bool isKnown = false;            ///< from the definition; else it is a row
};

/// The grid of pixels that cover these cells of the definition's grid of columns x rows, at least
/// one pixel. A null or empty entry is a pixel at an unknown place. Pixels of one cell each keep
/// the definition's grid with its holes. Groups of cells are laid out by their centres, as long as
/// these make a full grid. Everything else is a row in the order given.
[[nodiscard]] PixelGrid GridOf(const std::vector<const std::vector<std::int32_t>*>& pixels,
                               std::int32_t columns, std::int32_t rows);

} // namespace FixtureImport
