// SPDX-License-Identifier: MIT
#include "Model/ElementOrder.h"

#include <algorithm>
#include <numeric>

namespace {

using Line = std::vector<std::size_t>;

/// Elements without thickness form a line, too, when they are so near, in scene pixels.
constexpr double LeastTolerance = 0.5;

/// A box as it lies to a line: a row, or a column as if it were one.
struct Place
{
    double along = 0;
    double across = 0;
    double thickness = 0;
};

Place PlaceOf(const QRectF& box, ElementOrder::Lines lines)
{
    const QPointF centre = box.center();
    return lines == ElementOrder::Rows ? Place{centre.x(), centre.y(), box.height()}
                                       : Place{centre.y(), centre.x(), box.width()};
}

/// From the top, or from the left, with the elements of a line in any order.
std::vector<Line> LinesOf(std::span<const Place> places)
{
    Line sorted(places.size());
    std::iota(sorted.begin(), sorted.end(), std::size_t{0});
    std::ranges::stable_sort(sorted, {}, [&](std::size_t i) { return places[i].across; });
    std::vector<Line> lines;
    Place sum; // of the last line
    for (const std::size_t index : sorted) {
        const Place& place = places[index];
        const double count = lines.empty() ? 1 : static_cast<double>(lines.back().size());
        const double tolerance =
            std::max((sum.thickness / count + place.thickness) / 4, LeastTolerance);
        if (lines.empty() || place.across - sum.across / count > tolerance) {
            lines.emplace_back();
            sum = {};
        }
        lines.back().push_back(index);
        sum.across += place.across;
        sum.thickness += place.thickness;
    }
    return lines;
}

} // namespace

std::vector<std::vector<std::size_t>> LinesByPlace(std::span<const QRectF> boxes,
                                                   const ElementOrder& order)
{
    const bool fromRight =
        order.from == ElementOrder::TopRight || order.from == ElementOrder::BottomRight;
    const bool fromBottom =
        order.from == ElementOrder::BottomLeft || order.from == ElementOrder::BottomRight;
    const bool rows = order.lines == ElementOrder::Rows;
    std::vector<Place> places;
    places.reserve(boxes.size());
    for (const QRectF& box : boxes)
        places.push_back(PlaceOf(box, order.lines));
    std::vector<Line> lines = LinesOf(places);
    if (rows ? fromBottom : fromRight)
        std::ranges::reverse(lines);
    bool back = rows ? fromRight : fromBottom;
    for (Line& line : lines) {
        std::ranges::sort(line); // elements at one place in their own order, either way
        const double direction = back ? -1 : 1;
        std::ranges::stable_sort(line, {},
                                 [&](std::size_t i) { return direction * places[i].along; });
        back = back != order.snake;
    }
    return lines;
}
