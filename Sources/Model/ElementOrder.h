// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include <QRectF>

/// The order of elements by where they lie: line by line, as a cable runs.
struct ElementOrder
{
    enum Lines : int
    {
        Rows = 0,
        Columns = 1
    };
    enum Corner : int
    {
        TopLeft = 0,
        TopRight = 1,
        BottomLeft = 2,
        BottomRight = 3
    };

    Lines lines = Rows;
    Corner from = TopLeft; ///< where the first line begins
    bool snake = false;    ///< every second line runs back

    bool operator==(const ElementOrder&) const = default;
};

/// The elements of each line, as indices in `boxes`, the upright boxes round the turned elements in
/// scene pixels. An element belongs to the line before it while its centre is off the middle of
/// that line by no more than half the thickness that the two have on average, so that a wall that
/// was placed by hand has the lines that one sees. Elements at one place keep their order.
[[nodiscard]] std::vector<std::vector<std::size_t>> LinesByPlace(std::span<const QRectF> boxes,
                                                                 const ElementOrder& order);
