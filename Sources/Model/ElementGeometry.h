// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <vector>

#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QSizeF>

#include "Model/ElementChanges.h"

/// The arithmetic of every edit on the canvas: what elements become, from what they are. Lengths
/// are scene pixels, angles degrees, turning clockwise as y grows downward.
namespace ElementGeometry {

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

/// The place of an element on a canvas of this size, and the element at such a place: one undoes
/// the other to the last bit.
[[nodiscard]] Placement PlacementOf(const VideoMapping& element, QSizeF canvas);
[[nodiscard]] VideoMapping Placed(VideoMapping element, const Placement& place, QSizeF canvas);

/// The smallest upright box round the turned element, in fractions of the canvas, for fractions
/// that are used as they are, without regard to the canvas' shape.
[[nodiscard]] QRectF Bounds(const VideoMapping& element);
/// The same round all of them, empty for none.
[[nodiscard]] QRectF Bounds(std::span<const ElementMapping> elements);

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

/// A length without its fraction. Rounding in the model leaves numbers just beside a whole one:
/// they count as that.
[[nodiscard]] double Cut(double length);

/// A distance without what is only such a rounding: no distance at all is exactly none.
[[nodiscard]] QPointF WithoutRounding(QPointF distance);

/// How much an element grows when the mouse drags one of its corners by `drag` on the scene, in the
/// element's own axes. Whole pixels, cut towards zero; with `snap` the new size is whole instead.
/// No side gets shorter than a pixel.
[[nodiscard]] QSizeF CornerGrowth(int corner, QSizeF startSize, double rotation, QPointF drag,
                                  bool snap);

/// The element after growing from `corner`: the opposite corner, or side, stays where it is on the
/// scene. With `snap` its corners go to whole pixels, see CoveredSize.
[[nodiscard]] Placement Resized(const Placement& old, double rotation, int corner, QSizeF growth,
                                bool snap);

/// The width and height that an element covers: an element that lies on its side covers its height
/// and its width. At an angle between, which no grid fits, the unturned rectangle counts.
[[nodiscard]] QSizeF CoveredSize(QSizeF size, double rotation);

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

/// The angle that an element has after a turn by hand. An angle that is a rounding of a whole
/// degree counts as that degree. A turn by nothing leaves the element as it is.
[[nodiscard]] float Turned(float rotation, double degrees);
/// The angle that was typed: -90 gives 270.
[[nodiscard]] float TypedAngle(double degrees);

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

/// A canvas with the elements on it.
struct Layout
{
    QSize canvas;
    std::vector<ElementMapping> elements;
};

/// The canvas cut to the box round the elements of `kept`. All elements keep their size in pixels
/// and their places to each other, with their left top corners on whole pixels. A side of the
/// canvas is at least 1 and at most `longestSide`.
[[nodiscard]] Layout Cropped(const Layout& layout, std::span<const ElementMapping> kept,
                             int longestSide);

/// The elements on a canvas of another size. With `keepPixels` each stays where it is and as large
/// as it is in pixels; otherwise all follow the canvas.
[[nodiscard]] Layout Rescaled(const Layout& layout, QSize canvas, bool keepPixels);

} // namespace ElementGeometry
