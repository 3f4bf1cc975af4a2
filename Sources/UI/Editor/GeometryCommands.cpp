// SPDX-License-Identifier: MIT
#include "UI/Editor/GeometryCommands.h"

#include <algorithm>
#include <cmath>

#include "Model/DeviceManager.h"
#include "UI/Editor/WeftMapEditorScene.h"

namespace {

constexpr double FullTurn = 360;

} // namespace

// ---- Move --------------------------------------------------------------------------------------

MoveCommand::MoveCommand(WeftMapEditorScene& scene, const std::vector<std::int64_t>& ids,
                         bool final)
    : ElementCommand(scene, ids)
    , final_(final)
{
    setText(QObject::tr("Move Fixture"));
}

bool MoveCommand::ChangesNothing() const
{
    return Before().empty() || (delta_.isNull() && !left_ && !top_);
}

void MoveCommand::redo()
{
    std::vector<QPointF> corners;
    corners.reserve(Before().size());
    for (const ElementState& element : Before()) {
        const QPointF corner = element.placement.Rect().topLeft();
        corners.push_back(delta_.isNull()
                              ? QPointF(left_.value_or(corner.x()), top_.value_or(corner.y()))
                              : corner + delta_);
    }
    MoveTopLefts(corners, final_);
    MarkDirty();
}

void MoveCommand::undo()
{
    std::vector<QPointF> corners;
    corners.reserve(Before().size());
    for (const ElementState& element : Before())
        corners.push_back(element.placement.Rect().topLeft());
    MoveTopLefts(corners, final_);
}

// ---- Size --------------------------------------------------------------------------------------

SizeRectangleCommand::SizeRectangleCommand(WeftMapEditorScene& scene,
                                           const std::vector<std::int64_t>& ids, int corner,
                                           bool snap)
    : ElementCommand(scene, ids)
    , corner_(corner)
    , snap_(snap)
{
    setText(QObject::tr("Resize Fixture"));
}

bool SizeRectangleCommand::ChangesNothing() const
{
    return Before().empty() || (growth_ == QSizeF(0, 0) && !width_ && !height_);
}

EditorGeometry::Placement SizeRectangleCommand::After(const ElementState& element) const
{
    if (growth_ != QSizeF(0, 0)) {
        return EditorGeometry::Resized(element.placement, static_cast<double>(element.rotation),
                                       corner_, growth_, snap_);
    }
    EditorGeometry::Placement placement = element.placement;
    if (width_ || height_) {
        const auto whole = [](std::optional<double> wanted, double old) {
            return std::max(1.0, EditorGeometry::Cut(wanted.value_or(old)));
        };
        placement.size =
            QSizeF(whole(width_, placement.size.width()), whole(height_, placement.size.height()));
    }
    return placement;
}

void SizeRectangleCommand::redo()
{
    std::vector<EditorGeometry::Placement> placements;
    placements.reserve(Before().size());
    for (const ElementState& element : Before())
        placements.push_back(After(element));
    SetPlacements(placements);
    MarkDirty();
}

void SizeRectangleCommand::undo()
{
    PutPlacementsBack();
}

// ---- Rotate ------------------------------------------------------------------------------------

RotateRectangleCommand::RotateRectangleCommand(WeftMapEditorScene& scene,
                                               const std::vector<std::int64_t>& ids)
    : ElementCommand(scene, ids)
{
    setText(QObject::tr("Rotate Fixture"));
}

void RotateRectangleCommand::SetAngle(double degrees, bool relative)
{
    angle_ = degrees;
    relative_ = relative;
}

float RotateRectangleCommand::After(const ElementState& element) const
{
    if (relative_)
        return static_cast<float>(static_cast<double>(element.rotation) + angle_);
    double angle = angle_;
    if (angle < 0)
        angle += FullTurn;
    if (angle > FullTurn)
        angle -= FullTurn;
    return static_cast<float>(angle);
}

bool RotateRectangleCommand::ChangesNothing() const
{
    // The model holds whole degrees.
    return std::ranges::all_of(Before(), [this](const ElementState& element) {
        return std::trunc(After(element)) == element.rotation;
    });
}

void RotateRectangleCommand::redo()
{
    std::vector<float> rotations;
    rotations.reserve(Before().size());
    for (const ElementState& element : Before())
        rotations.push_back(After(element));
    SetRotations(rotations);
    MarkDirty();
}

void RotateRectangleCommand::undo()
{
    PutRotationsBack();
}

// ---- Flip --------------------------------------------------------------------------------------

FlipRectangleCommand::FlipRectangleCommand(WeftMapEditorScene& scene,
                                           const std::vector<std::int64_t>& ids,
                                           FlipDirection direction, bool state)
    : ElementCommand(scene, ids)
    , direction_(direction)
    , state_(state)
{
    setText(QObject::tr("Flip Fixture"));
}

void FlipRectangleCommand::redo()
{
    std::vector<ObjectFlip> flips;
    for (const ElementState& element : Before()) {
        if (const QModelIndex index = Scene().IndexOf(element.id); index.isValid())
            flips.push_back({index, direction_, state_});
    }
    Manager().SetObjectFlipState(flips);
    MarkDirty();
}

void FlipRectangleCommand::undo()
{
    std::vector<ObjectFlip> flips;
    for (const ElementState& element : Before()) {
        const bool state =
            direction_ == FlipHorizontal ? element.flipHorizontal : element.flipVertical;
        if (const QModelIndex index = Scene().IndexOf(element.id); index.isValid())
            flips.push_back({index, direction_, state});
    }
    Manager().SetObjectFlipState(flips);
}

// ---- Rotate a group ----------------------------------------------------------------------------

RotateSelectionCommand::RotateSelectionCommand(WeftMapEditorScene& scene,
                                               const std::vector<std::int64_t>& ids, QPointF centre,
                                               double startAngle)
    : ElementCommand(scene, ids)
    , centre_(centre)
    , startAngle_(startAngle)
    , angle_(startAngle)
{}

void RotateSelectionCommand::redo()
{
    std::vector<QPointF> centres;
    std::vector<float> rotations;
    centres.reserve(Before().size());
    rotations.reserve(Before().size());
    for (const ElementState& element : Before()) {
        centres.push_back(
            EditorGeometry::TurnedAbout(element.placement.centre, centre_, GetTurn()));
        rotations.push_back(static_cast<float>(
            EditorGeometry::WholeDegrees(static_cast<double>(element.rotation) + GetTurn())));
    }
    SetRotations(rotations);
    SetCentres(centres);
    MarkDirty();
}

void RotateSelectionCommand::undo()
{
    PutRotationsBack();
    PutCentresBack();
}
