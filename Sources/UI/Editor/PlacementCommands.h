// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QSizeF>
#include <QUndoCommand>

#include "Model/ObjectChanges.h"
#include "UI/Editor/ElementCommand.h"

/// Takes elements off the canvas and out of the document. Undone, they come back as they were,
/// under new numbers.
class RemoveRectangleCommand final : public QUndoCommand
{
public:
    /// `scene` outlives the command.
    RemoveRectangleCommand(WeftMapEditorScene& scene, const std::vector<std::int64_t>& ids);

    [[nodiscard]] bool ChangesNothing() const { return records_.empty(); }

    void undo() override;
    void redo() override;
    [[nodiscard]] int id() const override { return RemoveCommandId; }
    bool mergeWith(const QUndoCommand*) override { return false; }

private:
    WeftMapEditorScene& scene_;
    std::vector<MappedObjectParams> records_;
    bool removed_ = false;
};

/// Places a fixture of the library. Each time it is done a new element is made.
class CreateNewMappingCommand final : public QUndoCommand
{
public:
    /// `params` is what the element is made from. `scene` outlives the command.
    CreateNewMappingCommand(WeftMapEditorScene& scene, MappedObjectParams params);

    void undo() override;
    void redo() override;
    [[nodiscard]] int id() const override { return CreateCommandId; }
    bool mergeWith(const QUndoCommand*) override { return false; }

private:
    WeftMapEditorScene& scene_;
    MappedObjectParams params_;
    std::int64_t elementId_ = 0; ///< 0 while there is none
    std::int64_t lastId_ = 0;
};
