// SPDX-License-Identifier: MIT
#include "UI/Output/UniverseRows.h"

#include <algorithm>
#include <bitset>
#include <utility>

#include <QCoreApplication>
#include <QStringList>

#include "FixtureModel/DMXMapping.h"
#include "LEDEngine/ArtNetOutput.h"
#include "Model/MappedDeviceModel.h"
#include "Model/PatchText.h"
#include "Platform/IPv4.h"

namespace {

using Way = UniverseRoute::Way;

constexpr int NamesInTip = 4;

struct RowWords
{
    Q_DECLARE_TR_FUNCTIONS(UniverseRows)
};

/// "Stage left (2.0.0.10)", or the address alone.
QString NodeText(const QString& address, const NodeNames& names)
{
    const QString name = names(address).simplified();
    return name.isEmpty() || name == address ? address : RowWords::tr("%1 (%2)").arg(name, address);
}

Trouble TroubleOfWay(Way way)
{
    switch (way) {
    case Way::OutsideNetwork:
        return Trouble::Fault;
    case Way::NoSubscriber:
    case Way::NoPort:
        return Trouble::Caution;
    case Way::NoNetwork: // the status bar says so for all
    default:
        return Trouble::None;
    }
}

/// The elements of the universe that are marked in the list of elements, as a line of the tip.
void NoteElements(const PatchUniverse& universe, const MappedDeviceModel& document,
                  UniverseRow& row)
{
    std::bitset<512> used;
    QStringList names;
    int more = 0;
    for (const PatchSpan& span : universe.spans) {
        for (int channel = span.channels.first; channel <= span.channels.last; ++channel)
            used.set(static_cast<std::size_t>(channel - 1));
        const QModelIndex index = document.index(span.row, 0);
        const auto trouble = static_cast<Trouble>(document.data(index, TroubleRole).toInt());
        if (trouble == Trouble::None)
            continue;
        row.trouble = std::max(row.trouble, trouble);
        const MappedLedItem* element = document.GetElement(span.row);
        if (element && names.size() < NamesInTip)
            names << QString::fromStdWString(element->description).simplified();
        else
            ++more;
    }
    row.used = static_cast<int>(used.count());
    if (names.isEmpty())
        return;
    const QString list = names.join(QStringLiteral(", "));
    row.tip = more == 0 ? RowWords::tr("Marked in Mapped Fixtures: %1").arg(list)
                        : RowWords::tr("Marked in Mapped Fixtures: %1 and %2 more")
                              .arg(list, QString::number(more));
}

UniverseRow SentRow(const PatchTarget& target, const MappedDeviceModel& document,
                    const ArtNetOutput& output, const std::vector<ArtNetReceived>& received,
                    const NodeNames& names)
{
    UniverseRow row;
    row.target = target;
    row.hasInput = HasInput(target, document.GetMerging(), received);
    const UniverseRoute route =
        RouteOf(output, document.IsAutoUnicast(), target.portAddress, target.node);
    row.isSent = route.IsSent();
    row.way = WayText(route, target, names);
    row.trouble = TroubleOfWay(route.way);
    return row;
}

UniverseRow ReceivedRow(const ArtNetReceived& received, const NodeNames& names)
{
    UniverseRow row;
    row.kind = UniverseRow::Kind::Received;
    row.target = {AutoNode, received.portAddress};
    row.hasInput = true;
    const QString sender = QString::fromStdString(Platform::FormatIPv4(received.sender));
    row.way = RowWords::tr("received from %1").arg(NodeText(sender, names));
    return row;
}

} // namespace

QString UniverseLabel(std::uint16_t portAddress)
{
    return RowWords::tr("%1 (%2)").arg(UniverseText(portAddress), QString::number(portAddress));
}

QString AsTip(const QString& text)
{
    return text.isEmpty()
               ? QString()
               : QStringLiteral("<qt>%1</qt>")
                     .arg(text.toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>")));
}

bool HasInput(const PatchTarget& target, const UniverseMerging& merging,
              const std::vector<ArtNetReceived>& received)
{
    return merging.IsEnabled() && target.node == AutoNode &&
           std::ranges::any_of(received, [&](const ArtNetReceived& each) {
               return merging.IsInFromRange(each.portAddress) &&
                      merging.TranslateToOutput(each.portAddress) == target.portAddress;
           });
}

QString WayText(const UniverseRoute& route, const PatchTarget& target, const NodeNames& names)
{
    switch (route.way) {
    case Way::Broadcast:
        return RowWords::tr("broadcast");
    case Way::Node:
        return NodeText(QString::fromStdWString(target.node), names);
    case Way::Subscribers: {
        QStringList nodes;
        for (const std::string& address : route.nodes)
            nodes << NodeText(QString::fromStdString(address), names);
        return nodes.join(QStringLiteral(", "));
    }
    case Way::NoSubscriber:
        return RowWords::tr("nobody: no node announced this universe");
    case Way::OutsideNetwork:
        return RowWords::tr("nobody: %1 is not in the network")
            .arg(NodeText(QString::fromStdWString(target.node), names));
    case Way::HostSends:
        return RowWords::tr("nobody from here: the media program sends by itself");
    case Way::NoPort:
        return RowWords::tr("nobody yet: the Art-Net port is not ours");
    case Way::NoNetwork:
        break;
    }
    return RowWords::tr("nobody: no network is chosen, or it is not connected");
}

UniverseRows UniverseRowsOf(const MappedDeviceModel& document, const PatchTable& patch,
                            const ArtNetOutput& output, const std::vector<ArtNetReceived>& received,
                            const NodeNames& names)
{
    UniverseRows rows;
    for (const PatchUniverse& universe : patch) {
        UniverseRow row = SentRow(universe.target, document, output, received, names);
        NoteElements(universe, document, row);
        rows.push_back(std::move(row));
    }
    const UniverseMerging& merging = document.GetMerging();
    const int merged = merging.IsEnabled() ? merging.GetConsecutiveUniverses() : 0;
    for (int i = 0; i < merged; ++i) {
        const PatchTarget target{AutoNode,
                                 static_cast<std::uint16_t>(merging.GetToStartAddress() + i)};
        if (std::ranges::find(rows, target, &UniverseRow::target) == rows.end())
            rows.push_back(SentRow(target, document, output, received, names));
    }
    std::ranges::sort(rows, {}, [](const UniverseRow& row) {
        return std::pair(row.target.portAddress, row.target.node);
    });
    for (const ArtNetReceived& each : received)
        rows.push_back(ReceivedRow(each, names));
    return rows;
}
