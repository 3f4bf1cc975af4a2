// SPDX-License-Identifier: MIT
#include "UI/Commands/PlacementCommands.h"

#include <utility>

#include "Model/DeviceManager.h"
#include "Model/MappedObjectListProxy.h"

RemoveRectangleCommand::RemoveRectangleCommand(DeviceManager& manager, ElementIds ids)
    : QUndoCommand(QObject::tr("Remove Rectangle Fixture"))
    , manager_(manager)
    , ids_(std::move(ids))
{}

void RemoveRectangleCommand::redo()
{
    taken_ = manager_.TakeElements(ids_);
    manager_.SetDocumentDirty(true);
}

void RemoveRectangleCommand::undo()
{
    manager_.PutBackElements(std::exchange(taken_, {}));
}

CreateNewMappingCommand::CreateNewMappingCommand(DeviceManager& manager, MappedObjectParams params)
    : QUndoCommand(QObject::tr("Map Device(s)"))
    , manager_(manager)
    , params_(std::move(params))
{}

void CreateNewMappingCommand::redo()
{
    if (!taken_.empty()) {
        manager_.PutBackElements(std::exchange(taken_, {}));
    } else {
        const QModelIndex added = manager_.AddMappedObject(params_);
        if (!added.isValid())
            return;
        elementId_ = manager_.GetUniqueID(added);
        manager_.ApplyObjectParams(added, params_);
    }
    manager_.GetMappedObjectListProxy()->SelectByUniqueIDs({elementId_});
    manager_.SetDocumentDirty(true);
}

void CreateNewMappingCommand::undo()
{
    taken_ = manager_.TakeElements({elementId_});
}
