// SPDX-License-Identifier: MIT
#pragma once

#include <QUndoCommand>

#include "Model/ElementChanges.h"
#include "Model/TakenElement.h"
#include "UI/Commands/AddElementsCommand.h"
#include "UI/Commands/ElementCommand.h"

/// Takes elements out of the document. Undone, the same elements are back in the same rows.
class RemoveRectangleCommand final : public QUndoCommand
{
public:
    /// `manager` outlives the command.
    RemoveRectangleCommand(DeviceManager& manager, ElementIds ids);

    void undo() override;
    void redo() override;
    [[nodiscard]] int id() const override { return RemoveCommandId; }
    bool mergeWith(const QUndoCommand*) override { return false; }

private:
    DeviceManager& manager_;
    ElementIds ids_;
    TakenElements taken_; ///< while they are out of the document
};

/// Places a fixture of the library.
class CreateNewMappingCommand final : public AddElementsCommand
{
public:
    /// `params` is what the element is made from. `manager` outlives the command.
    CreateNewMappingCommand(DeviceManager& manager, MappedObjectParams params);

    [[nodiscard]] int id() const override { return CreateCommandId; }

private:
    [[nodiscard]] ElementIds Add() override;

    MappedObjectParams params_;
};
