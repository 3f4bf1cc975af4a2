// SPDX-License-Identifier: MIT
#include "UI/Editor/ElementCommand.h"

#include "Model/DeviceManager.h"

ElementCommand::ElementCommand(DeviceManager& manager, const ElementIds& ids, const QString& text)
    : QUndoCommand(text)
    , manager_(manager)
    , canvas_(manager.CanvasPixels())
    , before_(manager.GetVideoMappings(ids))
    , after_(before_)
{}

void ElementCommand::undo()
{
    manager_.SetVideoMappings(before_);
}

void ElementCommand::redo()
{
    Preview();
    manager_.SetDocumentDirty(true);
}

void ElementCommand::Preview() const
{
    manager_.SetVideoMappings(after_);
}

void ElementCommand::AllAreCentred(std::span<const QPointF> centres)
{
    auto centre = centres.begin();
    EachBecomes([&centre](ElementGeometry::Placement& place, const VideoMapping&) {
        place.centre = *centre++;
    });
}

std::vector<ElementGeometry::Placement> ElementCommand::PlacementsBefore() const
{
    std::vector<ElementGeometry::Placement> placements;
    placements.reserve(before_.size());
    for (const ElementMapping& element : before_)
        placements.push_back(ElementGeometry::PlacementOf(element.video, canvas_));
    return placements;
}
