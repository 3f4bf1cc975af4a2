// SPDX-License-Identifier: MIT
#pragma once

#include <QUndoCommand>

#include "Model/ElementChanges.h"
#include "Model/TakenElement.h"

class DeviceManager;

/// Adds elements to the document, and selects them in the list. Done again, it brings back the
/// elements that it made first: later steps of the history refer to them.
class AddElementsCommand : public QUndoCommand
{
public:
    /// The elements that were made; none before the first redo.
    [[nodiscard]] const ElementIds& GetElements() const { return ids_; }

    void undo() final;
    void redo() final;
    bool mergeWith(const QUndoCommand*) override { return false; }

protected:
    /// `manager` outlives the command.
    explicit AddElementsCommand(DeviceManager& manager, const QString& text = QString());

    [[nodiscard]] DeviceManager& Manager() const { return manager_; }
    /// Makes the elements and gives their numbers. Once: a command that makes none does nothing.
    [[nodiscard]] virtual ElementIds Add() = 0;

private:
    DeviceManager& manager_;
    bool made_ = false;
    ElementIds ids_;
    TakenElements taken_; ///< while the elements are out of the document
};
