// SPDX-License-Identifier: MIT
#include "UI/Commands/AddElementsCommand.h"

#include <utility>

#include "Model/DeviceManager.h"
#include "Model/MappedObjectListProxy.h"

AddElementsCommand::AddElementsCommand(DeviceManager& manager, const QString& text)
    : QUndoCommand(text)
    , manager_(manager)
{}

void AddElementsCommand::redo()
{
    if (std::exchange(made_, true))
        manager_.PutBackElements(std::exchange(taken_, {}));
    else
        ids_ = Add();
    if (!ids_.empty())
        manager_.GetMappedObjectListProxy()->SelectByUniqueIDs(ids_);
}

void AddElementsCommand::undo()
{
    taken_ = manager_.TakeElements(ids_);
}
