// SPDX-License-Identifier: MIT
#include "UI/Editor/Outline.h"

#include <array>

#include <QLineF>
#include <QPaintDevice>
#include <QPainter>
#include <QPainterPath>
#include <QPen>

namespace {

/// Just under a device pixel: the painter has a fast way for lines that are not wider than one.
constexpr double Hairline = 0.999;

// The marks of the flips, in screen pixels.
constexpr double MarkReach = 7; ///< from their middle to their tips
constexpr double MarkMargin = 3;
constexpr double MarkSide = 2 * (MarkReach + MarkMargin);

QPainterPath FlipMark(bool horizontal, bool vertical)
{
    constexpr double begin = 2.5;
    constexpr double width = 4; // half of it
    QPainterPath mark;
    const auto addTriangle = [&mark](double x, double y) {
        mark.moveTo(x * MarkReach, y * MarkReach);
        mark.lineTo(x * begin + y * width, y * begin + x * width);
        mark.lineTo(x * begin - y * width, y * begin - x * width);
        mark.closeSubpath();
    };
    for (const int side : {-1, 1}) {
        if (horizontal)
            addTriangle(side, 0);
        if (vertical)
            addTriangle(0, side);
    }
    return mark;
}

} // namespace

namespace Outline {

void Paint(QPainter& painter, const QRectF& rect, const Edges& edges, double pixel,
           Qt::PenStyle style)
{
    const double step = pixel / painter.device()->devicePixelRatioF();
    const double half = step / 2;
    QPen pen(Dark, Hairline * step, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect.adjusted(-half, -half, half, half));
    const QRectF inside = rect.adjusted(half, half, -half, -half);
    pen.setColor(edges.sides);
    pen.setStyle(style);
    painter.setPen(pen);
    if (edges.sides == edges.topAndBottom) {
        painter.drawRect(inside);
        return;
    }
    const std::array<QLineF, 2> upright = {QLineF(inside.topLeft(), inside.bottomLeft()),
                                           QLineF(inside.topRight(), inside.bottomRight())};
    painter.drawLines(upright.data(), static_cast<int>(upright.size()));
    pen.setColor(edges.topAndBottom);
    painter.setPen(pen);
    const std::array<QLineF, 2> level = {QLineF(inside.topLeft(), inside.topRight()),
                                         QLineF(inside.bottomLeft(), inside.bottomRight())};
    painter.drawLines(level.data(), static_cast<int>(level.size()));
}

void PaintFlips(QPainter& painter, const QRectF& rect, bool horizontal, bool vertical, double pixel)
{
    static const std::array<QPainterPath, 4> marks = {QPainterPath(), FlipMark(true, false),
                                                      FlipMark(false, true), FlipMark(true, true)};
    const QPainterPath& mark = marks[(horizontal ? 1U : 0U) + (vertical ? 2U : 0U)];
    if (mark.isEmpty() || rect.width() < MarkSide * pixel || rect.height() < MarkSide * pixel)
        return;
    const QTransform before = painter.worldTransform();
    painter.translate(rect.bottomLeft() + QPointF(MarkSide / 2, -MarkSide / 2) * pixel);
    painter.scale(pixel, pixel);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(mark, QPen(Dark, 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.fillPath(mark, ScaledEdge);
    painter.setWorldTransform(before);
}

void PaintGrabber(QPainter& painter, const QRectF& rect, const QColor& color, double pixel)
{
    painter.fillRect(rect, Dark);
    painter.fillRect(rect.adjusted(pixel, pixel, -pixel, -pixel), color);
}

} // namespace Outline
