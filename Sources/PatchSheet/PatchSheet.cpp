// SPDX-License-Identifier: MIT
#include "PatchSheet/PatchSheet.h"

#include <algorithm>
#include <bitset>
#include <map>
#include <utility>

#include <QFileInfo>

#include "Model/ArtNetNodeModel.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "Model/PatchFaults.h"
#include "Model/PatchTable.h"
#include "Model/PatchText.h"
#include "Platform/IPv4.h"

namespace {

QPoint FirstPixelOf(const PixelMap& map)
{
    QPoint first(-1, -1);
    std::int32_t lowest = 0;
    const std::vector<std::int32_t>& cells = map.GetChannels();
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (cells[i] < 1 || (lowest > 0 && cells[i] >= lowest))
            continue;
        lowest = cells[i];
        const auto cell = static_cast<int>(i);
        first = {cell % map.GetWidth(), cell / map.GetWidth()};
    }
    return first;
}

QString NodeNameOf(const std::wstring& address, const std::wstring& nameOfDocument,
                   const ArtNetNodeModel::Table& nodes)
{
    if (address == AutoNode)
        return {};
    const auto known = nodes.constFind(QString::fromStdWString(address));
    return known != nodes.cend() && !known->name.empty() ? ArtNetNodeModel::NameText(*known)
                                                         : QString::fromStdWString(nameOfDocument);
}

PatchSheet::Element ElementOf(const MappedLedItem& item, int row, const UniverseMerging& merging,
                              const ArtNetNodeModel::Table& nodes)
{
    const DeviceLedItem& fixture = item.GetFixture();
    PatchSheet::Element element;
    element.number = ElementNumber(row);
    element.description = QString::fromStdWString(item.description);
    element.manufacturer = QString::fromStdWString(fixture.manufacturer);
    element.product = QString::fromStdWString(fixture.product);
    element.pixels = {fixture.pixelMap.GetWidth(), fixture.pixelMap.GetHeight()};
    element.channels = fixture.GetChannelCount();
    element.firstPixel = FirstPixelOf(fixture.pixelMap);
    if (const VideoMapping* place = item.GetVideoMapping())
        element.place = *place;
    if (const DMXMappingArtNet* address = item.GetArtNetMapping()) {
        element.address = *address;
        element.nodeName = NodeNameOf(address->GetIpconf(), address->GetIpName(), nodes);
        element.target = TargetOf(*address, merging);
        element.sent = ChannelsSent(address->GetChannel(), SentChannelCount(fixture));
    }
    return element;
}

using ChannelSet = std::bitset<513>; ///< by channel, from 1

void AddSpans(const std::vector<PatchSheet::Span>& spans, ChannelSet& channels)
{
    for (const PatchSheet::Span& span : spans) {
        for (int channel = span.channels.first; channel <= span.channels.last; ++channel)
            channels.set(static_cast<std::size_t>(channel));
    }
}

PatchSheet::Universe UniverseOf(const PatchUniverse& universe, const FaultyElements& faults,
                                const std::vector<PatchSheet::Element>& elements)
{
    PatchSheet::Universe result;
    result.target = universe.target;
    for (const PatchSpan& span : universe.spans) {
        const auto found = faults.find(span.element);
        const bool shared =
            found != faults.end() && found->second.testFlag(PatchFault::SharedChannels);
        result.spans.push_back({static_cast<std::size_t>(span.row), span.channels, shared});
    }
    std::ranges::stable_sort(result.spans, {},
                             [](const PatchSheet::Span& span) { return span.channels.first; });
    ChannelSet used;
    AddSpans(result.spans, used);
    result.used = static_cast<int>(used.count());
    if (!result.spans.empty() && result.target.node != AutoNode)
        result.nodeName = elements[result.spans.front().element].nodeName;
    return result;
}

/// The merger sends all universes of its output, those without elements too.
void AddMergerOutput(const UniverseMerging& merging, std::vector<PatchSheet::Universe>& universes)
{
    if (!merging.IsEnabled())
        return;
    for (int i = 0; i < merging.GetConsecutiveUniverses(); ++i) {
        const PatchTarget target{AutoNode,
                                 static_cast<std::uint16_t>(merging.GetToStartAddress() + i)};
        const auto known = std::ranges::find(universes, target, &PatchSheet::Universe::target);
        PatchSheet::Universe& universe =
            known != universes.end() ? *known : universes.emplace_back();
        universe.target = target;
        universe.merged = true;
    }
    // As in PatchTable: of one Port-Address the chosen nodes before Auto.
    std::ranges::stable_sort(universes, {}, [](const PatchSheet::Universe& universe) {
        return std::pair(universe.target.portAddress, universe.target.node == AutoNode);
    });
}

