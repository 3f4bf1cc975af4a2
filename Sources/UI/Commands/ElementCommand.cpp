// SPDX-License-Identifier: MIT
#include "UI/Commands/ElementCommand.h"

ElementCommand::ElementCommand(DeviceManager& manager, const ElementIds& ids, const QString& text)
    : ValueCommand(manager, manager.GetVideoMappings(ids), &DeviceManager::SetVideoMappings, text)
    , canvas_(manager.CanvasPixels())
{}

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
