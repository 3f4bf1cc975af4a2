// SPDX-License-Identifier: MIT
#include "Model/PatchFaults.h"

#include <bitset>
#include <memory>
#include <vector>

#include <QCoreApplication>
#include <QStringList>

#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/PatchTarget.h"
#include "FixtureModel/UniverseMerging.h"
#include "Model/MappedLedItem.h"
#include "Model/PatchText.h"

namespace {

struct FaultWords
{
    Q_DECLARE_TR_FUNCTIONS(PatchFaults)
};

} // namespace

PatchedElement PatchedElementOf(const MappedLedItem& element, const DMXMappingArtNet& address,
                                const UniverseMerging& merging)
{
    return {TargetPortAddress(address, merging),
            ChannelsSent(address.GetChannel(), element.GetFixture().GetChannelCount()),
            TargetNode(address, merging), true};
}

FaultyElements FindPatchFaults(std::span<MappedLedItem* const> elements,
                               const UniverseMerging& merging,
                               const std::optional<std::set<std::wstring>>& answering)
{
    // One bit for each 16-bit Port-Address.
    using PortAddresses = std::bitset<0x10000>;
    const auto broadcast = std::make_unique<PortAddresses>();
    const auto chosen = std::make_unique<PortAddresses>();
    FaultyElements faulty;
    std::vector<PatchedElement> patch;
    std::vector<const MappedLedItem*> items;
    for (const MappedLedItem* element : elements) {
        const DMXMappingArtNet* address = element->GetArtNetMapping();
        if (!address)
            continue;
        const PatchedElement patched = PatchedElementOf(*element, *address, merging);
        const bool isAuto = patched.node == AutoNode;
        if (patched.channels.beyond ||
            (patched.channels.AreNone() && element->GetFixture().GetChannelCount() > 0))
            faulty[element->uniqueID] |= PatchFault::CutOff;
        if (answering && !isAuto && !answering->contains(address->GetIpconf()))
            faulty[element->uniqueID] |= PatchFault::SilentNode;
        if (!patched.channels.AreNone()) // else nothing of it is sent
            (isAuto ? *broadcast : *chosen).set(patched.portAddress);
        patch.push_back(patched);
        items.push_back(element);
    }
    *broadcast &= *chosen;
    for (std::size_t i = 0; broadcast->any() && i < patch.size(); ++i) {
        if (broadcast->test(patch[i].portAddress) && !patch[i].channels.AreNone())
            faulty[items[i]->uniqueID] |= PatchFault::MixedUniverse;
    }
    for (const std::size_t index : OverlapsWithChosen(patch))
        faulty[items[index]->uniqueID] |= PatchFault::SharedChannels;
    return faulty;
}

Trouble TroubleOf(PatchFaults faults)
{
    const PatchFaults works = PatchFault::SharedChannels;
    return !faults ? Trouble::None : faults & ~works ? Trouble::Fault : Trouble::Caution;
}

QString PatchFaultsText(const MappedLedItem& element, PatchFaults faults)
{
    const DMXMappingArtNet* address = element.GetArtNetMapping();
    if (!address)
        return {};
    const QString universe = UniverseText(*address);
    QStringList lines;
    if (faults.testFlag(PatchFault::SilentNode))
        lines << FaultWords::tr("The node %1 does not answer. Check its power, its cable and its "
                                "address, or choose another node.")
                     .arg(QString::fromStdWString(address->GetIpconf()));
    if (faults.testFlag(PatchFault::MixedUniverse))
        lines << FaultWords::tr("Universe %1 has fixtures with node Auto and others with a chosen "
                                "node: a node that gets both shows two pictures in turn. Choose "
                                "the same node for all fixtures of the universe, or Auto.")
                     .arg(universe);
    if (faults.testFlag(PatchFault::CutOff))
        lines << FaultWords::tr("A universe ends at channel 512, and what lies outside is not "
                                "sent. Choose another first channel, or another universe.");
    if (faults.testFlag(PatchFault::SharedChannels))
        lines << FaultWords::tr("Shares channels of universe %1 with another fixture, so that "
                                "only one of the two is right. Give one of them a free address.")
                     .arg(universe);
    return lines.join(QLatin1Char('\n'));
}
