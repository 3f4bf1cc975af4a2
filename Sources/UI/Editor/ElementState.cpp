// SPDX-License-Identifier: MIT
#include "UI/Editor/ElementState.h"

#include "Model/DeviceManager.h"
#include "Model/MappedLedItem.h"

std::optional<ElementState> ReadElement(const DeviceManager& manager, const QModelIndex& index)
{
    const MappedLedItem* element = manager.GetMappedItem(index);
    const VideoMapping* video = element ? element->GetVideoMapping() : nullptr;
    if (!video)
        return std::nullopt;
    ElementState state;
    state.id = element->uniqueID;
    state.placement.centre = QPointF(manager.ToPixelsX(static_cast<double>(video->centerX)),
                                     manager.ToPixelsY(static_cast<double>(video->centerY)));
    state.placement.size = QSizeF(manager.ToPixelsX(static_cast<double>(video->width)),
                                  manager.ToPixelsY(static_cast<double>(video->height)));
    state.rotation = video->rotation;
    state.flipHorizontal = video->flipHorizontal;
    state.flipVertical = video->flipVertical;
    return state;
}

void ElementNumbers::Renumber(std::int64_t before, std::int64_t now)
{
    if (before != now)
        next_[before] = now; // Numbers only grow: the chain of numbers has no circle.
}

std::int64_t ElementNumbers::Present(std::int64_t id) const
{
    for (auto found = next_.find(id); found != next_.end(); found = next_.find(id))
        id = found->second;
    return id;
}
