// SPDX-License-Identifier: MIT
#include "UI/Editor/PlacementCommands.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "Model/MappedObjectListProxy.h"
#include "UI/Editor/MappingRectangle.h"
#include "UI/Editor/WeftMapEditorScene.h"

namespace {

EditorGeometry::Placement PlacementOf(const MappedObjectParams& record)
{
    return {QPointF(static_cast<double>(record.posX), static_cast<double>(record.posY)),
            QSizeF(static_cast<double>(record.width), static_cast<double>(record.height))};
}

std::optional<MappedObjectParams> RecordOf(const WeftMapEditorScene& scene, std::int64_t id)
{
    const QModelIndex index = scene.IndexOf(id);
    const auto state = ReadElement(scene.GetManager(), index);
    if (!state)
        return std::nullopt;
    const MappedLedItem& element = *scene.GetManager().GetMappedItem(index);
    MappedObjectParams record;
    record.elementID = state->id;
    record.fixtureID = element.GetFixture().uniqueID;
    record.naturalWidth = element.GetFixture().pixelMap.GetWidth();
    record.naturalHeight = element.GetFixture().pixelMap.GetHeight();
    record.posX = static_cast<float>(state->placement.centre.x());
    record.posY = static_cast<float>(state->placement.centre.y());
    record.width = static_cast<float>(state->placement.size.width());
    record.height = static_cast<float>(state->placement.size.height());
    record.rotation = state->rotation;
    record.flipHorizontal = state->flipHorizontal;
    record.flipVertical = state->flipVertical;
    if (const DMXMappingArtNet* patch = element.GetArtNetMapping()) {
        record.ipconf = QString::fromStdWString(patch->GetIpconf());
        record.ipName = QString::fromStdWString(patch->GetIpName());
        record.subnet = patch->GetSubnet();
        record.universe = patch->GetUniverse();
        record.channel = patch->GetChannel();
    }
    return record;
}

void RemoveFromSceneAndModel(WeftMapEditorScene& scene, const QList<qint64>& ids)
{
    {
        const WeftMapEditorScene::SelectionBatch batch(scene);
        // The last ones first: that is where the scene finds them soonest.
        for (auto id = ids.rbegin(); id != ids.rend(); ++id)
            scene.DeleteObjectItem(*id);
    }
    scene.GetManager().RemoveMappedObjects(ids);
}

} // namespace

RemoveRectangleCommand::RemoveRectangleCommand(WeftMapEditorScene& scene,
                                               const std::vector<std::int64_t>& ids)
    : scene_(scene)
{
    setText(QObject::tr("Remove Rectangle Fixture"));
    records_.reserve(ids.size());
    for (const std::int64_t id : ids) {
        if (const auto record = RecordOf(scene, id))
            records_.push_back(*record);
    }
}

void RemoveRectangleCommand::redo()
{
    QList<qint64> ids;
    ids.reserve(static_cast<int>(records_.size()));
    for (MappedObjectParams& record : records_) {
        record.elementID = scene_.GetNumbers().Present(record.elementID);
        ids.append(record.elementID);
    }
    RemoveFromSceneAndModel(scene_, ids);
    removed_ = true;
    scene_.GetManager().SetDocumentDirty(true);
    scene_.RemoveOverlays();
}

void RemoveRectangleCommand::undo()
{
    if (!removed_)
        return;
    DeviceManager& manager = scene_.GetManager();
    const std::vector<AddedObject> added = manager.AddMappedObjects(records_);
    std::vector<ObjectRotation> rotations;
    std::vector<ObjectFlip> flips;
    // Records of fixtures that have left the library stay behind; what came back has a new number.
    std::unordered_map<std::int64_t, std::int64_t> numbers;
    for (const auto& [index, record] : added) {
        scene_.AddRectangle(PlacementOf(record), QSizeF(record.naturalWidth, record.naturalHeight),
                            index, static_cast<double>(record.rotation));
        rotations.push_back({index, record.rotation});
        flips.push_back({index, FlipHorizontal, record.flipHorizontal});
        flips.push_back({index, FlipVertical, record.flipVertical});
        numbers[record.elementID] = manager.GetUniqueID(index);
    }
    manager.ApplyObjectParams(added);
    manager.SetObjectRotation(rotations);
    manager.SetObjectFlipState(flips);
    for (MappedObjectParams& record : records_) {
        if (const auto found = numbers.find(record.elementID); found != numbers.end()) {
            scene_.GetNumbers().Renumber(record.elementID, found->second);
            record.elementID = found->second;
        }
    }
    removed_ = false;
}

CreateNewMappingCommand::CreateNewMappingCommand(WeftMapEditorScene& scene,
                                                 MappedObjectParams params)
    : scene_(scene)
    , params_(std::move(params))
{
    setText(QObject::tr("Map Device(s)"));
}

void CreateNewMappingCommand::redo()
{
    if (params_.fixtureID < 1)
        return;
    DeviceManager& manager = scene_.GetManager();
    const QModelIndex index = manager.AddMappedObject(params_);
    if (!index.isValid())
        return;
    elementId_ = manager.GetUniqueID(index);
    if (lastId_ != 0)
        scene_.GetNumbers().Renumber(lastId_, elementId_);
    lastId_ = elementId_;
    const QSizeF natural(std::trunc(static_cast<double>(params_.width)),
                         std::trunc(static_cast<double>(params_.height)));
    scene_.AddRectangle(PlacementOf(params_), natural, index, 0);
    manager.ApplyObjectParams(index, params_);
    MappedObjectListProxy* list = manager.GetMappedObjectListProxy();
    emit list->select(list->mapFromSource(index.siblingAtColumn(0)),
                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    manager.SetDocumentDirty(true);
}

void CreateNewMappingCommand::undo()
{
    if (elementId_ == 0)
        return;
    lastId_ = scene_.GetNumbers().Present(elementId_);
    RemoveFromSceneAndModel(scene_, {lastId_});
    elementId_ = 0;
}
