// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "Model/ElementGeometry.h"
#include "UI/Editor/LEDGraphicsItem.h"
#include "UI/Editor/Outline.h"

struct EditorDisplayState;

/// Hears of elements that are selected or deselected on the canvas.
class SelectionListener
{
public:
    virtual void NoteSelection(std::int64_t id, bool selected) = 0;

protected:
    ~SelectionListener() = default;
};

/// The item of an element, or one of the overlays. It shows what the model
/// says and keeps no geometry of its own that survives: gestures go to the model, and the model's
/// signals move the item. Its position is its centre.
class MappingRectangle final : public LEDGraphicsItem
{
public:
    enum
    {
        Type = UserType + static_cast<int>(MappingKind)
    };

    enum class Variant
    {
        Element,
        DragPreview, ///< a fixture on its way from the library
        GroupFrame,  ///< round a selection of several, with the handle that turns it
        GroupBody    ///< inside the frame, invisible: a press anywhere in it takes the group
    };

    static constexpr std::int64_t OverlayId = -1;

    /// An element. The listener and the display outlive the item.
    MappingRectangle(SelectionListener& listener, const EditorDisplayState& display,
                     std::int64_t id);
    /// An overlay.
    MappingRectangle(const EditorDisplayState& display, Variant variant, QSizeF size);

    [[nodiscard]] bool IsElement() const { return variant_ == Variant::Element; }
    /// The element's identifier; OverlayId for an overlay.
    [[nodiscard]] std::int64_t GetId() const { return id_; }

    [[nodiscard]] QSizeF GetSize() const { return size_; }
    [[nodiscard]] ElementGeometry::Placement GetPlacement() const { return {pos(), size_}; }
    /// The rectangle about the centre, before it is turned.
    [[nodiscard]] QRectF Rect() const
    {
        return {-size_.width() / 2, -size_.height() / 2, size_.width(), size_.height()};
    }
    void SetSize(QSizeF size);
    void SetPlacement(const ElementGeometry::Placement& placement);

    /// The fixture's own size: an element that has it looks different.
    void SetNaturalSize(QSizeF size);
    /// `direction` 0 is horizontal, any other vertical.
    void SetFlip(int direction, bool state);
    [[nodiscard]] bool IsFlipped(int direction) const
    {
        return direction == 0 ? flipHorizontal_ : flipVertical_;
    }
    /// The mark of an element that no node is chosen for. True when that changes it.
    bool SetAutoMark(bool on);
    [[nodiscard]] bool HasAutoMark() const { return autoMark_; }
    /// The only selected element shows its handles at any size.
    void SetOnlySelected(bool on);

    /// Whether grabbers and rotation handle are on the screen. Too small elements of a larger
    /// selection have none: they would hide the element.
    [[nodiscard]] bool ShowsGrabbers() const;
    [[nodiscard]] bool ShowsRotationHandle() const;
    /// The grabber at a point of the scene, or NoCorner.
    [[nodiscard]] int GrabberAt(QPointF scenePoint) const;
    [[nodiscard]] bool IsRotationHandleAt(QPointF scenePoint) const;

    [[nodiscard]] int type() const override { return Type; }
    [[nodiscard]] QRectF boundingRect() const override;
    [[nodiscard]] QPainterPath shape() const override;
    [[nodiscard]] bool collidesWithPath(const QPainterPath& path,
                                        Qt::ItemSelectionMode mode) const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;

private:
    [[nodiscard]] bool IsNatural() const;
    [[nodiscard]] Outline::Edges EdgesOfElement() const;
    void PaintHandles(QPainter& painter) const;

    SelectionListener* listener_ = nullptr; ///< of an element only
    const EditorDisplayState& display_;
    Variant variant_;
    std::int64_t id_ = OverlayId;
    QSizeF size_;
    QSizeF naturalSize_;
    bool flipHorizontal_ = false;
    bool flipVertical_ = false;
    bool autoMark_ = false;
    bool onlySelected_ = false;
};
