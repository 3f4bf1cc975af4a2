// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QSize>

#include "FixtureModel/UniverseMerging.h"
#include "Model/PatchNetwork.h"
#include "Model/PatchProblem.h"
#include "Model/PatchTable.h"

class DeviceModel;
class MappedDeviceModel;

/// What a check looks at. All of it outlives the check's calls.
struct PatchCheckInput
{
    const MappedDeviceModel& document;
    const DeviceModel* library = nullptr;  ///< null while unknown: fixtures are not judged
    const PatchNetwork* network = nullptr; ///< the same for what depends on nodes
};

/// Everything that is wrong with the patch, in the order of OrderOf.
[[nodiscard]] std::vector<PatchProblem> CheckPatch(const PatchCheckInput& input);

/// The same again and again, for a document that is edited: what has not changed is not judged
/// again, and the work is done in portions. A move of elements costs a look at these elements; an
/// edit of addresses, the rules of universes.
class PatchCheck
{
public:
    /// Goes on with a pass, or begins one, for about so many nanoseconds. True when the pass has
    /// ended: then GetProblems() is of the document as this pass has read it.
    bool Work(const PatchCheckInput& input, std::int64_t nanoseconds);

    [[nodiscard]] const std::vector<PatchProblem>& GetProblems() const { return problems_; }
    /// Grows with every pass that found something else than the one before.
    [[nodiscard]] std::uint64_t GetGeneration() const { return generation_; }

private:
    enum class Stage : std::uint8_t
    {
        Elements,
        Universes,
        Network,
        List
    };
    /// An element as it was when it was judged.
    struct Judged
    {
        std::int64_t id = 0;
        std::uint64_t revision = 0;
        std::vector<PatchProblem> problems;
    };
    /// What the verdicts on all elements depend on.
    struct Surroundings
    {
        QSize canvas;
        const DeviceModel* library = nullptr;
        std::uint64_t libraryRevision = 0;

        bool operator==(const Surroundings&) const = default;
    };
    /// The same for the verdicts on universes.
    struct Patch
    {
        std::uint64_t revision = 0;
        UniverseMerging merging;
        bool autoUnicast = false;

        bool operator==(const Patch&) const = default;
    };

    bool JudgeElements(const PatchCheckInput& input, std::int64_t until);
    [[nodiscard]] bool AreRowsTheSame(const MappedDeviceModel& document) const;
    void JudgeUniverses(const PatchCheckInput& input);
    void JudgeNetwork(const PatchCheckInput& input);
    void List();

    Stage stage_ = Stage::Elements;
    std::size_t row_ = 0; ///< the next one of this pass
    bool listIsOld_ = true;
    Surroundings surroundings_;
    std::vector<Judged> elements_; ///< by row
    std::optional<Patch> patch_;
    PatchTable table_;
    std::vector<PatchProblem> ofUniverses_;
    std::optional<PatchNetwork> network_;
    std::vector<PatchProblem> ofNetwork_;
    std::vector<PatchProblem> problems_;
    std::uint64_t generation_ = 0;
};
