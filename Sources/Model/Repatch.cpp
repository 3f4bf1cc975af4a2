// SPDX-License-Identifier: MIT
#include "Model/Repatch.h"

#include <algorithm>
#include <bitset>
#include <tuple>
#include <unordered_set>

#include <QCoreApplication>
#include <QItemSelection>
#include <QStringList>
#include <QTransform>

#include "FixtureModel/PatchOverlaps.h"
#include "FixtureModel/PatchTarget.h"
#include "Model/DeviceManager.h"
#include "Model/ElementGeometry.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedObjectListProxy.h"
#include "Model/PatchText.h"

namespace {

struct RepatchWords
{
    Q_DECLARE_TR_FUNCTIONS(Repatch)
};

QPolygonF OutlineOf(const VideoMapping& video, QSizeF canvas)
{
    const auto [centre, size] = ElementGeometry::PlacementOf(video, canvas);
    QTransform turned;
    turned.translate(centre.x(), centre.y());
    turned.rotate(static_cast<double>(video.rotation));
    return turned.map(
        QPolygonF(QRectF(-size.width() / 2, -size.height() / 2, size.width(), size.height())));
}

PatchedElement Patched(const DMXMappingArtNet& address, std::int32_t channelCount,
                       const UniverseMerging& merging, bool chosen)
{
    return {TargetPortAddress(address, merging), ChannelsSent(address.GetChannel(), channelCount),
            TargetNode(address, merging), chosen};
}

bool IsMergerTarget(const UniverseMerging& merging, std::int32_t portAddress)
{
    const std::int32_t first = merging.GetToStartAddress();
    return merging.IsEnabled() && !merging.IsInFromRange(portAddress) && portAddress >= first &&
           portAddress < first + merging.GetConsecutiveUniverses();
}

/// Which universes are broadcast, and which are sent to a chosen node.
struct WaysOfSending
{
    const UniverseMerging& merging;
    std::bitset<0x10000> broadcast = {};
    std::bitset<0x10000> chosen = {};

    void Note(const DMXMappingArtNet& address)
    {
        (TargetNode(address, merging) == AutoNode ? broadcast : chosen)
            .set(TargetPortAddress(address, merging));
    }
    [[nodiscard]] bool AreMixed(const DMXMappingArtNet& address) const
    {
        const std::uint16_t universe = TargetPortAddress(address, merging);
        return broadcast.test(universe) && chosen.test(universe);
    }
};

} // namespace

// ---- Rows --------------------------------------------------------------------------------------

Trouble RepatchRow::GetTrouble() const
{
    const RepatchFaults works = RepatchFault::SharedChannels | RepatchFault::MergerTarget;
    return !faults ? Trouble::None : faults & ~works ? Trouble::Fault : Trouble::Caution;
}

QString RepatchRow::Words() const
{
    QStringList sentences;
    if (faults.testFlag(RepatchFault::NoUniverse))
        sentences << RepatchWords::tr("No universe is left behind 15/15: keeps its address.");
    if (faults.testFlag(RepatchFault::CutOff))
        sentences << RepatchWords::tr("Reaches beyond channel 512: the rest is not sent.");
    if (faults.testFlag(RepatchFault::MixedUniverse))
        sentences << RepatchWords::tr(
                         "Universe %1 has fixtures with node Auto and others with a chosen node.")
                         .arg(UniverseText(*address));
    if (faults.testFlag(RepatchFault::SharedChannels))
        sentences << (sharedWith.isEmpty()
                          ? RepatchWords::tr("Shares channels with a fixture without description.")
                          : RepatchWords::tr("Shares channels with %1.").arg(sharedWith));
    if (faults.testFlag(RepatchFault::MergerTarget))
        sentences
            << RepatchWords::tr("The merger sends on universe %1.").arg(UniverseText(*address));
    return sentences.join(QLatin1Char(' '));
}

// ---- Reading -----------------------------------------------------------------------------------

Repatch::Repatch(const DeviceManager& manager, const ElementIds& ids)
    : merging_(manager.GetMappedDeviceModel()->GetMerging())
{
    const MappedDeviceModel& document = *manager.GetMappedDeviceModel();
    const MappedObjectListProxy& list = *manager.GetMappedObjectListProxy();
    for (const QItemSelectionRange& range : list.RowsOf(ids)) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            if (const auto* item = manager.GetMappedItem(list.mapToSource(list.index(row, 0))))
                Read(*item, manager.CanvasPixels());
        }
    }
    const std::unordered_set<std::int64_t> repatched(ids.begin(), ids.end());
    for (int row = 0; row < document.rowCount(); ++row) {
        const MappedLedItem* item = document.GetElement(row);
        if (item && item->GetArtNetMapping() && !repatched.contains(item->uniqueID))
            others_.push_back({QString::fromStdWString(item->description),
                               item->GetFixture().GetChannelCount(), *item->GetArtNetMapping()});
    }
}

void Repatch::Read(const MappedLedItem& item, QSizeF canvas)
{
    const DMXMappingArtNet* address = item.GetArtNetMapping();
    const VideoMapping* video = item.GetVideoMapping();
    elements_.push_back({item.uniqueID, QString::fromStdWString(item.description),
                         item.GetFixture().GetChannelCount(),
                         address ? std::optional(*address) : std::nullopt,
                         video ? OutlineOf(*video, canvas) : QPolygonF()});
}

PatchAddress Repatch::LowestAddress() const
{
    const DMXMappingArtNet* lowest = nullptr;
    for (const Element& element : elements_) {
        if (element.address && (!lowest || *element.address < *lowest))
            lowest = &*element.address;
    }
    return lowest ? PatchAddress{lowest->GetSubnet(), lowest->GetUniverse(), lowest->GetChannel()}
                  : PatchAddress();
}

