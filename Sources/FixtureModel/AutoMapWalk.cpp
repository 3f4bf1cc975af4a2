// SPDX-License-Identifier: MIT
#include "FixtureModel/AutoMapWalk.h"

std::vector<std::int32_t> AutoMapWalk::Cells(std::int32_t width, std::int32_t height) const
{
    std::vector<std::int32_t> cells;
    const bool fromRight = corner == GridCorner::TopRight || corner == GridCorner::BottomRight;
    const bool fromBottom = corner == GridCorner::BottomLeft || corner == GridCorner::BottomRight;
    // A line is a row or a column, and an inner step goes along it.
    const std::int32_t lines = horizontal ? height : width;
    const std::int32_t length = horizontal ? width : height;
    const bool linesFromEnd = horizontal ? fromBottom : fromRight;
    bool runsBack = horizontal ? fromRight : fromBottom;
    for (std::int32_t i = 0; i < lines; ++i) {
        const std::int32_t line = linesFromEnd ? lines - 1 - i : i;
        for (std::int32_t j = 0; j < length; ++j) {
            const std::int32_t along = runsBack ? length - 1 - j : j;
            cells.push_back(horizontal ? line * width + along : along * width + line);
        }
        if (snake)
            runsBack = !runsBack;
    }
    return cells;
}
