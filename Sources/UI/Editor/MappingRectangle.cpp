// SPDX-License-Identifier: MIT
#include "UI/Editor/MappingRectangle.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QPainter>
#include <QPainterPath>

#include "UI/Editor/EditorDisplayState.h"
#include "UI/Editor/GraphCornerGrabber.h"
#include "UI/Editor/RotationHandle.h"

namespace {

using Variant = MappingRectangle::Variant;

constexpr QColor ElementHandle(255, 0, 0);
constexpr QColor GroupHandle(240, 127, 14);
constexpr QColor AutoEdge(255, 0, 0);
constexpr QColor NaturalEdge(0, 102, 0);
constexpr QColor ScaledEdge(0, 0, 0);
constexpr QColor NaturalFill(0, 255, 0, 60);
constexpr QColor ScaledFill(0, 0, 254, 30);
/// What a selected element shows when it is too small for handles.
constexpr QColor SelectedFill(240, 127, 14, 150);

/// The longer side of an element with handles, among several selected ones, in screen pixels.
constexpr double LeastSideWithHandles = 6 * GraphCornerGrabber::ScreenSize;
constexpr double FlipMarkPointSize = 14;
constexpr double FlipMarkLeft = 8; ///< screen pixels from the edge

/// Just under a pixel: the painter has a fast way for lines that are not wider than one.
constexpr double HairlineWidth = 0.999;

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

void MappingRectangle::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    painter->setRenderHint(QPainter::Antialiasing, !IsUpright(rotation()));
    switch (variant_) {
    case Variant::Element:
        PaintElement(*painter);
        break;
    case Variant::DragPreview:
    case Variant::GroupFrame: {
        QPen pen(variant_ == Variant::GroupFrame ? Qt::darkRed : Qt::red,
                 HairlineWidth * display_.ScreenPixel(), Qt::DotLine);
        pen.setDashPattern({2, 2});
        if (variant_ == Variant::GroupFrame)
            PaintEdges(*painter);
        painter->setPen(pen);
        painter->setBrush(NaturalFill);
        painter->drawRect(Rect());
        break;
    }
    case Variant::GroupBody:
        return;
    }
    PaintHandles(*painter);
}

void MappingRectangle::PaintElement(QPainter& painter) const
{
    const QRectF rect = Rect();
    const bool isNatural = IsSame(size_.width(), naturalSize_.width()) &&
                           IsSame(size_.height(), naturalSize_.height());
    painter.fillRect(rect, isNatural ? NaturalFill : ScaledFill);
    if (isSelected() && !ShowsGrabbers())
        painter.fillRect(rect, SelectedFill);
    PaintEdges(painter);
    if (flipHorizontal_ || flipVertical_)
        PaintFlipMark(painter);
}

void MappingRectangle::PaintEdges(QPainter& painter) const
{
    const auto color = [this](bool isNatural) {
        return autoMark_ ? AutoEdge : isNatural ? NaturalEdge : ScaledEdge;
    };
    const QColor sides = color(IsSame(size_.height(), naturalSize_.height()));
    const QColor topAndBottom = color(IsSame(size_.width(), naturalSize_.width()));
    const QRectF rect = Rect();
    QPen pen(sides, HairlineWidth * display_.ScreenPixel(), Qt::SolidLine, Qt::SquareCap);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    if (sides == topAndBottom) {
        painter.drawRect(rect);
        return;
    }
    const std::array<QLineF, 2> upright = {QLineF(rect.topLeft(), rect.bottomLeft()),
                                           QLineF(rect.topRight(), rect.bottomRight())};
    painter.drawLines(upright.data(), static_cast<int>(upright.size()));
    pen.setColor(topAndBottom);
    painter.setPen(pen);
    const std::array<QLineF, 2> level = {QLineF(rect.topLeft(), rect.topRight()),
                                         QLineF(rect.bottomLeft(), rect.bottomRight())};
    painter.drawLines(level.data(), static_cast<int>(level.size()));
}

void MappingRectangle::PaintFlipMark(QPainter& painter) const
{
    // Drawn at the size of the screen: a font size below one point does not work.
    const double pixel = display_.ScreenPixel();
    static const QFont font(QStringLiteral("Arial"), static_cast<int>(FlipMarkPointSize),
                            QFont::Bold);
    static const double lineHeight = QFontMetricsF(font).ascent();
    const QRectF rect(Rect().topLeft() / pixel, Rect().size() / pixel);
    if (rect.height() < lineHeight)
        return; // Letters that are cut off can't be read.
    const QString text = flipHorizontal_ && flipVertical_ ? QStringLiteral("vhF")
                         : flipHorizontal_                ? QStringLiteral("hF")
                                                          : QStringLiteral("vF");
    const QTransform before = painter.worldTransform();
    painter.scale(pixel, pixel);
    painter.setFont(font);
    // A light edge keeps the black letters legible on a dark picture.
    const QRectF place = rect.adjusted(FlipMarkLeft, 0, 0, 0);
    constexpr int corner = Qt::AlignLeft | Qt::AlignBottom;
    painter.setPen(QColor(255, 255, 255, 200));
    painter.drawText(place.translated(1, -1), corner, text);
    painter.setPen(Qt::black);
    painter.drawText(place, corner, text);
    painter.setWorldTransform(before);
}

void MappingRectangle::PaintHandles(QPainter& painter) const
{
    const double pixel = display_.ScreenPixel();
    if (ShowsGrabbers()) {
        for (int corner = 0; corner < ElementGeometry::CornerCount; ++corner)
            painter.fillRect(GraphCornerGrabber::Rect(corner, size_, pixel), ElementHandle);
    }
    if (IsElement() && ShowsGrabbers())
        RotationHandle::Paint(painter, RotationHandle::OfElement, size_, pixel, ElementHandle);
    if (variant_ == Variant::GroupFrame)
        RotationHandle::Paint(painter, RotationHandle::OfGroup, size_, pixel, GroupHandle);
}
