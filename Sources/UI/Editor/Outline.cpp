// SPDX-License-Identifier: MIT
#include "UI/Editor/Outline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include <QLineF>
#include <QPaintDevice>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QTransform>

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

bool IsUpright(const QTransform& transform)
{
    return transform.isAffine() && ((transform.m12() == 0 && transform.m21() == 0) ||
                                    (transform.m11() == 0 && transform.m22() == 0));
}

/// The edge of a rectangle in coordinates of the screen, one device pixel (`step`) wide.
void FillEdge(QPainter& painter, const QRectF& rect, const Outline::Edges& edges, double step)
{
    const QSizeF upright(step, rect.height());
    painter.fillRect(QRectF(rect.topLeft(), upright), edges.sides);
    painter.fillRect(QRectF(QPointF(rect.right() - step, rect.top()), upright), edges.sides);
    const QSizeF level(rect.width(), step);
    painter.fillRect(QRectF(rect.topLeft(), level), edges.topAndBottom);
    painter.fillRect(QRectF(QPointF(rect.left(), rect.bottom() - step), level), edges.topAndBottom);
}

/// By whole device pixels, in half the time that a pen takes (measured): thousands of outlines are
/// painted with each step of a drag.
void PaintUpright(QPainter& painter, const QRectF& rect, Outline::Edges edges)
{
    const double ratio = painter.device()->devicePixelRatioF();
    const double step = 1 / ratio;
    const auto whole = [ratio](double length) {
        return std::round(length * ratio) / ratio;
    };
    const QTransform world = painter.worldTransform();
    const QRectF place = world.mapRect(rect);
    const QPointF topLeft(whole(place.left()), whole(place.top()));
    const QSizeF size(std::max(whole(place.right()) - topLeft.x(), step),
                      std::max(whole(place.bottom()) - topLeft.y(), step));
    const QRectF inside(topLeft, size);
    if (world.m11() == 0) // it lies on its side
        std::swap(edges.sides, edges.topAndBottom);
    painter.setWorldTransform(QTransform());
    FillEdge(painter, inside.adjusted(-step, -step, step, step), {Outline::Dark, Outline::Dark},
             step);
    FillEdge(painter, inside, edges, step);
    painter.setWorldTransform(world);
}

} // namespace

namespace Outline {

void Paint(QPainter& painter, const QRectF& rect, const Edges& edges, double pixel,
           Qt::PenStyle style)
{
    if (style == Qt::SolidLine && IsUpright(painter.worldTransform()))
        return PaintUpright(painter, rect, edges);
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
