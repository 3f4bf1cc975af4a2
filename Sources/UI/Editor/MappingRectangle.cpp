// SPDX-License-Identifier: MIT
#include "UI/Editor/MappingRectangle.h"

#include <algorithm>
#include <cmath>

#include <QGraphicsSceneMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include "UI/Editor/EditorDisplayState.h"
#include "UI/Editor/GraphCornerGrabber.h"
#include "UI/Editor/RotationHandle.h"

namespace {

using Variant = MappingRectangle::Variant;

// A selected element has no fill: the operator looks at the picture under it.
constexpr QColor NaturalFill(0, 255, 0, 60);
constexpr QColor ScaledFill(0, 0, 254, 30);

/// The longer side of an element with handles, among several selected ones, in screen pixels.
constexpr double LeastSideWithHandles = 6 * GraphCornerGrabber::ScreenSize;

/// The model keeps fractions of the canvas, so a size comes back from it with a rounding.
bool IsSame(double length, double natural)
{
    constexpr double rounding = 1e-3;
    return std::abs(length - natural) < rounding;
}

bool IsUpright(double rotation)
{
    return std::fmod(rotation, 90) == 0;
}

} // namespace

MappingRectangle::MappingRectangle(SelectionListener& listener, const EditorDisplayState& display,
                                   std::int64_t id)
    : LEDGraphicsItem(MappingKind)
    , listener_(&listener)
    , display_(display)
    , variant_(Variant::Element)
    , id_(id)
{
    setFlags(ItemIsSelectable | ItemIsMovable);
}

MappingRectangle::MappingRectangle(const EditorDisplayState& display, Variant variant, QSizeF size)
    : LEDGraphicsItem(MappingKind)
    , display_(display)
    , variant_(variant)
    , size_(size)
    , naturalSize_(size)
{
    if (variant == Variant::GroupBody) {
        setFlag(ItemIsMovable); // So that a press on it is taken.
        setFlag(ItemHasNoContents);
    }
}

void MappingRectangle::SetSize(QSizeF size)
{
    if (size_ == size)
        return;
    prepareGeometryChange();
    size_ = size;
    update();
}

void MappingRectangle::SetPlacement(const ElementGeometry::Placement& placement)
{
    SetSize(placement.size);
    setPos(placement.centre);
}

void MappingRectangle::SetNaturalSize(QSizeF size)
{
    if (naturalSize_ == size)
        return;
    naturalSize_ = size;
    update();
}

void MappingRectangle::SetFlip(int direction, bool state)
{
    bool& flip = direction == 0 ? flipHorizontal_ : flipVertical_;
    if (flip == state)
        return;
    flip = state;
    update();
}

bool MappingRectangle::SetAutoMark(bool on)
{
    if (autoMark_ == on)
        return false;
    autoMark_ = on;
    update();
    return true;
}

void MappingRectangle::SetOnlySelected(bool on)
{
    if (onlySelected_ == on)
        return;
    prepareGeometryChange();
    onlySelected_ = on;
}

bool MappingRectangle::ShowsGrabbers() const
{
    if (!IsElement() || !isSelected())
        return false;
    return onlySelected_ ||
           std::max(size_.width(), size_.height()) >= LeastSideWithHandles * display_.ScreenPixel();
}

bool MappingRectangle::ShowsRotationHandle() const
{
    return variant_ == Variant::GroupFrame || ShowsGrabbers();
}

int MappingRectangle::GrabberAt(QPointF scenePoint) const
{
    if (!ShowsGrabbers())
        return ElementGeometry::NoCorner;
    return GraphCornerGrabber::At(mapFromScene(scenePoint), size_, display_.ScreenPixel());
}

bool MappingRectangle::IsRotationHandleAt(QPointF scenePoint) const
{
    const auto kind = IsElement() ? RotationHandle::OfElement : RotationHandle::OfGroup;
    return ShowsRotationHandle() && RotationHandle::Rect(kind, size_, display_.ScreenPixel())
                                        .contains(mapFromScene(scenePoint));
}

QRectF MappingRectangle::boundingRect() const
{
    const double pixel = display_.ScreenPixel();
    const QRectF rect = Rect();
    if (!ShowsRotationHandle())
        return rect.adjusted(-pixel, -pixel, pixel, pixel);
    const double grabber = (GraphCornerGrabber::ScreenSize + 1) * pixel;
    const auto kind = IsElement() ? RotationHandle::OfElement : RotationHandle::OfGroup;
    const double pen = 2 * pixel;
    return rect.adjusted(-grabber, -grabber, grabber, grabber)
        .united(RotationHandle::Rect(kind, size_, pixel).adjusted(-pen, -pen, pen, pen));
}

