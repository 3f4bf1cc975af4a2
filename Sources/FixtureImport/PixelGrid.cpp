// SPDX-License-Identifier: MIT
#include "FixtureImport/PixelGrid.h"

#include <algorithm>
#include <set>

namespace FixtureImport {

namespace {

PixelGrid Row(std::size_t pixels)
{
    PixelGrid grid{static_cast<std::int32_t>(pixels), 1, {}, pixels == 1};
    for (std::size_t i = 0; i < pixels; ++i)
        grid.cells.push_back(static_cast<std::int32_t>(i));
    return grid;
}

/// Centres that are equal compare equal: a quotient of whole numbers has one nearest double.
std::vector<double> CentresOf(const std::vector<const std::vector<std::int32_t>*>& pixels,
                              const auto& coordinateOf)
{
    std::vector<double> centres;
    for (const auto* cells : pixels) {
        std::int64_t sum = 0;
        for (const std::int32_t cell : *cells)
            sum += coordinateOf(cell);
        centres.push_back(static_cast<double>(sum) / static_cast<double>(cells->size()));
    }
    return centres;
}

std::int32_t RankOf(double centre, const std::set<double>& all)
{
    return static_cast<std::int32_t>(std::distance(all.begin(), all.find(centre)));
}

/// By their centres, nothing known when these make no full grid.
PixelGrid ByCentres(const std::vector<const std::vector<std::int32_t>*>& pixels,
                    std::int32_t columns)
{
    const auto x = CentresOf(pixels, [&](std::int32_t cell) { return cell % columns; });
    const auto y = CentresOf(pixels, [&](std::int32_t cell) { return cell / columns; });
    const std::set<double> allX(x.begin(), x.end());
    const std::set<double> allY(y.begin(), y.end());
    PixelGrid grid{
        static_cast<std::int32_t>(allX.size()), static_cast<std::int32_t>(allY.size()), {}, false};
    if (allX.size() * allY.size() != pixels.size())
        return grid;
    std::set<std::int32_t> taken;
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        grid.cells.push_back(RankOf(y[i], allY) * grid.columns + RankOf(x[i], allX));
        taken.insert(grid.cells.back());
    }
    grid.isKnown = taken.size() == pixels.size();
    return grid;
}

} // namespace

PixelGrid GridOf(const std::vector<const std::vector<std::int32_t>*>& pixels, std::int32_t columns,
                 std::int32_t rows)
{
    const auto isPlaced = [](const auto* cells) {
        return cells && !cells->empty();
    };
    if (pixels.size() == 1 || !std::ranges::all_of(pixels, isPlaced))
        return Row(pixels.size());
    if (!std::ranges::all_of(pixels, [](const auto* cells) { return cells->size() == 1; })) {
        PixelGrid grid = ByCentres(pixels, columns);
        return grid.isKnown ? grid : Row(pixels.size());
    }
    PixelGrid grid{columns, rows, {}, true};
    for (const auto* cells : pixels)
        grid.cells.push_back(cells->front());
    return grid;
}

} // namespace FixtureImport
