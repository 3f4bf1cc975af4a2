// SPDX-License-Identifier: MIT
#include "PatchSheet/LayoutNumbers.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace {

/// A figure is half a unit wide for each point, and a line is one high.
const NumberExtent Extent = {
    [](const QString& text) { return 0.5 * static_cast<int>(text.size()); }, 1};

TEST(LayoutNumbers, AreAsLargeAsTheyCanBeWithoutTouching)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> at(0, 1000);
    std::vector<NumberedPlace> places;
    for (int number = 1; number <= 400; ++number)
        places.push_back({number, {at(random), at(random)}, {60, 12}});
    const std::vector<LayoutNumber> numbers = NumbersIn(places, Extent, 4);
    for (const LayoutNumber& one : numbers) {
        int touching = 0;
        for (const LayoutNumber& other : numbers) {
            if (&one == &other)
                continue;
            // Each has a blank beside it.
            const double width = (Extent.width(one.text) + Extent.width(other.text) + 1) / 2;
            const double x = std::abs(one.centre.x() - other.centre.x()) / width;
            const double y = std::abs(one.centre.y() - other.centre.y());
            EXPECT_GE(std::max(x, y) * 1.0001, std::min(one.points, other.points));
            touching += std::max(x, y) <= one.points * 1.0001 ? 1 : 0;
        }
        // A number that is smaller than its element allows has a neighbour that keeps it so.
        EXPECT_TRUE(touching > 0 || one.points >= 12) << one.text.toStdString();
    }
}

TEST(LayoutNumbers, OfElementsThatLieOnEachOtherShareAText)
{
    const std::vector<NumberedPlace> places = {{1, {0, 0}, {90, 90}},
                                               {2, {500, 0}, {90, 90}},
                                               {3, {500.2, 0.1}, {90, 90}},
                                               {4, {0, 500}, {1, 1}}};
    const std::vector<LayoutNumber> numbers = NumbersIn(places, Extent, 4);
    ASSERT_EQ(3U, numbers.size());
    EXPECT_EQ("1", numbers[0].text.toStdString());
    EXPECT_EQ(LargestNumber, numbers[0].points);
    EXPECT_EQ("2, 3", numbers[1].text.toStdString());
    EXPECT_LT(SmallestNumber, numbers[2].points) << "there is room beside a small one";
    EXPECT_GT(LargestNumber, numbers[2].points);
}

TEST(LayoutNumbers, InRunsSayHowManyMoreThereAre)
{
    const struct
    {
        std::vector<int> numbers;
        int most;
        const char* text;
    } cases[] = {
        {{}, 3, ""},
        {{7}, 3, "7"},
        {{7, 8}, 3, "7, 8"},
        {{7, 8, 9, 12}, 3, "7-9, 12"},
        {{1, 3, 4, 5, 6, 9, 11, 20}, 3, "1, 3-6, 9 +2"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(each.text, NumberRuns(each.numbers, each.most).toStdString());
}

} // namespace
