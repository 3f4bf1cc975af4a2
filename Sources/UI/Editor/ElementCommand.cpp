// SPDX-License-Identifier: MIT
#include "UI/Editor/ElementCommand.h"

#include "Model/DeviceManager.h"
#include "UI/Editor/WeftMapEditorScene.h"

ElementCommand::ElementCommand(WeftMapEditorScene& scene, const std::vector<std::int64_t>& ids)
    : scene_(scene)
{
    before_.reserve(ids.size());
    for (const std::int64_t id : ids) {
        if (const auto state = ReadElement(scene.GetManager(), scene.IndexOf(id)))
            before_.push_back(*state);
    }
}

DeviceManager& ElementCommand::Manager() const
{
    return scene_.GetManager();
}

void ElementCommand::MarkDirty() const
{
    Manager().SetDocumentDirty(true);
}

std::vector<EditorGeometry::Placement> ElementCommand::PlacementsBefore() const
{
    std::vector<EditorGeometry::Placement> placements;
    placements.reserve(before_.size());
    for (const ElementState& element : before_)
        placements.push_back(element.placement);
    return placements;
}

template <class Make>
void ElementCommand::ForEachPresent(const Make& make) const
{
    for (std::size_t i = 0; i < before_.size(); ++i) {
        if (const QModelIndex index = scene_.IndexOf(before_[i].id); index.isValid())
            make(i, index);
    }
}

void ElementCommand::SetCentres(const std::vector<QPointF>& centres) const
{
    std::vector<ObjectPosition> entries;
    entries.reserve(before_.size());
    ForEachPresent([&](std::size_t i, const QModelIndex& index) {
        entries.push_back({index, centres[i].x(), centres[i].y()});
    });
    Manager().SetObjectCentre(entries);
}

void ElementCommand::SetPlacements(const std::vector<EditorGeometry::Placement>& placements) const
{
    std::vector<ObjectSize> sizes;
    std::vector<ObjectPosition> centres;
    sizes.reserve(before_.size());
    centres.reserve(before_.size());
    ForEachPresent([&](std::size_t i, const QModelIndex& index) {
        const auto& [centre, size] = placements[i];
        sizes.push_back({index, size.width(), size.height()});
        centres.push_back({index, centre.x(), centre.y()});
    });
    Manager().SetObjectSize(sizes);
    Manager().SetObjectCentre(centres);
}

void ElementCommand::SetRotations(const std::vector<float>& degrees) const
{
    std::vector<ObjectRotation> entries;
    entries.reserve(before_.size());
    ForEachPresent([&](std::size_t i, const QModelIndex& index) {
        entries.push_back({index, degrees[i]});
    });
    Manager().SetObjectRotation(entries);
}

void ElementCommand::MoveTopLefts(const std::vector<QPointF>& corners, bool final) const
{
    std::vector<ObjectPosition> entries;
    entries.reserve(before_.size());
    ForEachPresent([&](std::size_t i, const QModelIndex& index) {
        entries.push_back({index, corners[i].x(), corners[i].y()});
    });
    Manager().MoveObjects(entries, final);
}

void ElementCommand::PutCentresBack() const
{
    std::vector<QPointF> centres;
    centres.reserve(before_.size());
    for (const ElementState& element : before_)
        centres.push_back(element.placement.centre);
    SetCentres(centres);
}

void ElementCommand::PutPlacementsBack() const
{
    SetPlacements(PlacementsBefore());
}

void ElementCommand::PutRotationsBack() const
{
    std::vector<float> rotations;
    rotations.reserve(before_.size());
    for (const ElementState& element : before_)
        rotations.push_back(element.rotation);
    SetRotations(rotations);
}
