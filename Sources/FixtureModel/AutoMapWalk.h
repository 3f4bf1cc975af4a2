// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

enum class GridCorner : std::uint8_t
{
    TopLeft = 0,
    TopRight,
    BottomLeft,
    BottomRight
};

/// The order in which the pixels of a grid follow each other on the wire: from a corner, row by row
/// or column by column.
struct AutoMapWalk
{
    GridCorner corner = GridCorner::TopLeft;
    bool horizontal = true; ///< row by row; otherwise column by column
    bool snake = false;     ///< every other row or column runs back

    /// The cells of the grid in this order, as indexes row by row from the top left. A side below 1
    /// gives none.
    [[nodiscard]] std::vector<std::int32_t> Cells(std::int32_t width, std::int32_t height) const;
};
