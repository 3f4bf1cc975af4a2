// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <vector>

#include "Model/ElementCopies.h"
#include "UI/Commands/AddElementsCommand.h"

// The commands that multiply elements. What they add is settled when they are made, from values: a
// source may be gone by then. `manager` outlives each command.

/// Adds copies of elements.
class CopiesCommand : public AddElementsCommand
{
public:
    /// Whether there is nothing to add, so that there is nothing to undo.
    [[nodiscard]] bool ChangesNothing() const { return copies_.empty() && GetElements().empty(); }

protected:
    CopiesCommand(DeviceManager& manager, std::vector<ElementValues> copies);

    [[nodiscard]] ElementIds Add() override;

private:
    std::vector<ElementValues> copies_; ///< until they are made
};

/// Makes a wall of an element, which stays its first one.
class DuplicateElementCommand final : public CopiesCommand
{
public:
    /// A grid that can't be made leaves a line in the log and changes nothing.
    DuplicateElementCommand(DeviceManager& manager, const ElementValues& source,
                            const DuplicateGrid& grid);
};

/// Adds elements again that were copied before, above where they were.
class CopyPasteCommand final : public CopiesCommand
{
public:
    /// `first` is a free address for the first of them. The fixtures are those of the library.
    CopyPasteCommand(DeviceManager& manager, std::span<const ElementValues> sources,
                     const PatchAddress& first);
};
