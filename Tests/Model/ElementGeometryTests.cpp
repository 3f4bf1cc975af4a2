// SPDX-License-Identifier: MIT
#include "Model/ElementGeometry.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include <QTransform>

namespace ElementGeometry {

namespace {

void ExpectNear(QPointF actual, QPointF expected, double tolerance = 1e-6)
{
    EXPECT_NEAR(actual.x(), expected.x(), tolerance);
    EXPECT_NEAR(actual.y(), expected.y(), tolerance);
}

/// Where a point of the element's own frame lies on the scene, by Qt's matrices and not by ours.
QPointF OnScene(const Placement& element, double rotation, QPointF own)
{
    QTransform frame;
    frame.translate(element.centre.x(), element.centre.y());
    frame.rotate(rotation);
    return frame.map(own);
}

} // namespace

TEST(ElementGeometry, EveryCornerOfATurnedElementKeepsItsOppositeInPlace)
{
    const Placement old{{200, 120}, {60, 30}};
    for (const double rotation : {0.0, 30.0, 90.0, 137.0, 270.0, -45.0}) {
        for (int corner = 0; corner < CornerCount; ++corner) {
            const int opposite = (corner + 4) % CornerCount;
            // Outward by 7 along and 4 across in the element's own axes.
            const QPointF outward = CornerPosition(corner, {14, 8});
            const QPointF mouse = TurnedAbout(outward, {}, rotation);
            const QSizeF growth = CornerGrowth(corner, old.size, rotation, mouse, false);
            EXPECT_EQ(growth, QSizeF(std::abs(outward.x()), std::abs(outward.y())))
                << "corner " << corner << " at " << rotation;
            const Placement placed = Resized(old, rotation, corner, growth, false);
            ExpectNear(OnScene(placed, rotation, CornerPosition(opposite, placed.size)),
                       OnScene(old, rotation, CornerPosition(opposite, old.size)));
            ExpectNear(OnScene(placed, rotation, CornerPosition(corner, placed.size)),
                       OnScene(old, rotation, CornerPosition(corner, old.size)) + mouse);
        }
    }
}

TEST(ElementGeometry, GrowthIsAtLeastAPixelWholeAndOnTheGridWhenSnapping)
{
    struct Drag
    {
        int corner;
        QSizeF size;
        double rotation;
        QPointF mouse;
        bool snap;
        QSizeF growth;
    };
    const std::vector<Drag> drags = {
        {Right, {60, 30}, 0, {9, -25}, false, {9, 0}}, // a side follows its own axis alone
        {Top, {60, 30}, 0, {9, -25}, false, {0, 25}},
        {Right, {60, 30}, 90, {0, 12}, false, {12, 0}}, // on its side, its right points down
        {Right, {60, 30}, 90, {50, 0}, false, {0, 0}},
        {BottomRight, {12, 1}, 0, {-500, -500}, false, {-11, 0}}, // no side under a pixel
        {TopLeft, {12, 8}, 0, {500, 500}, true, {-11, -7}},
        {BottomRight, {12, 4}, 0, {2.9, 0.9}, false, {2, 0}},
        {BottomRight, {12.5, 4}, 0, {2.2, 0.6}, true, {2.5, 1}},
        {Right, {12, 4.4}, 0, {3, 2}, true, {3, 0}}};
    for (const auto& [corner, size, rotation, mouse, snap, growth] : drags)
        EXPECT_EQ(CornerGrowth(corner, size, rotation, mouse, snap), growth)
            << corner << ": " << mouse.x() << ' ' << mouse.y();

    const Placement tiny{{50, 50}, {3, 2}};
    EXPECT_EQ(Resized(tiny, 0, BottomRight, {-90, -90}, false), (Placement{{49, 49.5}, {1, 1}}));
    const Placement odd{{50.3, 20.6}, {12, 4}};
    EXPECT_EQ(Resized(odd, 0, Right, {3, 0}, true), (Placement{{51.5, 21}, {15, 4}}));
    // A typed size stays about its centre, on the grid or not.
    EXPECT_EQ(Resized(odd, 0, NoCorner, {3, 0}, true), (Placement{{50.3, 20.6}, {15, 4}}));
    // Halves go up on both sides of zero.
    EXPECT_EQ(SnappedCentre({10.5, -3.5}, {4, 2}), QPointF(11, -3));
    EXPECT_EQ(SnappedCentre({0.25, -0.75}, {1, 1}), QPointF(0.5, -0.5));
}

TEST(ElementGeometry, ADragOffTheGridLandsOnItAndThenGoesInWholeSteps)
{
    DragSnap snap;
    const QSizeF size(4, 4);
    // The top left starts at 8.3, 8.8.
    const QPointF start(10.3, 10.8);
    std::vector<double> lefts;
    for (int step = 1; step <= 8; ++step)
        lefts.push_back(snap.Apply(start + QPointF(step * 0.25, 0), size, true).x() - 2);
    EXPECT_EQ(lefts, (std::vector<double>{9, 9, 10, 10, 10, 10, 11, 11}));
    // Back where the mouse took hold, the element stays on the grid.
    EXPECT_EQ(snap.Apply(start, size, true), QPointF(11, 11));

    DragSnap free;
    EXPECT_EQ(free.Apply({10.3, 10.8}, size, false), QPointF(10.3, 10.8));
}

TEST(ElementGeometry, ATurnByHandEndsOnAWholeDegree)
{
    // From, by, to: the mouse measures an angle with a rounding on either side.
    const std::array<std::array<double, 3>, 10> turns = {{{270, 90.00001, 360},
                                                          {270, 90.001, 0},
                                                          {270, 90.5, 0},
                                                          {0, 89.9999999, 90},
                                                          {0, 89.999, 89},
                                                          {0, -10.5, -11},
                                                          {30, 14.9, 44},
                                                          {359, 2, 1},
                                                          {12.75, 0, 12.75},
                                                          {0, 725, 5}}};
    for (const auto& [from, by, to] : turns)
        EXPECT_EQ(Turned(static_cast<float>(from), by), static_cast<float>(to))
            << from << ' ' << by;
    EXPECT_EQ(TypedAngle(-90), 270);
    EXPECT_EQ(TypedAngle(390), 30);
}

TEST(ElementGeometry, PlacesAndFractionsAreOneToTheLastBit)
{
    for (int i = 1; i < 2000; ++i) {
        const QSizeF canvas(1 + i % 1777, 1 + i * 7 % 1999);
        VideoMapping video{{1.0F / static_cast<float>(i), 0.731F * static_cast<float>(i)},
                           {static_cast<float>(i) / 1999.0F, 3e-4F},
                           12.75F,
                           true,
                           false};
        ASSERT_EQ(Placed(video, PlacementOf(video, canvas), canvas), video) << i;
    }
}

TEST(ElementGeometry, ACroppedCanvasKeepsSizesAndPutsCornersOnWholePixels)
{
    Layout layout{{200, 100},
                  {{1, {{0.5F, 0.5F}, {0.2F, 0.2F}, 90, false, false}},
                   {2, {{0.1F, 0.101F}, {0.1F, 0.1F}, 0, true, false}}}};
    const Layout cropped = Cropped(layout, std::span(layout.elements).first(1), 100'000);
    // Turned by 90 degrees in fractions: 0.2 x 0.2 of 200 x 100.
    EXPECT_EQ(cropped.canvas, QSize(40, 20));
    const QRectF first = PlacementOf(cropped.elements[0].video, cropped.canvas).Rect();
    ExpectNear(first.topLeft(), {0, 0}, 1e-4);
    ExpectNear(first.bottomRight(), {40, 20}, 1e-4);
    const QRectF second = PlacementOf(cropped.elements[1].video, cropped.canvas).Rect();
    ExpectNear(second.topLeft(), {-70, -35}, 1e-4);
    ExpectNear(second.bottomRight(), {-50, -25}, 1e-4);
    EXPECT_TRUE(cropped.elements[1].video.flipHorizontal);
    EXPECT_EQ(Cropped(layout, layout.elements, 16).canvas, QSize(16, 16));

    EXPECT_EQ(Rescaled(layout, {400, 50}, false).elements, layout.elements);
    EXPECT_EQ(Rescaled(layout, {400, 50}, true).elements[0].video,
              (VideoMapping{{0.25F, 1.0F}, {0.1F, 0.4F}, 90, false, false}));
}

TEST(ElementGeometry, AlignedElementsShareAnEdgeOrALine)
{
    // One without an extent counts too.
    const std::vector<Placement> elements{
        {{10, 20}, {10, 4}}, {{50, 60}, {20, 8}}, {{-3, 7}, {0, 0}}};
    using Points = std::vector<QPointF>;
    EXPECT_EQ(Aligned(elements, AlignLeft), (Points{{2, 20}, {7, 60}, {-3, 7}}));
    EXPECT_EQ(Aligned(elements, AlignCenter), (Points{{28.5, 20}, {28.5, 60}, {28.5, 7}}));
    EXPECT_EQ(Aligned(elements, AlignRight), (Points{{55, 20}, {50, 60}, {60, 7}}));
    EXPECT_EQ(Aligned(elements, AlignTop), (Points{{10, 9}, {50, 11}, {-3, 7}}));
    EXPECT_EQ(Aligned(elements, AlignMiddle), (Points{{10, 35.5}, {50, 35.5}, {-3, 35.5}}));
    EXPECT_EQ(Aligned(elements, AlignBottom), (Points{{10, 62}, {50, 60}, {-3, 64}}));
}

TEST(ElementGeometry, DistributedElementsHaveEqualGaps)
{
    // Widths of 10, 20 and 30 from 0 to 100, in no order: gaps of 20.
    const std::vector<Placement> elements{
        {{85, 3}, {30, 2}}, {{5, 1}, {10, 2}}, {{33, 2}, {20, 2}}};
    EXPECT_EQ(Distributed(elements, DistributeHorizontally),
              (std::vector<QPointF>{{85, 3}, {5, 1}, {40, 2}}));

    const std::vector<Placement> crowded{
        {{0, 10}, {1, 20}}, {{0, 12}, {1, 20}}, {{0, 18}, {1, 20}}};
    EXPECT_EQ(Distributed(crowded, DistributeVertically),
              (std::vector<QPointF>{{0, 10}, {0, 14}, {0, 18}}));

    // Elements in one place keep their order.
    const std::vector<Placement> same{{{4, 4}, {2, 2}}, {{4, 4}, {6, 2}}, {{4, 4}, {2, 2}}};
    EXPECT_EQ(Distributed(same, DistributeHorizontally),
              (std::vector<QPointF>{{2, 4}, {4, 4}, {6, 4}}));

    const std::vector<Placement> pair{{{10, 0}, {4, 4}}, {{90, 0}, {8, 4}}};
    EXPECT_EQ(Distributed(pair, DistributeHorizontally), (std::vector<QPointF>{{10, 0}, {90, 0}}));
    EXPECT_EQ(Distributed({pair.data(), 1}, DistributeVertically), (std::vector<QPointF>{{10, 0}}));
}

} // namespace ElementGeometry
