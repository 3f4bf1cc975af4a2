// SPDX-License-Identifier: MIT
#include "Model/PatchCheck.h"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "Model/PatchRules.h"
#include "Platform/Clock.h"

namespace {

/// So many elements are judged between two looks at the clock.
constexpr std::size_t ElementsAtOnce = 64;

bool IsOfFixture(PatchRule rule)
{
    return rule == PatchRule::FixtureChanged || rule == PatchRule::FixtureGone;
}

/// One problem for each fixture in the place of one for each of its elements.
void GatherByFixture(std::vector<PatchProblem>& problems)
{
    std::map<std::pair<PatchRule, std::wstring>, PatchProblem> byFixture;
    for (PatchProblem& problem : problems) {
        const auto [known, isNew] = byFixture.try_emplace({problem.rule, problem.name}, problem);
        if (!isNew)
            known->second.elements.push_back(problem.elements.front());
    }
    problems.clear();
    for (auto& [fixture, problem] : byFixture)
        problems.push_back(std::move(problem));
}

} // namespace

std::vector<PatchProblem> CheckPatch(const PatchCheckInput& input)
{
    PatchCheck check;
    while (!check.Work(input, std::numeric_limits<std::int32_t>::max())) {
    }
    return check.GetProblems();
}

bool PatchCheck::Work(const PatchCheckInput& input, std::int64_t nanoseconds)
{
    const std::int64_t until = Platform::MonotonicNanoseconds() + nanoseconds;
    do {
        switch (stage_) {
        case Stage::Elements:
            if (JudgeElements(input, until))
                stage_ = Stage::Universes;
            break;
        case Stage::Universes:
            JudgeUniverses(input);
            stage_ = Stage::Network;
            break;
        case Stage::Network:
            JudgeNetwork(input);
            stage_ = Stage::List;
            break;
        case Stage::List:
            List();
            stage_ = Stage::Elements;
            row_ = 0;
            return true;
        }
    } while (Platform::MonotonicNanoseconds() < until);
    return false;
}

/// True when all elements are judged.
bool PatchCheck::JudgeElements(const PatchCheckInput& input, std::int64_t until)
{
    const MappedDeviceModel& document = input.document;
    const QSize canvas(document.GetCanvasWidth(), document.GetCanvasHeight());
    const Surroundings present{canvas, input.library,
                               input.library ? input.library->GetRevision() : 0};
    if (std::exchange(surroundings_, present) != present) {
        elements_.clear();
        row_ = 0;
    }
    const auto count = static_cast<std::size_t>(document.rowCount());
    if (elements_.size() != count) {
        elements_.resize(count);
        listIsOld_ = true;
    }
    std::vector<PatchProblem> problems;
    for (std::size_t done = 0; row_ < count; ++row_, ++done) {
        if (done == ElementsAtOnce) {
            if (Platform::MonotonicNanoseconds() >= until)
                return false;
            done = 0;
        }
        const MappedLedItem& element = *document.GetElement(static_cast<int>(row_));
        Judged& judged = elements_[row_];
        if (judged.id == element.uniqueID && judged.revision == element.GetRevision())
            continue;
        judged.id = element.uniqueID;
        judged.revision = element.GetRevision();
        problems.clear();
        JudgeElement(element, canvas, input.library, problems);
        if (problems == judged.problems)
            continue;
        judged.problems = problems;
        listIsOld_ = true;
    }
    // Rows that moved since the pass began: an element may have been read twice or not at all.
    if (AreRowsTheSame(document))
        return true;
    row_ = 0;
    return false;
}

bool PatchCheck::AreRowsTheSame(const MappedDeviceModel& document) const
{
    for (std::size_t row = 0; row < elements_.size(); ++row) {
        if (elements_[row].id != document.GetElement(static_cast<int>(row))->uniqueID)
            return false;
    }
    return true;
}

void PatchCheck::JudgeUniverses(const PatchCheckInput& input)
{
    const MappedDeviceModel& document = input.document;
    const Patch present{document.GetPatchRevision(), document.GetMerging(),
                        document.IsAutoUnicast()};
    if (patch_ == present)
        return;
    patch_ = present;
    table_ = PatchTableOf(document);
    ofUniverses_.clear();
    ::JudgeUniverses(document, table_, ofUniverses_);
    ofNetwork_.clear();
    network_.reset(); // its verdicts are of the table before
    listIsOld_ = true;
}

void PatchCheck::JudgeNetwork(const PatchCheckInput& input)
{
    const bool isSame =
        input.network ? network_ == *input.network : !network_ && ofNetwork_.empty();
    if (isSame)
        return;
    ofNetwork_.clear();
    network_.reset();
    if (input.network) {
        network_ = *input.network;
        ::JudgeNetwork(input.document, table_, *input.network, ofNetwork_);
    }
    listIsOld_ = true;
}

void PatchCheck::List()
{
    if (!std::exchange(listIsOld_, false))
        return;
    std::vector<PatchProblem> ofFixtures;
    std::vector<const PatchProblem*> order;
    for (const Judged& element : elements_) {
        for (const PatchProblem& problem : element.problems) {
            if (IsOfFixture(problem.rule))
                ofFixtures.push_back(problem);
            else
                order.push_back(&problem);
        }
    }
    GatherByFixture(ofFixtures);
    for (const auto* part : {&ofFixtures, &ofUniverses_, &ofNetwork_}) {
        for (const PatchProblem& problem : *part)
            order.push_back(&problem);
    }
    // Not the problems themselves, of which there may be thousands.
    std::ranges::sort(order, [](const auto* a, const auto* b) { return OrderOf(*a, *b) < 0; });
    std::vector<PatchProblem> found;
    found.reserve(order.size());
    for (const PatchProblem* problem : order)
        found.push_back(*problem);
    if (found == problems_)
        return;
    problems_ = std::move(found);
    ++generation_;
}