/// A node receives its own channels and those of all nodes, and Auto reaches every node: an element
/// put on a free channel shares it with none.
void FindFree(std::vector<PatchSheet::Universe>& universes)
{
    const auto portOf = [](const PatchSheet::Universe& each) {
        return each.target.portAddress;
    };
    for (PatchSheet::Universe& universe : universes) {
        if (universe.merged)
            continue;
        ChannelSet taken;
        bool isMerged = false;
        auto other = std::ranges::lower_bound(universes, portOf(universe), {}, portOf);
        for (; other != universes.end() && portOf(*other) == portOf(universe); ++other) {
            const bool meets = other->target.node == universe.target.node ||
                               other->target.node == AutoNode || universe.target.node == AutoNode;
            if (!meets)
                continue;
            AddSpans(other->spans, taken);
            isMerged = isMerged || other->merged;
        }
        for (int channel = 1; channel <= 512 && !isMerged; ++channel) {
            if (taken[static_cast<std::size_t>(channel)])
                continue;
            ++universe.freeChannels;
            if (!universe.free.empty() && universe.free.back().last == channel - 1)
                universe.free.back().last = channel;
            else
                universe.free.push_back({channel, channel});
        }
    }
}

std::vector<PatchSheet::Node> NodesOf(const PatchSheet& sheet, const ArtNetNodeModel& nodes,
                                      bool nodesAreLookedFor)
{
    // By the address as a number: 2.0.0.9 before 2.0.0.10.
    std::map<std::pair<std::uint32_t, QString>, PatchSheet::Node> found;
    const auto node = [&found](const QString& address) -> PatchSheet::Node& {
        const std::uint32_t number = Platform::ParseIPv4(address.toStdString()).value_or(0);
        PatchSheet::Node& result = found[{number, address}];
        result.address = address;
        return result;
    };
    for (const PatchSheet::Element& element : sheet.elements) {
        if (element.sent.AreNone() || element.target.node == AutoNode)
            continue;
        PatchSheet::Node& named = node(QString::fromStdWString(element.target.node));
        ++named.elements;
        named.name = element.nodeName;
        named.state =
            nodesAreLookedFor ? PatchSheet::Node::State::Silent : PatchSheet::Node::State::Named;
    }
    for (const ArtNetNodeRecord& record : nodes.GetAllNodes()) {
        const QString address = QString::fromStdString(record.ip);
        const bool answers = nodes.GetLiveNodes().contains(address);
        const std::uint32_t number = Platform::ParseIPv4(record.ip).value_or(0);
        if (!answers && !record.manual && !found.contains({number, address}))
            continue; // It went, and nothing is sent to it.
        PatchSheet::Node& known = node(address);
        known.name = ArtNetNodeModel::NameText(record);
        if (answers)
            known.state = PatchSheet::Node::State::Answers;
        else if (record.manual)
            known.state = PatchSheet::Node::State::ByHand;
        for (const ArtNetNodeRecord::Port& port : record.universes)
            known.ports.push_back(port.first);
    }
    std::vector<PatchSheet::Node> result;
    result.reserve(found.size());
    for (auto& [key, each] : found)
        result.push_back(std::move(each));
    return result;
}

} // namespace

PatchSheet PatchSheetOf(const MappedDeviceModel& document, const ArtNetNodeModel& nodes,
                        const PatchSheetHead& head)
{
    PatchSheet sheet;
    sheet.title = head.title;
    sheet.made = head.made;
    sheet.network = head.network;
    sheet.canvas = {document.GetCanvasWidth(), document.GetCanvasHeight()};
    sheet.merging = document.GetMerging();
    sheet.autoUnicast = document.IsAutoUnicast();
    sheet.elements.reserve(static_cast<std::size_t>(document.rowCount()));
    for (int row = 0; row < document.rowCount(); ++row) {
        if (const MappedLedItem* item = document.GetElement(row))
            sheet.elements.push_back(ElementOf(*item, row, sheet.merging, nodes.GetAllNodes()));
        else
            sheet.elements.emplace_back().number = ElementNumber(row);
    }
    for (const PatchUniverse& universe : PatchTableOf(document))
        sheet.universes.push_back(UniverseOf(universe, document.GetPatchFaults(), sheet.elements));
    AddMergerOutput(sheet.merging, sheet.universes);
    FindFree(sheet.universes);
    sheet.nodes = NodesOf(sheet, nodes, head.nodesAreLookedFor);
    return sheet;
}

QString SheetTitleOf(const MappedDeviceModel& document, const QString& path)
{
    const QString name = QString::fromStdWString(document.GetName()).simplified();
    const bool hasName = !name.isEmpty() && name != QLatin1String("Untitled");
    return hasName ? name : QFileInfo(path).completeBaseName();
}
