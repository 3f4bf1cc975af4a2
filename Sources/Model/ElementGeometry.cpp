// SPDX-License-Identifier: MIT
#include "Model/ElementGeometry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include <QtMath>

#include "FixtureModel/Rounding.h"

namespace {

struct Signs
{
    int x;
    int y;
};

/// On which side of the centre each corner lies.
constexpr std::array<Signs, ElementGeometry::CornerCount> CornerSides = {
    {{-1, -1}, {0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}}};

Signs SidesOf(int corner)
{
    if (corner < 0 || corner >= ElementGeometry::CornerCount)
        return {0, 0};
    return CornerSides[static_cast<std::size_t>(corner)];
}

/// The model keeps fractions of the canvas in single precision: a length in pixels comes back from
/// it with a rounding far below this.
constexpr double LengthRounding = 1e-3;
/// The same for an angle that was measured from the mouse.
constexpr double AngleRounding = 1e-4;

constexpr float RadiansPerDegree = 0.017453292F;

double WithoutRounding(double length)
{
    return std::abs(length) < LengthRounding ? 0 : length;
}

/// `side` is 0 on the axis that a grabber in the middle of an edge leaves alone.
double Growth(int side, double start, double drag, bool snap)
{
    if (side == 0)
        return 0;
    const double wanted = start + side * drag;
    const double growth = std::max(snap ? std::round(wanted) : wanted, 1.0) - start;
    return snap ? WithoutRounding(growth) : ElementGeometry::Cut(growth);
}

/// QRectF::united leaves out rectangles without an extent.
QRectF United(const QRectF& one, const QRectF& other)
{
    return {QPointF(std::min(one.left(), other.left()), std::min(one.top(), other.top())),
            QPointF(std::max(one.right(), other.right()), std::max(one.bottom(), other.bottom()))};
}

double SnappedAlong(double centre, double size)
{
    return Rounding::HalfUp(centre - size / 2) + size / 2;
}

int CanvasSide(double pixels, int longest)
{
    return static_cast<int>(std::clamp(Rounding::HalfUp(pixels), 1.0, double(longest)));
}

} // namespace

namespace ElementGeometry {

Placement PlacementOf(const VideoMapping& element, QSizeF canvas)
{
    const auto pixels = [](float fraction, double side) {
        return static_cast<double>(fraction) * side;
    };
    return {{pixels(element.centerX, canvas.width()), pixels(element.centerY, canvas.height())},
            {pixels(element.width, canvas.width()), pixels(element.height, canvas.height())}};
}

VideoMapping Placed(VideoMapping element, const Placement& place, QSizeF canvas)
{
    const auto fraction = [](double pixels, double side) {
        return static_cast<float>(pixels / side);
    };
    element.SetCenter(
        {fraction(place.centre.x(), canvas.width()), fraction(place.centre.y(), canvas.height())});
    element.SetSize({fraction(place.size.width(), canvas.width()),
                     fraction(place.size.height(), canvas.height())});
    return element;
}

QRectF Bounds(const VideoMapping& element)
{
    const float angle = element.rotation * RadiansPerDegree;
    const float cosine = std::abs(std::cos(angle));
    const float sine = std::abs(std::sin(angle));
    const float halfWidth = std::abs(element.width) / 2;
    const float halfHeight = std::abs(element.height) / 2;
    // The farthest of the four corners to either side.
    const float reachX = halfWidth * cosine + halfHeight * sine;
    const float reachY = halfWidth * sine + halfHeight * cosine;
    return {QPointF(element.centerX - reachX, element.centerY - reachY),
            QPointF(element.centerX + reachX, element.centerY + reachY)};
}

QRectF Bounds(std::span<const ElementMapping> elements)
{
    if (elements.empty())
        return {};
    QRectF box = Bounds(elements.front().video);
    for (const ElementMapping& element : elements)
        box = United(box, Bounds(element.video));
    return box;
}

double Cut(double length)
{
    return std::trunc(length + std::copysign(LengthRounding, length));
}

QPointF WithoutRounding(QPointF distance)
{
    return {::WithoutRounding(distance.x()), ::WithoutRounding(distance.y())};
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
        placed.centre = SnappedCentre(placed.centre, CoveredSize(placed.size, rotation));
    return placed;
}

QSizeF CoveredSize(QSizeF size, double rotation)
{
    const bool liesOnItsSide = std::abs(std::fmod(rotation, 180)) == 90;
    return liesOnItsSide ? size.transposed() : size;
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

float Turned(float rotation, double degrees)
{
    if (degrees == 0)
        return rotation;
    return static_cast<float>(
        Rounding::WholeDegrees(static_cast<double>(rotation) + degrees, AngleRounding));
}

float TypedAngle(double degrees)
{
    return static_cast<float>(Rounding::WholeDegrees(degrees < 0 ? degrees + 360 : degrees));
}

QRectF BoundingBox(std::span<const Placement> elements)
{
    if (elements.empty())
        return {};
    QRectF box = elements.front().Rect();
    for (const Placement& element : elements)
        box = United(box, element.Rect());
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

Layout Cropped(const Layout& layout, std::span<const ElementMapping> kept, int longestSide)
{
    const QRectF box = Bounds(kept);
    const QSizeF before = layout.canvas;
    Layout cropped{{CanvasSide(box.width() * before.width(), longestSide),
                    CanvasSide(box.height() * before.height(), longestSide)},
                   layout.elements};
    const QPointF origin(box.left() * before.width(), box.top() * before.height());
    for (auto& [id, video] : cropped.elements) {
        Placement place = PlacementOf(video, before);
        place.centre =
            SnappedCentre(place.centre - origin, CoveredSize(place.size, video.rotation));
        video = Placed(video, place, cropped.canvas);
    }
    return cropped;
}

Layout Rescaled(const Layout& layout, QSize canvas, bool keepPixels)
{
    Layout rescaled{canvas, layout.elements};
    if (keepPixels) {
        for (auto& [id, video] : rescaled.elements)
            video = Placed(video, PlacementOf(video, layout.canvas), canvas);
    }
    return rescaled;
}

} // namespace ElementGeometry
