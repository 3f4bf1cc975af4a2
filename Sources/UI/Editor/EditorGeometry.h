// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <vector>

#include <QPointF>
#include <QRectF>
#include <QSizeF>

/// The arithmetic of the canvas, apart from events and painting. Lengths are scene pixels, angles
/// degrees, turning clockwise as y grows downward.
namespace EditorGeometry {

/// Where an element lies before it is turned about its centre.
struct Placement
{
    QPointF centre;
    QSizeF size;

    [[nodiscard]] QRectF Rect() const
    {
        return {centre - QPointF(size.width() / 2, size.height() / 2), size};
    }
    bool operator==(const Placement&) const = default;
};

/// The eight points by which an element is resized, clockwise from its top left corner.
enum Corner : int
{
    NoCorner = -1, ///< a size that was typed: the centre stays
    TopLeft = 0,
    Top = 1,
    TopRight = 2,
    Right = 3,
    BottomRight = 4,
    Bottom = 5,
    BottomLeft = 6,
    Left = 7,
    CornerCount = 8
};

/// The place of a corner in an element of this size, about its centre.
[[nodiscard]] QPointF CornerPosition(int corner, QSizeF size);

/// A length without its fraction. Rounding leaves numbers a hair beside a whole one: they count as
/// that.
[[nodiscard]] double Cut(double length);

/// A way without what is only such a hair: no way at all is exactly none.
[[nodiscard]] QPointF WithoutHair(QPointF way);

/// How much an element grows when the mouse drags one of its corners by `drag` on the scene, in the
/// element's own axes. Whole pixels, cut towards none; with `snap` the new size is whole instead.
/// No side gets shorter than a pixel.
[[nodiscard]] QSizeF CornerGrowth(int corner, QSizeF startSize, double rotation, QPointF drag,
                                  bool snap);

/// The element after growing from `corner`: the opposite corner, or side, stays where it is on the
/// scene. With `snap` the top left of the unturned rectangle goes to a whole pixel.
[[nodiscard]] Placement Resized(const Placement& old, double rotation, int corner, QSizeF growth,
                                bool snap);

/// The centre for which the top left lies on whole pixels, halves going up.
[[nodiscard]] QPointF SnappedCentre(QPointF centre, QSizeF size);

/// The snapping of one drag. The difference between the wanted and the snapped place is taken once,
/// on the first move: an element that was off the grid lands on it, then goes in whole steps,
/// wherever the mouse took hold of it.
class DragSnap
{
public:
    /// The centre to go to when the mouse wants `centre`.
    [[nodiscard]] QPointF Apply(QPointF centre, QSizeF size, bool snap);
    void Clear() { correction_ = {}; }

private:
    QPointF correction_;
};

[[nodiscard]] QPointF TurnedAbout(QPointF point, QPointF centre, double degrees);

/// The direction of `mouse` seen from `centre`, 0 to 360, 90 straight above.
[[nodiscard]] double MouseAngle(QPointF centre, QPointF mouse);

/// An angle as the program shows and stores it: at most 360, in whole degrees, cut downward.
[[nodiscard]] double WholeDegrees(double degrees);

enum AlignMode : int
{
    AlignLeft = 0,
    AlignCenter = 1,
    AlignRight = 2,
    AlignTop = 3,
    AlignMiddle = 4,
    AlignBottom = 5
};

enum DistributeMode : int
{
    DistributeHorizontally = 0,
    DistributeVertically = 1
};

/// The box round all unturned rectangles, empty for none.
[[nodiscard]] QRectF BoundingBox(std::span<const Placement> elements);

/// The new centres, in the order of `elements`. Rotation doesn't count.
[[nodiscard]] std::vector<QPointF> Aligned(std::span<const Placement> elements, AlignMode mode);

/// The new centres, in the order of `elements`: equal gaps between the outermost edges, negative
/// where there is no room. Elements at the same place keep their order. Fewer than two stay where
/// they are.
[[nodiscard]] std::vector<QPointF> Distributed(std::span<const Placement> elements,
                                               DistributeMode mode);

} // namespace EditorGeometry
