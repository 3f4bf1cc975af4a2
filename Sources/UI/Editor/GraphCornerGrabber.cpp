// SPDX-License-Identifier: MIT
#include "UI/Editor/GraphCornerGrabber.h"

#include <array>
#include <cmath>

#include "Model/ElementGeometry.h"

namespace {

constexpr double LeastGrabbersInside = 3;

/// Where the grabber begins on one axis, about its corner. `side` is -1, 0 or 1.
double Begin(double side, double length, double grabber)
{
    if (side == 0)
        return -grabber / 2;
    const bool inside = length >= LeastGrabbersInside * grabber;
    return (side < 0) == inside ? 0 : -grabber;
}

} // namespace

namespace GraphCornerGrabber {

QRectF Rect(int corner, QSizeF size, double pixel)
{
    const double grabber = ScreenSize * pixel;
    if (corner == ElementGeometry::Top && size.height() < LeastGrabbersInside * grabber)
        return {};
    const QPointF side = ElementGeometry::CornerPosition(corner, {2, 2});
    const QPointF place = ElementGeometry::CornerPosition(corner, size);
    return {place.x() + Begin(side.x(), size.width(), grabber),
            place.y() + Begin(side.y(), size.height(), grabber), grabber, grabber};
}

int At(QPointF point, QSizeF size, double pixel)
{
    // The last one is drawn on top.
    for (int corner = ElementGeometry::CornerCount - 1; corner >= 0; --corner) {
        if (Rect(corner, size, pixel).contains(point))
            return corner;
    }
    return ElementGeometry::NoCorner;
}

Qt::CursorShape Cursor(int corner, double rotation)
{
    constexpr std::array<Qt::CursorShape, 4> shapes = {Qt::SizeFDiagCursor, Qt::SizeVerCursor,
                                                       Qt::SizeBDiagCursor, Qt::SizeHorCursor};
    constexpr double degreesBetween = 45;
    const auto turns = static_cast<long>(std::lround(rotation / degreesBetween));
    return shapes[static_cast<std::size_t>(((corner + turns) % 4 + 4) % 4)];
}

} // namespace GraphCornerGrabber
