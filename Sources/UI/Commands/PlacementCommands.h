// SPDX-License-Identifier: MIT
#pragma once

#include <QUndoCommand>

#include "Model/ElementChanges.h"
#include "Model/TakenElement.h"
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

/// Places a fixture of the library, and selects the new element in the list. Done again, it brings
/// back the element that it made first.
class CreateNewMappingCommand final : public QUndoCommand
{
public:
    /// `params` is what the element is made from. `manager` outlives the command.
    CreateNewMappingCommand(DeviceManager& manager, MappedObjectParams params);

    void undo() override;
    void redo() override;
    [[nodiscard]] int id() const override { return CreateCommandId; }
    bool mergeWith(const QUndoCommand*) override { return false; }

private:
    DeviceManager& manager_;
    MappedObjectParams params_;
    std::int64_t elementId_ = 0; ///< 0 until the element was made
    TakenElements taken_;        ///< while the element is out of the document
};
