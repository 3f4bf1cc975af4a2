// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include <QPointF>
#include <QSizeF>

#include "Model/ElementGeometry.h"

class DeviceManager;
class ElementSelection;
class GroupOverlay;
class MappingRectangle;
class MoveCommand;
class QUndoStack;
class RotateRectangleCommand;
class RotateSelectionCommand;
class SizeRectangleCommand;
struct EditorDisplayState;

enum class GesturePhase
{
    Start = 0,
    Update = 1,
    End = 2
};

/// Every edit by hand of the selected elements. A gesture begins with a command that is pending,
/// changes the model with each update, and at its end becomes one step of the undo history; none
/// when everything is where it was. The lower half turns mouse drags into such gestures.
class SceneGestures
{
public:
    /// All of them outlive this object.
    struct Parts
    {
        DeviceManager& manager;
        const EditorDisplayState& display;
        const ElementSelection& selection;
        GroupOverlay& overlay;
        QUndoStack& undoStack;
        /// True while the mouse drags: undo must not change the elements under it.
        std::function<void(bool)> holdUndo;
    };

    explicit SceneGestures(Parts parts);
    ~SceneGestures();
    SceneGestures(const SceneGestures&) = delete;
    SceneGestures& operator=(const SceneGestures&) = delete;

    /// `delta` is the distance from the start.
    void MoveGesture(GesturePhase phase, QPointF delta = {});
    /// `growth` is that since the start, in the elements' own axes.
    void SizeGesture(GesturePhase phase, int corner, QSizeF growth = {0, 0});
    /// Turns each element about itself, by `degrees` since the start.
    void RotateItemsGesture(GesturePhase phase, double degrees = 0);
    /// Turns the group about its middle. `degrees` is an angle whose difference to that of the
    /// start counts.
    void RotateGroupGesture(GesturePhase phase, double degrees);
    /// Moves by this much as a step, to whole pixels when elements snap. `goesOn` adds it to the
    /// step of the nudge before, for a key that is held.
    void Nudge(QPointF delta, bool goesOn);
    /// Forgets what is pending, as when the elements go away. The model stays as it is.
    void Abandon();

    /// The mouse took hold of an element or of the group at this point of the scene.
    void TakeItem(const MappingRectangle& item, QPointF at);
    void TakeGrabber(const MappingRectangle& item, int corner, QPointF at);
    void TakeRotationHandle(const MappingRectangle& item, QPointF at);
    [[nodiscard]] bool IsDragging() const { return drag_ != Drag::None; }
    /// The element that the mouse drags, MappingRectangle::OverlayId for the group, 0 for none.
    [[nodiscard]] std::int64_t DraggedId() const { return IsDragging() ? draggedId_ : 0; }
    void DragTo(QPointF to);
    /// The mouse let go.
    void Release();

private:
    enum class Drag
    {
        None,
        Move,
        Corner,
        Turn,
        TurnGroup
    };

    void Begin(Drag drag, const MappingRectangle& item, QPointF at);
    /// How far an element goes that is to go by `delta`.
    [[nodiscard]] QPointF WayOf(const ElementGeometry::Placement& from, double rotation,
                                QPointF delta);
    template <class Command>
    void Finish(std::unique_ptr<Command>& pending);

    Parts parts_;
    std::unique_ptr<MoveCommand> move_;
    std::unique_ptr<SizeRectangleCommand> size_;
    std::unique_ptr<RotateRectangleCommand> rotate_;
    std::unique_ptr<RotateSelectionCommand> rotateGroup_;

    Drag drag_ = Drag::None;
    std::int64_t draggedId_ = 0;
    QPointF pressed_;
    ElementGeometry::Placement start_;
    double startRotation_ = 0;
    double startAngle_ = 0; ///< of the group, or of the mouse
    double turn_ = 0;
    int corner_ = ElementGeometry::NoCorner;
    QSizeF growth_{0, 0};
    ElementGeometry::DragSnap snap_;
};
