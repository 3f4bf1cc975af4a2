// SPDX-License-Identifier: MIT
#include "Model/PatchRules.h"

#include <array>
#include <map>
#include <set>
#include <span>
#include <unordered_map>
#include <utility>

#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/UniverseMerging.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "Model/PatchText.h"
#include "Platform/IPv4.h"
#include "Platform/Text.h"

namespace {

using Problems = std::vector<PatchProblem>;
using NodesOfUniverse = std::unordered_map<std::uint16_t, std::vector<const PatchNode*>>;

struct NetworkSubject
{
    const MappedDeviceModel& document;
    const PatchTable& table;
    const PatchNetwork& network;
    NodesOfUniverse putOut; ///< who puts out which universe
    std::map<std::wstring_view, const PatchNode*> nodes;
};

struct NetworkRule
{
    PatchRule rule;
    Trouble trouble;
    void (*find)(const NetworkSubject& subject, Problems& problems);
};

NetworkSubject NetworkSubjectOf(const MappedDeviceModel& document, const PatchTable& table,
                                const PatchNetwork& network)
{
    NetworkSubject subject{document, table, network, {}, {}};
    for (const PatchNode& node : network.nodes) {
        subject.nodes.emplace(node.address, &node);
        for (const std::uint16_t port : node.ports) {
            auto& nodes = subject.putOut[port];
            if (nodes.empty() || nodes.back() != &node)
                nodes.push_back(&node);
        }
    }
    return subject;
}

PatchProblem ProblemOf(const PatchUniverse& universe)
{
    PatchProblem problem;
    problem.universe = universe.target.portAddress;
    if (universe.target.node != AutoNode)
        problem.node = universe.target.node;
    for (const PatchSpan& span : universe.spans)
        problem.elements.push_back(span.element);
    return problem;
}

std::wstring ListOfNodes(std::span<const PatchNode* const> nodes)
{
    std::wstring list;
    for (const PatchNode* node : nodes)
        list += (list.empty() ? L"" : L", ") + node->address;
    return list;
}

// ---- Chosen nodes ------------------------------------------------------------------------------

bool IsInNetwork(const NetworkSubject& subject, const std::wstring& node)
{
    return Platform::IsInNetwork(subject.network.broadcast, Platform::WideToUtf8(node));
}

/// One problem for each chosen node that is meant, with all elements that are sent to it.
template <class IsMeant>
void GatherByNode(const NetworkSubject& subject, const IsMeant& isMeant, Problems& problems)
{
    std::map<std::wstring, PatchProblem> byNode;
    for (const PatchUniverse& universe : subject.table) {
        const std::wstring& node = universe.target.node;
        if (node == AutoNode || !isMeant(universe))
            continue;
        PatchProblem& problem = byNode[node];
        problem.node = node;
        for (const PatchSpan& span : universe.spans)
            problem.elements.push_back(span.element);
        const MappedLedItem* element = subject.document.GetElement(universe.spans.front().row);
        if (const DMXMappingArtNet* address = element ? element->GetArtNetMapping() : nullptr)
            problem.name = address->GetIpName();
    }
    for (auto& [node, problem] : byNode)
        problems.push_back(std::move(problem));
}

void FindOutsideNetwork(const NetworkSubject& subject, Problems& problems)
{
    const auto isOutside = [&](const PatchUniverse& universe) {
        return !IsInNetwork(subject, universe.target.node);
    };
    GatherByNode(subject, isOutside, problems);
}

/// Which nodes answer is what the document's lists go by, too.
void FindSilentNodes(const NetworkSubject& subject, Problems& problems)
{
    const FaultyElements& faults = subject.document.GetPatchFaults();
    const auto isSilent = [&](const PatchUniverse& universe) {
        const auto found = faults.find(universe.spans.front().element);
        return found != faults.end() && found->second.testFlag(PatchFault::SilentNode) &&
               IsInNetwork(subject, universe.target.node);
    };
    GatherByNode(subject, isSilent, problems);
}

void FindMissingPorts(const NetworkSubject& subject, Problems& problems)
{
    for (const PatchUniverse& universe : subject.table) {
        const auto node = subject.nodes.find(universe.target.node);
        if (node == subject.nodes.end() ||
            std::ranges::find(node->second->ports, universe.target.portAddress) !=
                node->second->ports.end())
            continue;
        PatchProblem problem = ProblemOf(universe);
        problem.name = node->second->name;
        problems.push_back(std::move(problem));
    }
}

// ---- All nodes ---------------------------------------------------------------------------------

/// The universes that go to whoever wants them, and that nobody wants.
void FindUnwanted(const NetworkSubject& subject, Problems& problems)
{
    for (const PatchUniverse& universe : subject.table) {
        if (universe.target.node == AutoNode &&
            !subject.putOut.contains(universe.target.portAddress))
            problems.push_back(ProblemOf(universe));
    }
}

void FindUnsubscribed(const NetworkSubject& subject, Problems& problems)
{
    if (subject.document.IsAutoUnicast() && subject.network.knowsNodes)
        FindUnwanted(subject, problems);
}

void FindNotPutOut(const NetworkSubject& subject, Problems& problems)
{
    if (!subject.document.IsAutoUnicast() && !subject.network.nodes.empty())
        FindUnwanted(subject, problems);
}

void FindSameUniverse(const NetworkSubject& subject, Problems& problems)
{
    for (const PatchUniverse& universe : subject.table) {
        const auto nodes = subject.putOut.find(universe.target.portAddress);
        if (universe.target.node != AutoNode || nodes == subject.putOut.end() ||
            nodes->second.size() < 2)
            continue;
        PatchProblem problem = ProblemOf(universe);
        problem.list = ListOfNodes(nodes->second);
        problems.push_back(std::move(problem));
    }
}

/// The merger sends its universes whether elements are in them or not.
std::set<std::uint16_t> SentToAll(const NetworkSubject& subject)
{
    std::set<std::uint16_t> universes;
    for (const PatchUniverse& universe : subject.table) {
        if (universe.target.node == AutoNode)
            universes.insert(universe.target.portAddress);
    }
    const UniverseMerging& merging = subject.document.GetMerging();
    for (std::int32_t i = 0; merging.IsEnabled() && i < merging.GetConsecutiveUniverses(); ++i)
        universes.insert(static_cast<std::uint16_t>(merging.GetToStartAddress() + i));
    return universes;
}

/// In a document without a patch no port is worth a word.
void FindUnusedPorts(const NetworkSubject& subject, Problems& problems)
{
    if (subject.table.empty())
        return;
    const std::set<std::uint16_t> sentToAll = SentToAll(subject);
    std::set<std::pair<std::wstring_view, std::uint16_t>> chosen;
    for (const PatchUniverse& universe : subject.table)
        chosen.emplace(universe.target.node, universe.target.portAddress);
    for (const PatchNode& node : subject.network.nodes) {
        PatchProblem problem;
        for (const std::uint16_t port : std::set(node.ports.begin(), node.ports.end())) {
            if (sentToAll.contains(port) || chosen.contains({node.address, port}))
                continue;
            problem.list += problem.list.empty() ? L"" : L", ";
            problem.list += UniverseText(port).toStdWString();
        }
        if (problem.list.empty())
            continue;
        problem.node = node.address;
        problem.name = node.name;
        problems.push_back(std::move(problem));
    }
}

void FindOtherSenders(const NetworkSubject& subject, Problems& problems)
{
    if (subject.network.senders.empty())
        return;
    std::map<std::uint16_t, ElementIds> ours;
    for (const std::uint16_t universe : SentToAll(subject))
        ours[universe];
    for (const PatchUniverse& universe : subject.table) {
        for (const PatchSpan& span : universe.spans)
            ours[universe.target.portAddress].push_back(span.element);
    }
    for (const PatchSender& sender : subject.network.senders) {
        const auto found = ours.find(sender.portAddress);
        if (found == ours.end())
            continue;
        PatchProblem problem;
        problem.universe = sender.portAddress;
        problem.node = Platform::Utf8ToWide(Platform::FormatIPv4(sender.address));
        problem.elements = found->second;
        problems.push_back(std::move(problem));
    }
}

constexpr std::array NetworkRules = {
    NetworkRule{PatchRule::OutsideNetwork, Trouble::Fault, &FindOutsideNetwork},
    NetworkRule{PatchRule::SilentNode, Trouble::Fault, &FindSilentNodes},
    NetworkRule{PatchRule::NoPort, Trouble::Caution, &FindMissingPorts},
    NetworkRule{PatchRule::NoSubscriber, Trouble::Fault, &FindUnsubscribed},
    NetworkRule{PatchRule::NotPutOut, Trouble::Caution, &FindNotPutOut},
    NetworkRule{PatchRule::OtherSender, Trouble::Caution, &FindOtherSenders},
    NetworkRule{PatchRule::SameUniverse, Trouble::None, &FindSameUniverse},
    NetworkRule{PatchRule::UnusedPorts, Trouble::None, &FindUnusedPorts},
};

} // namespace

void JudgeNetwork(const MappedDeviceModel& document, const PatchTable& table,
                  const PatchNetwork& network, std::vector<PatchProblem>& problems)
{
    const NetworkSubject subject = NetworkSubjectOf(document, table, network);
    FindByRules(NetworkRules, subject, problems);
}
