// SPDX-License-Identifier: MIT
#include "UI/Editor/SceneGestures.h"

#include <utility>

#include <QUndoStack>

#include "Model/DeviceManager.h"
#include "UI/Commands/GeometryCommands.h"
#include "UI/Commands/PushStep.h"
#include "UI/Editor/EditorDisplayState.h"
#include "UI/Editor/ElementSelection.h"
#include "UI/Editor/GroupOverlay.h"
#include "UI/Editor/MappingRectangle.h"

SceneGestures::SceneGestures(Parts parts)
    : parts_(std::move(parts))
{}

SceneGestures::~SceneGestures() = default;

template <class Command>
void SceneGestures::Finish(std::unique_ptr<Command>& pending)
{
    std::unique_ptr<Command> finished = std::move(pending);
    if (finished)
        PushStep(parts_.undoStack, std::move(finished));
}

void SceneGestures::MoveGesture(GesturePhase phase, QPointF delta)
{
    if (phase == GesturePhase::Start)
        move_ = std::make_unique<MoveCommand>(parts_.manager, parts_.selection.Ids());
    if (phase == GesturePhase::Update && move_) {
        move_->MoveBy(delta);
        move_->Preview();
    }
    if (phase == GesturePhase::End)
        Finish(move_);
}

void SceneGestures::SizeGesture(GesturePhase phase, int corner, QSizeF growth)
{
    if (phase == GesturePhase::Start)
        size_ = std::make_unique<SizeRectangleCommand>(parts_.manager, parts_.selection.Ids());
    if (phase == GesturePhase::Update && size_) {
        size_->GrowBy(growth, corner, parts_.display.snapToGrid);
        size_->Preview();
    }
    if (phase == GesturePhase::End)
        Finish(size_);
}

void SceneGestures::RotateItemsGesture(GesturePhase phase, double degrees)
{
    if (phase == GesturePhase::Start)
        rotate_ = std::make_unique<RotateRectangleCommand>(parts_.manager, parts_.selection.Ids());
    if (phase == GesturePhase::Update && rotate_) {
        rotate_->TurnBy(degrees);
        rotate_->Preview();
    }
    if (phase == GesturePhase::End)
        Finish(rotate_);
}

void SceneGestures::RotateGroupGesture(GesturePhase phase, double degrees)
{
    GroupOverlay& overlay = parts_.overlay;
    if (phase == GesturePhase::Start) {
        overlay.Show();
        startAngle_ = degrees;
        rotateGroup_ = std::make_unique<RotateSelectionCommand>(
            parts_.manager, parts_.selection.Ids(), overlay.GetCentre());
    }
    if (phase == GesturePhase::Update && rotateGroup_) {
        rotateGroup_->TurnBy(degrees - startAngle_);
        overlay.TurnFrame(degrees - startAngle_);
        rotateGroup_->Preview();
    }
    if (phase == GesturePhase::End) {
        Finish(rotateGroup_);
        overlay.Show();
    }
}

QPointF SceneGestures::WayOf(const ElementGeometry::Placement& from, double rotation, QPointF delta)
{
    const QSizeF covered = ElementGeometry::CoveredSize(from.size, rotation);
    const QPointF to = snap_.Apply(from.centre + delta, covered, parts_.display.snapToGrid);
    return ElementGeometry::WithoutRounding(to - from.centre);
}

void SceneGestures::Nudge(QPointF delta, bool goesOn)
{
    const ElementIds ids = parts_.selection.Ids();
    const auto elements = parts_.manager.GetVideoMappings(ids);
    if (elements.empty() || IsDragging())
        return;
    const VideoMapping& first = elements.front().video;
    snap_.Clear();
    auto move = std::make_unique<MoveCommand>(parts_.manager, ids);
    QPointF way = WayOf(ElementGeometry::PlacementOf(first, parts_.manager.CanvasPixels()),
                        static_cast<double>(first.rotation), delta);
    // An arrow key moves along one axis, whatever the grid would do to the other one.
    if (delta.x() == 0)
        way.setX(0);
    if (delta.y() == 0)
        way.setY(0);
    move->MoveBy(way);
    if (goesOn)
        move->GoOn();
    PushStep(parts_.undoStack, std::move(move));
}

void SceneGestures::Abandon()
{
    move_.reset();
    size_.reset();
    rotate_.reset();
    rotateGroup_.reset();
    if (IsDragging())
        parts_.holdUndo(false);
    drag_ = Drag::None;
}

// ---- The mouse ---------------------------------------------------------------------------------

void SceneGestures::Begin(Drag drag, const MappingRectangle& item, QPointF at)
{
    drag_ = drag;
    draggedId_ = item.GetId();
    pressed_ = at;
    start_ = item.GetPlacement();
    startRotation_ = item.rotation();
    startAngle_ = ElementGeometry::MouseAngle(start_.centre, at);
    parts_.holdUndo(true);
}

void SceneGestures::TakeItem(const MappingRectangle& item, QPointF at)
{
    Begin(Drag::Move, item, at);
    snap_.Clear();
    MoveGesture(GesturePhase::Start);
}

void SceneGestures::TakeGrabber(const MappingRectangle& item, int corner, QPointF at)
{
    Begin(Drag::Corner, item, at);
    corner_ = corner;
    growth_ = QSizeF(0, 0);
    SizeGesture(GesturePhase::Start, corner);
}

void SceneGestures::TakeRotationHandle(const MappingRectangle& item, QPointF at)
{
    Begin(item.IsElement() ? Drag::Turn : Drag::TurnGroup, item, at);
    turn_ = 0;
    if (drag_ == Drag::Turn)
        RotateItemsGesture(GesturePhase::Start);
    else
        RotateGroupGesture(GesturePhase::Start, startAngle_);
}

void SceneGestures::DragTo(QPointF to)
{
    switch (drag_) {
    case Drag::None:
        break;
    case Drag::Move:
        MoveGesture(GesturePhase::Update, WayOf(start_, startRotation_, to - pressed_));
        break;
    case Drag::Corner: {
        const QSizeF growth = ElementGeometry::CornerGrowth(
            corner_, start_.size, startRotation_, to - pressed_, parts_.display.snapToGrid);
        if (growth == growth_)
            break;
        growth_ = growth;
        SizeGesture(GesturePhase::Update, corner_, growth);
        break;
    }
    case Drag::Turn:
        turn_ = ElementGeometry::MouseAngle(start_.centre, to) - startAngle_;
        RotateItemsGesture(GesturePhase::Update, turn_);
        break;
    case Drag::TurnGroup:
        turn_ = ElementGeometry::MouseAngle(start_.centre, to) - startAngle_;
        RotateGroupGesture(GesturePhase::Update, startAngle_ + turn_);
        break;
    }
}

void SceneGestures::Release()
{
    const Drag ended = drag_;
    drag_ = Drag::None;
    switch (ended) {
    case Drag::None:
        return;
    case Drag::Move:
        MoveGesture(GesturePhase::End);
        break;
    case Drag::Corner:
        SizeGesture(GesturePhase::End, corner_);
        break;
    case Drag::Turn:
        RotateItemsGesture(GesturePhase::End, turn_);
        break;
    case Drag::TurnGroup:
        RotateGroupGesture(GesturePhase::End, startAngle_ + turn_);
        break;
    }
    parts_.holdUndo(false);
}
