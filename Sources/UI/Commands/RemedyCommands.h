// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "Model/ElementFixture.h"
#include "UI/Commands/ElementCommand.h"
#include "UI/Commands/ValueCommand.h"

class QUndoStack;
struct PatchProblem;

/// Gives each element a place of its own.
class PlaceCommand final : public ElementCommand
{
public:
    /// `manager` outlives the command.
    PlaceCommand(DeviceManager& manager, std::vector<ElementMapping> places, const QString& text);
};

/// Gives elements other fixtures, of their own as all elements have them.
class FixtureCommand final : public ValueCommand<ElementFixture>
{
public:
    /// `manager` outlives the command.
    FixtureCommand(DeviceManager& manager, std::vector<ElementFixture> fixtures,
                   const QString& text);
};

/// How many elements a remedy has put right, and how many it could not.
struct RemedyOutcome
{
    int helped = 0;
    int left = 0;
};

/// Puts problems of the patch right that are all of one rule, as the next step of the history.
/// Where nothing is to be changed there is no step, and no element is helped. `taken` are
/// Port-Addresses that are not ours to use.
RemedyOutcome PushRemedy(DeviceManager& manager, QUndoStack& history,
                         std::span<const PatchProblem> problems,
                         std::span<const std::int32_t> taken);
