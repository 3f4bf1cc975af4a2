// SPDX-License-Identifier: MIT
#include "UI/Commands/PlacementCommands.h"

#include <utility>

#include "Model/DeviceManager.h"

RemoveRectangleCommand::RemoveRectangleCommand(DeviceManager& manager, ElementIds ids)
    : QUndoCommand(QObject::tr("Remove Rectangle Fixture"))
    , manager_(manager)
    , ids_(std::move(ids))
{}

void RemoveRectangleCommand::redo()
{
    taken_ = manager_.TakeElements(ids_);
}

void RemoveRectangleCommand::undo()
{
    manager_.PutBackElements(std::exchange(taken_, {}));
}

CreateNewMappingCommand::CreateNewMappingCommand(DeviceManager& manager, MappedObjectParams params)
    : AddElementsCommand(manager, QObject::tr("Map Device(s)"))
    , params_(std::move(params))
{}

ElementIds CreateNewMappingCommand::Add()
{
    const QModelIndex added = Manager().AddMappedObject(params_);
    if (!added.isValid())
        return {};
    Manager().ApplyObjectParams(added, params_);
    return {Manager().GetUniqueID(added)};
}
