// SPDX-License-Identifier: MIT
#include "UI/Editor/RotationHandle.h"

#include <algorithm>

#include <QPainter>

#include "UI/Editor/Outline.h"

namespace {

struct HandleLook
{
    double screenSize;
    double gap; ///< in scene pixels, so that it grows with the zoom
};

constexpr HandleLook ElementLook{8, 1.5};
constexpr HandleLook GroupLook{12, 2};
/// Zoomed out, the handle still keeps a distance from the edge of this many screen pixels.
constexpr double LeastDistance = 4;
constexpr double PenWidth = 2;

} // namespace

namespace RotationHandle {

QRectF Rect(Kind kind, QSizeF size, double pixel)
{
    const HandleLook& look = kind == OfElement ? ElementLook : GroupLook;
    const double side = look.screenSize * pixel;
    const double gap = std::max(look.gap, side / 2 + LeastDistance * pixel);
    return {-side / 2, -size.height() / 2 - gap - side / 2, side, side};
}

void Paint(QPainter& painter, Kind kind, QSizeF size, double pixel, const QColor& color)
{
    const QRectF rect = Rect(kind, size, pixel);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const auto paint = [&](const QColor& ink, double width) {
        painter.setPen(QPen(ink, width * pixel, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
        painter.drawLine(QPointF(0, -size.height() / 2), QPointF(0, rect.bottom()));
        painter.drawEllipse(rect);
    };
    paint(Outline::Dark, PenWidth + 2);
    paint(color, PenWidth);
}

} // namespace RotationHandle
