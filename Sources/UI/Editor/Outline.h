// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QRectF>
#include <Qt>

class QPainter;

/// Lines over the picture. A picture may have any colour, so each line is light with a dark one
/// beside it: one of them is seen. `pixel` is the length of a screen pixel in the painter's
/// coordinates; a screen may have several device pixels in one.
namespace Outline {

inline constexpr QColor Dark(12, 13, 15);
inline constexpr QColor AutoEdge(255, 96, 84); ///< no node is chosen
inline constexpr QColor NaturalEdge(120, 236, 120);
inline constexpr QColor ScaledEdge(232, 234, 240);
inline constexpr QColor Selected(102, 191, 239); ///< what is too small for handles
inline constexpr QColor Handle(255, 0, 0);
inline constexpr QColor GroupHandle(240, 127, 14);

struct Edges
{
    QColor sides;
    QColor topAndBottom;
};

/// Along the edge of a rectangle: a light line just inside and a dark one just outside, each one
/// device pixel wide.
void Paint(QPainter& painter, const QRectF& rect, const Edges& edges, double pixel,
           Qt::PenStyle style = Qt::SolidLine);

/// Triangles that point to the sides to which a picture is flipped, at the bottom left corner.
/// Nothing where there is no room for them.
void PaintFlips(QPainter& painter, const QRectF& rect, bool horizontal, bool vertical,
                double pixel);

/// A filled square with a dark edge.
void PaintGrabber(QPainter& painter, const QRectF& rect, const QColor& color, double pixel);

} // namespace Outline
