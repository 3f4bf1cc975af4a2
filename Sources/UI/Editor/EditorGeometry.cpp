// SPDX-License-Identifier: MIT
#include "UI/Editor/EditorGeometry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include <QtMath>

namespace {

struct Signs
{
    int x;
    int y;
};

/// On which side of the centre each corner lies.
constexpr std::array<Signs, EditorGeometry::CornerCount> CornerSides = {
    {{-1, -1}, {0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}}};

Signs SidesOf(int corner)
{
    if (corner < 0 || corner >= EditorGeometry::CornerCount)
        return {0, 0};
    return CornerSides[static_cast<std::size_t>(corner)];
}

/// The model keeps fractions of the canvas in single precision: a length in pixels comes back from
/// it with a rounding far below this.
constexpr double Hair = 1e-3;

double WithoutHair(double length)
{
    return std::abs(length) < Hair ? 0 : length;
}

/// `side` is 0 on the axis that a grabber in the middle of an edge leaves alone.
double Growth(int side, double start, double drag, bool snap)
{
    if (side == 0)
        return 0;
    const double wanted = start + side * drag;
    const double growth = std::max(snap ? std::round(wanted) : wanted, 1.0) - start;
    return snap ? WithoutHair(growth) : EditorGeometry::Cut(growth);
}

double SnappedAlong(double centre, double size)
{
    return std::floor(centre - size / 2 + 0.5) + size / 2;
}

} // namespace

namespace EditorGeometry {

double Cut(double length)
{
    return std::trunc(length + std::copysign(Hair, length));
}

QPointF WithoutHair(QPointF way)
{
    return {::WithoutHair(way.x()), ::WithoutHair(way.y())};
}

QPointF CornerPosition(int corner, QSizeF size)
{
    const Signs side = SidesOf(corner);
    return {side.x * size.width() / 2, side.y * size.height() / 2};
}

QSizeF CornerGrowth(int corner, QSizeF startSize, double rotation, QPointF drag, bool snap)
{
    const QPointF own = TurnedAbout(drag, QPointF(), -rotation);
    const Signs side = SidesOf(corner);
    if (qFuzzyIsNull(own.x() * side.x) && qFuzzyIsNull(own.y() * side.y))
        return {0, 0};
    return {Growth(side.x, startSize.width(), own.x(), snap),
            Growth(side.y, startSize.height(), own.y(), snap)};
}

Placement Resized(const Placement& old, double rotation, int corner, QSizeF growth, bool snap)
{
    Placement placed;
    placed.size = QSizeF(std::max(1.0, old.size.width() + growth.width()),
                         std::max(1.0, old.size.height() + growth.height()));
    placed.centre = old.centre;
    if (corner == NoCorner)
        return placed;
    const Signs side = SidesOf(corner);
    const QSizeF grown = placed.size - old.size;
    const QPointF shift(side.x * grown.width() / 2, side.y * grown.height() / 2);
    placed.centre += TurnedAbout(shift, QPointF(), rotation);
    if (snap)
        placed.centre = SnappedCentre(placed.centre, placed.size);
    return placed;
}

QPointF SnappedCentre(QPointF centre, QSizeF size)
{
    return {SnappedAlong(centre.x(), size.width()), SnappedAlong(centre.y(), size.height())};
}

QPointF DragSnap::Apply(QPointF centre, QSizeF size, bool snap)
{
    const QPointF wanted = centre + correction_;
    const QPointF place = snap ? SnappedCentre(wanted, size) : wanted;
    if (qFuzzyIsNull(correction_.x()) && qFuzzyIsNull(correction_.y()))
        correction_ = place - centre;
    return place;
}

QPointF TurnedAbout(QPointF point, QPointF centre, double degrees)
{
    const double radians = qDegreesToRadians(degrees);
    const double cosine = std::cos(radians);
    const double sine = std::sin(radians);
    const QPointF arm = point - centre;
    return centre + QPointF(cosine * arm.x() - sine * arm.y(), sine * arm.x() + cosine * arm.y());
}

double MouseAngle(QPointF centre, QPointF mouse)
{
    const QPointF arm = centre - mouse;
    const double degrees = qRadiansToDegrees(std::atan2(arm.y(), arm.x()));
    return degrees < 0 ? degrees + 360 : degrees;
}

double WholeDegrees(double degrees)
{
    // A turn by hand that was one of whole degrees must not lose one to the last bit of the angle.
    constexpr double hair = 1e-4;
    if (degrees > 360 + hair)
        degrees -= 360 * std::ceil((degrees - 360) / 360);
    return std::floor(degrees + hair);
}

QRectF BoundingBox(std::span<const Placement> elements)
{
    if (elements.empty())
        return {};
    QRectF box = elements.front().Rect();
    for (const Placement& element : elements) {
        // QRectF::united leaves out rectangles without an extent.
        const QRectF rect = element.Rect();
        box.setLeft(std::min(box.left(), rect.left()));
        box.setTop(std::min(box.top(), rect.top()));
        box.setRight(std::max(box.right(), rect.right()));
        box.setBottom(std::max(box.bottom(), rect.bottom()));
    }
    return box;
}

std::vector<QPointF> Aligned(std::span<const Placement> elements, AlignMode mode)
{
    const QRectF box = BoundingBox(elements);
    std::vector<QPointF> centres;
    centres.reserve(elements.size());
    for (const Placement& element : elements) {
        QPointF centre = element.centre;
        switch (mode) {
        case AlignLeft:
            centre.setX(box.left() + element.size.width() / 2);
            break;
        case AlignCenter:
            centre.setX(box.center().x());
            break;
        case AlignRight:
            centre.setX(box.right() - element.size.width() / 2);
            break;
        case AlignTop:
            centre.setY(box.top() + element.size.height() / 2);
            break;
        case AlignMiddle:
            centre.setY(box.center().y());
            break;
        case AlignBottom:
            centre.setY(box.bottom() - element.size.height() / 2);
            break;
        }
        centres.push_back(centre);
    }
    return centres;
}

std::vector<QPointF> Distributed(std::span<const Placement> elements, DistributeMode mode)
{
    std::vector<QPointF> centres;
    centres.reserve(elements.size());
    for (const Placement& element : elements)
        centres.push_back(element.centre);
    if (elements.size() < 2)
        return centres;

    const bool across = mode == DistributeHorizontally;
    const auto along = [across](const QPointF& point) {
        return across ? point.x() : point.y();
    };
    const auto length = [&](std::size_t i) {
        return across ? elements[i].size.width() : elements[i].size.height();
    };
    std::vector<std::size_t> order(elements.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return along(elements[a].centre) < along(elements[b].centre);
    });

    const QRectF box = BoundingBox(elements);
    double room = across ? box.width() : box.height();
    for (const std::size_t i : order)
        room -= length(i);
    const double gap = room / static_cast<double>(elements.size() - 1);
    double position = along(box.topLeft());
    for (const std::size_t i : order) {
        const double centre = position + length(i) / 2;
        across ? centres[i].setX(centre) : centres[i].setY(centre);
        position += length(i) + gap;
    }
    return centres;
}

} // namespace EditorGeometry
