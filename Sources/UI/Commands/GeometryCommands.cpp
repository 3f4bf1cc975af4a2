// SPDX-License-Identifier: MIT
#include "UI/Commands/GeometryCommands.h"

#include <algorithm>

using ElementGeometry::Placement;

namespace {

QString AlignText(ElementGeometry::AlignMode mode)
{
    switch (mode) {
    case ElementGeometry::AlignLeft:
        return QObject::tr("Align Left");
    case ElementGeometry::AlignCenter:
        return QObject::tr("Align Center");
    case ElementGeometry::AlignRight:
        return QObject::tr("Align Right");
    case ElementGeometry::AlignTop:
        return QObject::tr("Align Top");
    case ElementGeometry::AlignMiddle:
        return QObject::tr("Align Middle");
    case ElementGeometry::AlignBottom:
        return QObject::tr("Align Bottom");
    }
    return {};
}

} // namespace

MoveCommand::MoveCommand(DeviceManager& manager, const ElementIds& ids)
    : ElementCommand(manager, ids, QObject::tr("Move Fixture"))
{}

void MoveCommand::MoveBy(QPointF delta)
{
    EachBecomes([delta](Placement& place, const VideoMapping&) { place.centre += delta; });
}

void MoveCommand::MoveTo(std::optional<double> left, std::optional<double> top)
{
    EachBecomes([left, top](Placement& place, const VideoMapping&) {
        QRectF rect = place.Rect();
        rect.moveTo(left.value_or(rect.left()), top.value_or(rect.top()));
        place.centre = rect.center();
    });
}

bool MoveCommand::mergeWith(const QUndoCommand* next)
{
    const auto* move = dynamic_cast<const MoveCommand*>(next);
    if (!move || !move->goesOn_ || move->before_ != after_)
        return false;
    after_ = move->after_;
    return true;
}

SizeRectangleCommand::SizeRectangleCommand(DeviceManager& manager, const ElementIds& ids)
    : ElementCommand(manager, ids, QObject::tr("Resize Fixture"))
{}

void SizeRectangleCommand::GrowBy(QSizeF growth, int corner, bool snap)
{
    EachBecomes([=](Placement& place, const VideoMapping& video) {
        if (!growth.isNull())
            place = ElementGeometry::Resized(place, static_cast<double>(video.rotation), corner,
                                             growth, snap);
    });
}

void SizeRectangleCommand::Resize(std::optional<double> width, std::optional<double> height)
{
    const auto whole = [](std::optional<double> typed, double present) {
        return std::max(1.0, ElementGeometry::Cut(typed.value_or(present)));
    };
    EachBecomes([&](Placement& place, const VideoMapping&) {
        place.size = {whole(width, place.size.width()), whole(height, place.size.height())};
    });
}

RotateRectangleCommand::RotateRectangleCommand(DeviceManager& manager, const ElementIds& ids)
    : ElementCommand(manager, ids, QObject::tr("Rotate Fixture"))
{}

void RotateRectangleCommand::TurnBy(double degrees)
{
    EachBecomes([degrees](const Placement&, VideoMapping& video) {
        video.rotation = ElementGeometry::Turned(video.rotation, degrees);
    });
}

void RotateRectangleCommand::TurnTo(double degrees)
{
    EachBecomes([degrees](const Placement&, VideoMapping& video) {
        video.rotation = ElementGeometry::TypedAngle(degrees);
    });
}

FlipRectangleCommand::FlipRectangleCommand(DeviceManager& manager, const ElementIds& ids,
                                           FlipDirection direction, bool state)
    : ElementCommand(manager, ids, QObject::tr("Flip Fixture"))
{
    EachBecomes([=](const Placement&, VideoMapping& video) {
        (direction == FlipHorizontal ? video.flipHorizontal : video.flipVertical) = state;
    });
}

RotateSelectionCommand::RotateSelectionCommand(DeviceManager& manager, const ElementIds& ids,
                                               QPointF centre)
    : ElementCommand(manager, ids, QString())
    , centre_(centre)
{}

void RotateSelectionCommand::TurnBy(double degrees)
{
    EachBecomes([&](Placement& place, VideoMapping& video) {
        if (degrees != 0)
            place.centre = ElementGeometry::TurnedAbout(place.centre, centre_, degrees);
        video.rotation = ElementGeometry::Turned(video.rotation, degrees);
    });
}

AlignRectangleCommand::AlignRectangleCommand(DeviceManager& manager, const ElementIds& ids,
                                             ElementGeometry::AlignMode mode)
    : ElementCommand(manager, ids, AlignText(mode))
{
    AllAreCentred(ElementGeometry::Aligned(PlacementsBefore(), mode));
}

AlignDistributeRectangleCommand::AlignDistributeRectangleCommand(
    DeviceManager& manager, const ElementIds& ids, ElementGeometry::DistributeMode mode)
    : ElementCommand(manager, ids,
                     mode == ElementGeometry::DistributeHorizontally
                         ? QObject::tr("Distribute Horizontally")
                         : QObject::tr("Distribute Vertically"))
{
    AllAreCentred(ElementGeometry::Distributed(PlacementsBefore(), mode));
}
