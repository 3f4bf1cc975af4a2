// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QObject>

#include "Model/PatchCheck.h"

class ArtNetNodeModel;
class DeviceManager;
class LEDEngine;

/// Checks the patch again and again while the program runs: after a change of the document, the
/// library, the nodes or who else sends, three times a second at most. The work is done in the
/// pauses after ticks, two milliseconds at a time. Main thread only.
class LivePatchCheck final : public QObject
{
    Q_OBJECT

public:
    /// All of them outlive the check.
    struct Parts
    {
        const DeviceManager& manager;
        const ArtNetNodeModel& nodes;
        LEDEngine& engine;
    };
    explicit LivePatchCheck(const Parts& parts);

    [[nodiscard]] const std::vector<PatchProblem>& GetProblems() const
    {
        return check_.GetProblems();
    }

public slots:
    /// Does one portion of what is due.
    void WorkBetweenTicks();
    /// Does all of it now.
    void Finish();

signals:
    void problemsChanged();

private:
    /// What a pass depends on, but for the network.
    struct Stamp
    {
        std::uint64_t document = 0;
        std::uint64_t patch = 0;
        std::uint64_t library = 0;
        bool autoUnicast = false;

        bool operator==(const Stamp&) const = default;
    };

    [[nodiscard]] Stamp StampNow() const;
    [[nodiscard]] std::optional<PatchNetwork> NetworkNow() const;
    [[nodiscard]] bool BeginPass();
    void Work(std::int64_t nanoseconds);

    Parts parts_;
    PatchCheck check_;
    bool passRuns_ = false;
    std::int64_t begun_ = 0; ///< the last pass, in nanoseconds of the monotonic clock
    std::optional<Stamp> stamp_;
    std::optional<PatchNetwork> network_;
    std::uint64_t generation_ = 0; ///< of the problems that were told
};