QPainterPath MappingRectangle::shape() const
{
    QPainterPath path;
    // The frame only carries its handle; what it frames must stay within reach.
    if (IsElement() || variant_ == Variant::GroupBody)
        path.addRect(Rect());
    return path;
}

bool MappingRectangle::collidesWithPath(const QPainterPath& path, Qt::ItemSelectionMode mode) const
{
    if (!IsElement() && variant_ != Variant::GroupBody)
        return false;
    // The path comes in the item's frame. Almost always it is the rubber band of an upright
    // element, or lies wholly inside or outside: no need then for the general cutting of paths.
    const QRectF rect = Rect();
    const QRectF reach = path.controlPointRect();
    if (!reach.intersects(rect))
        return false;
    if (mode == Qt::IntersectsItemShape && path.contains(rect.center()))
        return true;
    return QGraphicsItem::collidesWithPath(path, mode);
}

QVariant MappingRectangle::itemChange(GraphicsItemChange change, const QVariant& value)
{
    if (change == ItemSelectedChange)
        prepareGeometryChange(); // The handles reach over the edges.
    if (change == ItemSelectedHasChanged && listener_) {
        // Selected elements stand before the others.
        setZValue(value.toBool() ? 1 : 0);
        listener_->NoteSelection(id_, value.toBool());
    }
    return QGraphicsItem::itemChange(change, value);
}

void MappingRectangle::mousePressEvent(QGraphicsSceneMouseEvent* event)
{
    // A press that adds to the selection is not for the group that is selected already.
    if (!IsElement() && event->modifiers().testFlag(Qt::ControlModifier))
        event->ignore();
    else
        QGraphicsItem::mousePressEvent(event);
}

void MappingRectangle::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    const double pixel = display_.ScreenPixel();
    const QRectF rect = Rect();
    painter->setRenderHint(QPainter::Antialiasing, !IsUpright(rotation()));
    switch (variant_) {
    case Variant::Element:
        if (!isSelected())
            painter->fillRect(rect, IsNatural() ? NaturalFill : ScaledFill);
        Outline::Paint(*painter, rect, EdgesOfElement(), pixel);
        Outline::PaintFlips(*painter, rect, flipHorizontal_, flipVertical_, pixel);
        break;
    case Variant::DragPreview:
        painter->fillRect(rect, NaturalFill);
        Outline::Paint(*painter, rect, {Outline::AutoEdge, Outline::AutoEdge}, pixel, Qt::DotLine);
        break;
    case Variant::GroupFrame:
        Outline::Paint(*painter, rect, {Outline::GroupHandle, Outline::GroupHandle}, pixel,
                       Qt::DashLine);
        break;
    case Variant::GroupBody:
        return;
    }
    PaintHandles(*painter);
}

bool MappingRectangle::IsNatural() const
{
    return IsSame(size_.width(), naturalSize_.width()) &&
           IsSame(size_.height(), naturalSize_.height());
}

Outline::Edges MappingRectangle::EdgesOfElement() const
{
    if (isSelected() && !ShowsGrabbers())
        return {Outline::Selected, Outline::Selected};
    const auto color = [this](bool isNatural) {
        return autoMark_   ? Outline::AutoEdge
               : isNatural ? Outline::NaturalEdge
                           : Outline::ScaledEdge;
    };
    return {color(IsSame(size_.height(), naturalSize_.height())),
            color(IsSame(size_.width(), naturalSize_.width()))};
}

void MappingRectangle::PaintHandles(QPainter& painter) const
{
    const double pixel = display_.ScreenPixel();
    if (ShowsGrabbers()) {
        for (int corner = 0; corner < ElementGeometry::CornerCount; ++corner)
            Outline::PaintGrabber(painter, GraphCornerGrabber::Rect(corner, size_, pixel),
                                  Outline::Handle, pixel);
        RotationHandle::Paint(painter, RotationHandle::OfElement, size_, pixel, Outline::Handle);
    }
    if (variant_ == Variant::GroupFrame)
        RotationHandle::Paint(painter, RotationHandle::OfGroup, size_, pixel, Outline::GroupHandle);
}
