// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include <QSizeF>

#include "Model/PatchNetwork.h"
#include "Model/PatchProblem.h"
#include "Model/PatchTable.h"

class DeviceModel;
class MappedDeviceModel;
class MappedLedItem;

// The rules of the patch check: three tables of plain functions, by what a verdict depends on.

/// What is wrong with an element by itself, on a canvas of this size. FixtureChanged and
/// FixtureGone come for each element. `library` may be null.
void JudgeElement(const MappedLedItem& element, QSizeF canvas, const DeviceModel* library,
                  std::vector<PatchProblem>& problems);

/// What is wrong with where elements go together. `table` is the document's.
void JudgeUniverses(const MappedDeviceModel& document, const PatchTable& table,
                    std::vector<PatchProblem>& problems);

/// What is wrong with it on this network.
void JudgeNetwork(const MappedDeviceModel& document, const PatchTable& table,
                  const PatchNetwork& network, std::vector<PatchProblem>& problems);

/// Runs the rules of such a table. Each finds its problems; what all of one rule have is set here.
template <class Rules, class Subject>
void FindByRules(const Rules& rules, const Subject& subject, std::vector<PatchProblem>& problems)
{
    for (const auto& rule : rules) {
        const std::size_t before = problems.size();
        rule.find(subject, problems);
        for (std::size_t i = before; i < problems.size(); ++i) {
            problems[i].rule = rule.rule;
            problems[i].trouble = rule.trouble;
        }
    }
}
