// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include <QString>

#include "Model/PatchProblem.h"

/// How many problems there are of each severity.
struct ProblemCounts
{
    int faults = 0;
    int cautions = 0;
    int hints = 0;

    [[nodiscard]] static ProblemCounts Of(std::span<const PatchProblem> problems);

    /// Hints are none: all works.
    [[nodiscard]] int Problems() const { return faults + cautions; }
    [[nodiscard]] Trouble Gravest() const
    {
        return faults > 0 ? Trouble::Fault : cautions > 0 ? Trouble::Caution : Trouble::None;
    }
    /// How many of each severity that there is, as one line; empty without any.
    [[nodiscard]] QString Details() const;

    bool operator==(const ProblemCounts&) const = default;
};
