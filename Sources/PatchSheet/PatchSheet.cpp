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
    return known != nodes.cend() && !known->name.empty() ? QString::fromStdString(known->name)
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

PatchSheet::Universe UniverseOf(const PatchUniverse& universe,
                                const std::vector<PatchSheet::Element>& elements)
{
    PatchSheet::Universe result;
    result.target = universe.target;
    std::bitset<513> used;
    std::bitset<513> shared;
    for (const PatchSpan& span : universe.spans) {
        result.spans.push_back({static_cast<std::size_t>(span.row), span.channels});
        for (auto channel = static_cast<std::size_t>(span.channels.first);
             channel <= static_cast<std::size_t>(span.channels.last); ++channel)
        {
            shared[channel] = used[channel];
            used.set(channel);
        }
    }
    std::ranges::stable_sort(result.spans, {},
                             [](const PatchSheet::Span& span) { return span.channels.first; });
    for (PatchSheet::Span& span : result.spans) {
        for (int channel = span.channels.first; channel <= span.channels.last; ++channel)
            span.shared = span.shared || shared[static_cast<std::size_t>(channel)];
    }
    for (int channel = 1; channel <= 512; ++channel) {
        if (used[static_cast<std::size_t>(channel)])
            continue;
        if (!result.free.empty() && result.free.back().last == channel - 1)
            result.free.back().last = channel;
        else
            result.free.push_back({channel, channel});
    }
    result.used = static_cast<int>(used.count());
    if (!result.spans.empty() && result.target.node != AutoNode)
        result.nodeName = elements[result.spans.front().element].nodeName;
    return result;
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
        known.name = QString::fromStdString(record.name);
        if (answers)
            known.state = PatchSheet::Node::State::Answers;
        else if (record.manual)
            known.state = PatchSheet::Node::State::ByHand;
        for (const ArtNetNodeRecord::Port& port : record.universes)
            known.ports.push_back(port.first);
    }
    std::vector<PatchSheet::Node> result;
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
        sheet.universes.push_back(UniverseOf(universe, sheet.elements));
    sheet.nodes = NodesOf(sheet, nodes, head.nodesAreLookedFor);
    return sheet;
}

QString SheetTitleOf(const MappedDeviceModel& document, const QString& path)
{
    const QString name = QString::fromStdWString(document.GetName()).simplified();
    const bool hasName = !name.isEmpty() && name != QLatin1String("Untitled");
    return hasName ? name : QFileInfo(path).completeBaseName();
}
