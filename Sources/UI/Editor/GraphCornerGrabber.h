// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QSizeF>
#include <Qt>

/// The eight points by which a selected element is resized. They are places on the element and not
/// items of the scene: thousands of selected elements would mean tens of thousands of items.
namespace GraphCornerGrabber {

/// The side of a grabber on the screen.
inline constexpr double ScreenSize = 7;

/// The grabber of an element of this size, in the element's own frame; `pixel` is the length of a
/// screen pixel there. It lies inside the element, or outside along a side that is too short for
/// three grabbers, so that there is always a part left by which the element can be moved. Empty for
/// the top one of a flat element, whose place the rotation handle needs.
[[nodiscard]] QRectF Rect(int corner, QSizeF size, double pixel);

/// The grabber at this point of the element's frame, or NoCorner.
[[nodiscard]] int At(QPointF point, QSizeF size, double pixel);

/// Shows where a drag of the grabber of a turned element goes.
[[nodiscard]] Qt::CursorShape Cursor(int corner, double rotation);

} // namespace GraphCornerGrabber