std::optional<PatchAddress> Repatch::BehindTheOthers(std::int32_t channelCount) const
{
    std::vector<PatchedSpan> patched;
    patched.reserve(others_.size());
    for (const Other& other : others_)
        patched.push_back(
            {{other.address.GetSubnet(), other.address.GetUniverse(), other.address.GetChannel()},
             other.channelCount});
    const PatchAddress free = NextFreePatch(patched, std::max(channelCount, 1), {});
    return free.subnet < PatchAddress::SubnetCount ? std::optional(free) : std::nullopt;
}

// ---- Planning ----------------------------------------------------------------------------------

std::vector<RepatchRow> Repatch::Plan(const RepatchOptions& options) const
{
    std::vector<RepatchRow> rows = InOrder(options);
    SetAddresses(rows, options);
    FindFaults(rows);
    FindShared(rows);
    return rows;
}

std::vector<RepatchRow> Repatch::InOrder(const RepatchOptions& options) const
{
    if (options.sequence == RepatchOptions::ByPlace)
        return ByPlace(options.place);
    std::vector<RepatchRow> rows(elements_.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i].element = i;
    if (options.sequence == RepatchOptions::AsListed)
        return rows;
    // Those of a node stay together, where two nodes have universes of the same number.
    const auto key = [this](const RepatchRow& row) {
        const auto& address = elements_[row.element].address;
        return address ? std::tuple(0, address->GetSubnet(), address->GetUniverse(),
                                    std::wstring_view(address->GetIpconf()), address->GetChannel())
                       : std::tuple(1, 0, 0, std::wstring_view(), 0);
    };
    std::ranges::stable_sort(rows, {}, key);
    return rows;
}

/// Elements without a place come last, as a line of their own.
std::vector<RepatchRow> Repatch::ByPlace(const ElementOrder& order) const
{
    std::vector<std::size_t> placed;
    std::vector<std::size_t> without;
    std::vector<QRectF> boxes;
    for (std::size_t i = 0; i < elements_.size(); ++i) {
        const QPolygonF& outline = elements_[i].outline;
        (outline.isEmpty() ? without : placed).push_back(i);
        if (!outline.isEmpty())
            boxes.push_back(outline.boundingRect());
    }
    std::vector<std::vector<std::size_t>> lines = LinesByPlace(boxes, order);
    for (std::vector<std::size_t>& line : lines) {
        for (std::size_t& index : line)
            index = placed[index];
    }
    if (!without.empty())
        lines.push_back(std::move(without));
    std::vector<RepatchRow> rows;
    rows.reserve(elements_.size());
    for (const std::vector<std::size_t>& line : lines) {
        for (const std::size_t index : line)
            rows.push_back({.element = index,
                            .beginsLine = index == line.front(),
                            .address = {},
                            .faults = {},
                            .sharedWith = {}});
    }
    return rows;
}

void Repatch::SetAddresses(std::vector<RepatchRow>& rows, const RepatchOptions& options) const
{
    std::vector<PatchTurn> turns;
    turns.reserve(rows.size());
    for (const RepatchRow& row : rows)
        turns.push_back({elements_[row.element].channelCount, row.beginsLine});
    const auto places = AddressesInTurn(turns, options.rules);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        RepatchRow& row = rows[i];
        row.address = elements_[row.element].address;
        if (!places[i]) {
            row.faults |= RepatchFault::NoUniverse;
            continue;
        }
        if (!row.address)
            row.address.emplace(0, 0, 1, AutoNode, std::wstring());
        row.address->SetSubnet(places[i]->subnet);
        row.address->SetUniverse(places[i]->universe);
        row.address->SetChannel(places[i]->channel);
        if (options.node)
            row.address->SetNode(options.node->address, options.node->name);
    }
}

void Repatch::FindFaults(std::vector<RepatchRow>& rows) const
{
    WaysOfSending ways{merging_};
    for (const Other& other : others_)
        ways.Note(other.address);
    for (const RepatchRow& row : rows) {
        if (row.address)
            ways.Note(*row.address);
    }
    for (RepatchRow& row : rows) {
        if (!row.address)
            continue;
        const std::int32_t count = elements_[row.element].channelCount;
        const SentChannels sent = ChannelsSent(row.address->GetChannel(), count);
        row.faults.setFlag(RepatchFault::CutOff, sent.beyond || (sent.AreNone() && count > 0));
        row.faults.setFlag(RepatchFault::MergerTarget,
                           IsMergerTarget(merging_, row.address->GetPortAddress()));
        row.faults.setFlag(RepatchFault::MixedUniverse, ways.AreMixed(*row.address));
    }
}

void Repatch::FindShared(std::vector<RepatchRow>& rows) const
{
    // The rows first: an index of them is that of their row.
    std::vector<PatchedElement> patched;
    patched.reserve(rows.size() + others_.size());
    for (const RepatchRow& row : rows)
        patched.push_back(
            row.address ? Patched(*row.address, elements_[row.element].channelCount, merging_, true)
                        : PatchedElement());
    for (const Other& other : others_)
        patched.push_back(Patched(other.address, other.channelCount, merging_, false));
    const auto shared = FirstSharing(patched);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!shared[i])
            continue;
        const std::size_t other = *shared[i];
        rows[i].faults |= RepatchFault::SharedChannels;
        rows[i].sharedWith = other < rows.size() ? elements_[rows[other].element].description
                                                 : others_[other - rows.size()].description;
    }
}

std::vector<ElementAddress> Repatch::AddressesOf(const std::vector<RepatchRow>& rows) const
{
    std::vector<ElementAddress> addresses;
    addresses.reserve(rows.size());
    for (const RepatchRow& row : rows)
        addresses.push_back({elements_[row.element].uniqueID, row.address});
    return addresses;
}
