// SPDX-License-Identifier: MIT
#include "Model/PatchRules.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <set>
#include <span>
#include <utility>

#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/PatchOverlaps.h"
#include "FixtureModel/PatchTarget.h"
#include "FixtureModel/UniverseMerging.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"

namespace {

using Problems = std::vector<PatchProblem>;

struct UniverseSubject
{
    const MappedDeviceModel& document;
    const PatchTable& table;
    const UniverseMerging& merging;
};

struct UniverseRule
{
    PatchRule rule;
    Trouble trouble;
    void (*find)(const UniverseSubject& subject, Problems& problems);
};

PatchProblem ProblemOf(std::int32_t universe)
{
    PatchProblem problem;
    problem.universe = universe;
    return problem;
}

/// Calls `work` with each element that has an address, in the order of the rows.
template <class Work>
void ForEachAddress(const MappedDeviceModel& document, const Work& work)
{
    for (int row = 0; row < document.rowCount(); ++row) {
        const MappedLedItem* element = document.GetElement(row);
        if (const DMXMappingArtNet* address = element ? element->GetArtNetMapping() : nullptr)
            work(*element, *address);
    }
}

/// The same for those that have a fault of this kind.
template <class Work>
void ForEachFaulty(const MappedDeviceModel& document, PatchFault fault, const Work& work)
{
    const FaultyElements& faults = document.GetPatchFaults();
    if (faults.empty())
        return;
    ForEachAddress(document, [&](const MappedLedItem& element, const DMXMappingArtNet& address) {
        const auto found = faults.find(element.uniqueID);
        if (found != faults.end() && found->second.testFlag(fault))
            work(element, address);
    });
}

void FindSharedChannels(const UniverseSubject& subject, Problems& problems)
{
    std::vector<PatchedElement> sharing;
    ElementIds ids;
    ForEachFaulty(subject.document, PatchFault::SharedChannels,
                  [&](const MappedLedItem& element, const DMXMappingArtNet& address) {
                      sharing.push_back(PatchedElementOf(element, address, subject.merging));
                      ids.push_back(element.uniqueID);
                  });
    for (const OverlapGroup& group : OverlapGroups(sharing)) {
        PatchProblem problem = ProblemOf(group.portAddress);
        problem.first = group.first;
        problem.last = group.last;
        for (const std::size_t index : group.elements)
            problem.elements.push_back(ids[index]);
        problems.push_back(std::move(problem));
    }
}

void FindMixedUniverses(const UniverseSubject& subject, Problems& problems)
{
    std::map<std::uint16_t, PatchProblem> byUniverse;
    ForEachFaulty(subject.document, PatchFault::MixedUniverse,
                  [&](const MappedLedItem& element, const DMXMappingArtNet& address) {
                      const PatchedElement patched =
                          PatchedElementOf(element, address, subject.merging);
                      PatchProblem& problem = byUniverse[patched.portAddress];
                      problem.universe = patched.portAddress;
                      problem.elements.push_back(element.uniqueID);
                      if (patched.node != AutoNode && problem.node.empty())
                          problem.node = patched.node;
                  });
    for (auto& [universe, problem] : byUniverse)
        problems.push_back(std::move(problem));
}

/// Elements that would otherwise reach a universe of the merger's output.
bool WritesOnMerger(const DMXMappingArtNet& address, const UniverseMerging& merging)
{
    const std::int32_t place = address.GetPortAddress() - merging.GetToStartAddress();
    return merging.IsEnabled() && !IsMerged(address, merging) && place >= 0 &&
           place < merging.GetConsecutiveUniverses();
}

void FindMergerTargets(const UniverseSubject& subject, Problems& problems)
{
    if (!subject.merging.IsEnabled())
        return;
    std::map<std::uint16_t, PatchProblem> byUniverse;
    ForEachAddress(subject.document,
                   [&](const MappedLedItem& element, const DMXMappingArtNet& address) {
                       if (!WritesOnMerger(address, subject.merging))
                           return;
                       PatchProblem& problem = byUniverse[address.GetPortAddress()];
                       problem.universe = address.GetPortAddress();
                       problem.elements.push_back(element.uniqueID);
                   });
    for (auto& [universe, problem] : byUniverse)
        problems.push_back(std::move(problem));
}

/// The merged elements, by universe: those with or those without a node of their own.
void FindMerged(const UniverseSubject& subject, bool withNode, Problems& problems)
{
    if (!subject.merging.IsEnabled())
        return;
    std::map<std::uint16_t, PatchProblem> byUniverse;
    ForEachAddress(subject.document,
                   [&](const MappedLedItem& element, const DMXMappingArtNet& address) {
                       if (!IsMerged(address, subject.merging) || address.IsAuto() == withNode)
                           return;
                       PatchProblem& problem = byUniverse[address.GetPortAddress()];
                       problem.universe = address.GetPortAddress();
                       problem.first = subject.merging.TranslateToOutput(problem.universe);
                       problem.elements.push_back(element.uniqueID);
                       if (withNode && problem.node.empty())
                           problem.node = address.GetIpconf();
                   });
    for (auto& [universe, problem] : byUniverse)
        problems.push_back(std::move(problem));
}

void FindMergedWithNode(const UniverseSubject& subject, Problems& problems)
{
    FindMerged(subject, true, problems);
}

void FindMergedElements(const UniverseSubject& subject, Problems& problems)
{
    FindMerged(subject, false, problems);
}

void AddSeveralNodes(std::span<const PatchUniverse> chosen, Problems& problems)
{
    if (chosen.size() < 2)
        return;
    PatchProblem problem = ProblemOf(chosen.front().target.portAddress);
    for (const PatchUniverse& universe : chosen) {
        problem.list += (problem.list.empty() ? L"" : L", ") + universe.target.node;
        for (const PatchSpan& span : universe.spans)
            problem.elements.push_back(span.element);
    }
    problems.push_back(std::move(problem));
}

/// The table has the chosen nodes of a Port-Address one after the other.
void FindSeveralNodes(const UniverseSubject& subject, Problems& problems)
{
    for (auto begin = subject.table.begin(); begin != subject.table.end();) {
        const auto end = std::find_if(begin, subject.table.end(), [&](const PatchUniverse& other) {
            return other.target.portAddress != begin->target.portAddress;
        });
        // "Auto" is the last of a Port-Address.
        const auto chosen = std::span(begin, end);
        AddSeveralNodes(chosen.back().target.node == AutoNode ? chosen.first(chosen.size() - 1)
                                                              : chosen,
                        problems);
        begin = end;
    }
}

/// Without merging there are ten frames a second.
void FindManyBroadcasts(const UniverseSubject& subject, Problems& problems)
{
    constexpr std::size_t most = 10;
    if (!subject.merging.IsEnabled() || subject.document.IsAutoUnicast())
        return;
    std::set<std::int32_t> universes;
    for (std::int32_t i = 0; i < subject.merging.GetConsecutiveUniverses(); ++i)
        universes.insert(subject.merging.GetToStartAddress() + i);
    for (const PatchUniverse& universe : subject.table) {
        if (universe.target.node == AutoNode)
            universes.insert(universe.target.portAddress);
    }
    if (universes.size() <= most)
        return;
    PatchProblem problem;
    problem.first = static_cast<std::int32_t>(universes.size());
    problems.push_back(std::move(problem));
}

constexpr std::array UniverseRules = {
    UniverseRule{PatchRule::SharedChannels, Trouble::Caution, &FindSharedChannels},
    UniverseRule{PatchRule::MixedUniverse, Trouble::Fault, &FindMixedUniverses},
    UniverseRule{PatchRule::MergerTarget, Trouble::Caution, &FindMergerTargets},
    UniverseRule{PatchRule::MergerNode, Trouble::Caution, &FindMergedWithNode},
    UniverseRule{PatchRule::MergerSource, Trouble::None, &FindMergedElements},
    UniverseRule{PatchRule::SeveralNodes, Trouble::None, &FindSeveralNodes},
    UniverseRule{PatchRule::ManyBroadcasts, Trouble::Caution, &FindManyBroadcasts},
};

} // namespace

void JudgeUniverses(const MappedDeviceModel& document, const PatchTable& table,
                    std::vector<PatchProblem>& problems)
{
    const UniverseSubject subject{document, table, document.GetMerging()};
    FindByRules(UniverseRules, subject, problems);
}
