// SPDX-License-Identifier: MIT
#include "Model/PatchFaults.h"

#include <vector>

#include <QCoreApplication>
#include <QStringList>

#include "FixtureModel/PatchOverlaps.h"
#include "Model/MappedLedItem.h"
#include "Model/PatchText.h"

namespace {

struct FaultWords
{
    Q_DECLARE_TR_FUNCTIONS(PatchFaults)
};

} // namespace

FaultyElements FindPatchFaults(std::span<MappedLedItem* const> elements,
                               const std::optional<std::set<std::wstring>>& answering)
{
    FaultyElements faulty;
    std::vector<PatchedElement> patch;
    std::vector<std::int64_t> ids;
    for (const MappedLedItem* element : elements) {
        const DMXMappingArtNet* address = element->GetArtNetMapping();
        if (!address)
            continue;
        const std::int32_t count = element->GetFixture().GetChannelCount();
        const SentChannels sent = ChannelsSent(address->GetChannel(), count);
        if (sent.beyond || (sent.AreNone() && count > 0))
            faulty[element->uniqueID] |= PatchFault::CutOff;
        if (answering && !address->IsAuto() && !answering->contains(address->GetIpconf()))
            faulty[element->uniqueID] |= PatchFault::SilentNode;
        patch.push_back({address->GetPortAddress(), sent, address->GetIpconf(), true});
        ids.push_back(element->uniqueID);
    }
    for (const std::size_t index : OverlapsWithChosen(patch))
        faulty[ids[index]] |= PatchFault::SharedChannels;
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
        lines << FaultWords::tr("Universe %1 is sent to all nodes and to a chosen one, which gets "
                                "two pictures in turn. Choose the same node for all fixtures of "
                                "the universe, or Auto.")
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
