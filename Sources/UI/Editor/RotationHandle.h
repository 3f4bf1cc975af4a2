// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QSizeF>

class QColor;
class QPainter;

/// The round handle above a selected element, or above the frame of a group, by which it is turned.
namespace RotationHandle {

enum Kind : int
{
    OfElement = 0,
    OfGroup = 1
};

/// In the frame of what it turns; `pixel` is the length of a screen pixel there.
[[nodiscard]] QRectF Rect(Kind kind, QSizeF size, double pixel);

/// The handle with the line that leads to it.
void Paint(QPainter& painter, Kind kind, QSizeF size, double pixel, const QColor& color);

} // namespace RotationHandle
