// SPDX-License-Identifier: MIT
#include "PatchSheet/LayoutNumbers.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <utility>

namespace {

/// An element that is larger gets a larger number; one that is smaller still gets this size where
/// there is room beside it.
constexpr double UsualNumber = 8;
constexpr int MostRunsOfGroup = 4;

struct Group
{
    QPointF centre;
    QSizeF size;
    std::vector<int> numbers;
};

/// The elements whose numbers would touch at this distance, in groups.
std::vector<Group> GroupsOf(std::span<const NumberedPlace> places, QSizeF tooClose)
{
    std::vector<Group> groups;
    std::map<std::pair<long, long>, std::vector<std::size_t>> cells;
    const auto groupNear = [&](const QPointF& at, long column, long row) -> Group* {
        for (long x = column - 1; x <= column + 1; ++x) {
            for (long y = row - 1; y <= row + 1; ++y) {
                const auto cell = cells.find({x, y});
                if (cell == cells.end())
                    continue;
                for (const std::size_t index : cell->second) {
                    const QPointF distance = groups[index].centre - at;
                    if (std::abs(distance.x()) < tooClose.width() &&
                        std::abs(distance.y()) < tooClose.height())
                        return &groups[index];
                }
            }
        }
        return nullptr;
    };
    for (const NumberedPlace& place : places) {
        const long column = std::lround(std::floor(place.centre.x() / tooClose.width()));
        const long row = std::lround(std::floor(place.centre.y() / tooClose.height()));
        if (Group* group = groupNear(place.centre, column, row)) {
            group->numbers.push_back(place.number);
            continue;
        }
        cells[{column, row}].push_back(groups.size());
        groups.push_back({place.centre, place.size, {place.number}});
    }
    return groups;
}

} // namespace

QString NumberRuns(std::span<const int> numbers, int mostRuns)
{
    QString text;
    int parts = 0;
    for (std::size_t first = 0; first < numbers.size();) {
        if (parts == mostRuns)
            return text + QStringLiteral(" +%1").arg(numbers.size() - first);
        std::size_t last = first;
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1)
            ++last;
        if (last - first < 2)
            last = first;
        if (parts++ > 0)
            text += QLatin1String(", ");
        text += QString::number(numbers[first]);
        if (last > first)
            text += QLatin1Char('-') + QString::number(numbers[last]);
        first = last + 1;
    }
    return text;
}

std::vector<LayoutNumber> NumbersIn(std::span<const NumberedPlace> places,
                                    const NumberExtent& extent, double mostZoom)
{
    const double closest = SmallestNumber / mostZoom;
    const std::vector<Group> groups =
        GroupsOf(places, {extent.width(QStringLiteral("00")) * closest, extent.height * closest});
    std::vector<LayoutNumber> result;
    std::vector<double> widths;
    for (const Group& group : groups) {
        const QString text = NumberRuns(group.numbers, MostRunsOfGroup);
        widths.push_back(extent.width(text + QLatin1Char(' ')));
        const double fits =
            std::min(group.size.width() / widths.back(), group.size.height() / extent.height);
        result.push_back({text, group.centre, std::clamp(fits, UsualNumber, LargestNumber)});
    }
    std::vector<std::size_t> byX(result.size());
    std::iota(byX.begin(), byX.end(), std::size_t{0});
    std::ranges::sort(byX, {}, [&](std::size_t index) { return result[index].centre.x(); });
    const double widest = widths.empty() ? 0 : *std::ranges::max_element(widths);
    for (std::size_t i = 0; i < byX.size(); ++i) {
        LayoutNumber& one = result[byX[i]];
        const double width = widths[byX[i]];
        for (std::size_t j = i + 1; j < byX.size(); ++j) {
            LayoutNumber& other = result[byX[j]];
            const double x = other.centre.x() - one.centre.x();
            if (x > (width + widest) / 2 * LargestNumber)
                break;
            const double y = std::abs(other.centre.y() - one.centre.y());
            const double touching = std::max(x / ((width + widths[byX[j]]) / 2), y / extent.height);
            one.points = std::min(one.points, touching);
            other.points = std::min(other.points, touching);
        }
    }
    return result;
}
