// SPDX-License-Identifier: MIT
#include "Model/PatchRemedy.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "FixtureModel/FreePatch.h"
#include "FixtureModel/PatchOverlaps.h"
#include "FixtureModel/PatchTarget.h"
#include "FixtureModel/UniverseMerging.h"
#include "Model/DeviceModel.h"
#include "Model/EditedAddresses.h"
#include "Model/ElementGeometry.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "Model/PatchFaults.h"

namespace {

// ---- Addresses ---------------------------------------------------------------------------------

/// Finds a place for one element after the other.
class FreePlaces
{
public:
    FreePlaces(const MappedDeviceModel& document, const std::unordered_set<std::int64_t>& moved,
               std::span<const std::int32_t> taken)
        : merging_(document.GetMerging())
        , taken_(taken.begin(), taken.end())
    {
        for (std::int32_t i = 0; merging_.IsEnabled() && i < merging_.GetConsecutiveUniverses();
             ++i) {
            taken_.push_back(merging_.GetFromStartAddress() + i);
            taken_.push_back(merging_.GetToStartAddress() + i);
        }
        for (int row = 0; row < document.rowCount(); ++row) {
            const MappedLedItem& element = *document.GetElement(row);
            const DMXMappingArtNet* address = element.GetArtNetMapping();
            if (address && !moved.contains(element.uniqueID))
                Occupy(*address, element.GetFixture().GetChannelCount());
        }
    }

    /// The address with the place of it changed; nothing when none is free.
    std::optional<DMXMappingArtNet> Take(DMXMappingArtNet address, std::int32_t count,
                                         bool mayStayInUniverse)
    {
        if (!(mayStayInUniverse && TakeInOwn(address, count)) && !TakeElsewhere(address, count))
            return std::nullopt;
        Occupy(address, count);
        return address;
    }

private:
    static constexpr std::int32_t UniverseCount =
        PatchAddress::SubnetCount * PatchAddress::UniversesInSubnet;

    /// What is sent on a universe.
    struct Universe
    {
        std::bitset<PatchAddress::LastChannel + 1> channels;
        std::set<std::wstring, std::less<>> nodes; ///< who receives it, AutoNode for all

        [[nodiscard]] bool IsFor(std::wstring_view node) const
        {
            return nodes.empty() || (nodes.size() == 1 && *nodes.begin() == node);
        }
        /// Whether this node and one that is there are Auto and a chosen one.
        [[nodiscard]] bool IsMixedBy(std::wstring_view node) const
        {
            return std::ranges::any_of(nodes,
                                       [isAuto = node == AutoNode](const std::wstring& other) {
                                           return (other == AutoNode) != isAuto;
                                       });
        }
        /// Where so many channels are free in a row; 0 for nowhere.
        [[nodiscard]] std::int32_t FirstGap(std::int32_t count) const
        {
            if (static_cast<std::int32_t>(channels.count()) > PatchAddress::LastChannel - count)
                return 0;
            std::int32_t free = 0;
            for (std::int32_t channel = 1; channel <= PatchAddress::LastChannel; ++channel) {
                free = channels.test(static_cast<std::size_t>(channel)) ? 0 : free + 1;
                if (free >= std::max(count, 1))
                    return channel - free + 1;
            }
            return 0;
        }
    };

    void Occupy(const DMXMappingArtNet& address, std::int32_t count)
    {
        const SentChannels sent = ChannelsSent(address.GetChannel(), count);
        if (sent.AreNone())
            return;
        Universe& universe = SentOn(address);
        universe.nodes.emplace(TargetNode(address, merging_));
        for (std::int32_t channel = sent.first; channel <= sent.last; ++channel)
            universe.channels.set(static_cast<std::size_t>(channel));
        const std::int32_t portAddress = TargetPortAddress(address, merging_);
        if (portAddress < UniverseCount)
            last_ = std::max(last_, portAddress);
    }

    /// The universe that this address ends up in.
    Universe& SentOn(const DMXMappingArtNet& address)
    {
        return universes_[TargetPortAddress(address, merging_)];
    }

    /// Where the universe has several chosen nodes it may keep them: that is how it was meant. A
    /// merged element has no other place.
    bool TakeInOwn(DMXMappingArtNet& address, std::int32_t count)
    {
        const Universe& universe = SentOn(address);
        if (universe.IsMixedBy(TargetNode(address, merging_)) && !IsMerged(address, merging_))
            return false;
        const std::int32_t channel = universe.FirstGap(count);
        if (channel > 0)
            address.SetChannel(channel);
        return channel > 0;
    }

    /// From the last universe in use on, then from the first. A merged element stays: elsewhere it
    /// would no longer be laid on what is received.
    bool TakeElsewhere(DMXMappingArtNet& address, std::int32_t count)
    {
        if (IsMerged(address, merging_))
            return false;
        for (std::int32_t i = 0; i < UniverseCount; ++i) {
            const std::int32_t portAddress = (last_ + i) % UniverseCount;
            if (std::ranges::find(taken_, portAddress) != taken_.end())
                continue;
            const Universe& universe = universes_[static_cast<std::uint16_t>(portAddress)];
            const std::int32_t channel =
                universe.IsFor(address.GetIpconf()) ? universe.FirstGap(count) : 0;
            if (channel == 0)
                continue;
            address.SetPortAddress(portAddress);
            address.SetChannel(channel);
            return true;
        }
        return false;
    }

    const UniverseMerging& merging_;
    std::vector<std::int32_t> taken_;
    std::unordered_map<std::uint16_t, Universe> universes_; ///< as they are sent
    std::int32_t last_ = 0;                                 ///< of those in use
};

/// Of elements that share channels, those that must move so that the others share none.
ElementIds Sharing(const ElementIds& ids, const MappedDeviceModel& document)
{
    std::vector<PatchedElement> kept;
    ElementIds moved;
    for (const std::int64_t id : ids) {
        const MappedLedItem* element = document.GetItemByUniqueID(id);
        const DMXMappingArtNet* address = element ? element->GetArtNetMapping() : nullptr;
        if (!address)
            continue;
        const PatchedElement patched = PatchedElementOf(*element, *address, document.GetMerging());
        if (std::ranges::any_of(
                kept, [&](const PatchedElement& other) { return ShareChannels(patched, other); }))
            moved.push_back(id);
        else
            kept.push_back(patched);
    }
    return moved;
}

std::vector<ElementAddress> FreeAddresses(const ElementIds& ids, bool mayStayInUniverse,
                                          const MappedDeviceModel& document,
                                          std::span<const std::int32_t> taken)
{
    FreePlaces places(document, {ids.begin(), ids.end()}, taken);
    return EditedAddresses(
        ids, document, [&](const MappedLedItem& element, const DMXMappingArtNet& present) {
            return places.Take(present, element.GetFixture().GetChannelCount(), mayStayInUniverse);
        });
}

std::vector<ElementAddress> AddressesForAll(const ElementIds& ids,
                                            const MappedDeviceModel& document)
{
    return EditedAddresses(ids, document, [](const MappedLedItem&, DMXMappingArtNet address) {
        address.SetNode(AutoNode, {});
        return std::optional(std::move(address));
    });
}

/// Of no problems there is no remedy.
PatchRemedy RemedyOf(std::span<const PatchProblem> problems)
{
    return problems.empty() ? PatchRemedy::None : RemedyOf(problems.front().rule);
}

// ---- Places ------------------------------------------------------------------------------------

/// How far a side from `first` to `last` goes to be within 0 to `end`; one that is longer goes into
/// the middle.
double Inwards(double first, double last, double end)
{
    if (last - first > end)
        return end / 2 - (first + last) / 2;
    return std::max(0.0, -first) + std::min(0.0, end - last);
}

/// How far a turned element goes from its centre to the right and down.
QPointF ReachOf(const ElementGeometry::Placement& place, double degrees)
{
    const double width = place.size.width() / 2;
    const double height = place.size.height() / 2;
    const QPointF down = ElementGeometry::TurnedAbout({width, height}, {}, degrees);
    const QPointF up = ElementGeometry::TurnedAbout({width, -height}, {}, degrees);
    return {std::max(std::abs(down.x()), std::abs(up.x())),
            std::max(std::abs(down.y()), std::abs(up.y()))};
}

bool FitsCanvas(const MappedLedItem& element, const MappedDeviceModel& document)
{
    constexpr double rounding = 0.01; // of places, which are kept as parts of the canvas
    const VideoMapping* video = element.GetVideoMapping();
    if (!video)
        return false;
    const QSizeF canvas(document.GetCanvasWidth(), document.GetCanvasHeight());
    const QPointF reach =
        ReachOf(ElementGeometry::PlacementOf(*video, canvas), static_cast<double>(video->rotation));
    return 2 * reach.x() <= canvas.width() + rounding &&
           2 * reach.y() <= canvas.height() + rounding;
}

ElementGeometry::Placement OntoCanvas(ElementGeometry::Placement place, double degrees,
                                      QSizeF canvas)
{
    const QPointF reach = ReachOf(place, degrees);
    const QPointF first = place.centre - reach;
    const QPointF last = place.centre + reach;
    place.centre += QPointF(Inwards(first.x(), last.x(), canvas.width()),
                            Inwards(first.y(), last.y(), canvas.height()));
    return place;
}

ElementGeometry::Placement Enlarged(ElementGeometry::Placement place, double degrees,
                                    const PixelMap& map)
{
    const auto side = [](double present, std::int32_t pixels) {
        return pixels > 1 ? std::max(present, double(pixels)) : present;
    };
    place.size = {side(place.size.width(), map.GetWidth()),
                  side(place.size.height(), map.GetHeight())};
    place.centre = ElementGeometry::SnappedCentre(
        place.centre, ElementGeometry::CoveredSize(place.size, degrees));
    return place;
}

} // namespace

ElementIds RemedyElements(std::span<const PatchProblem> problems, const MappedDeviceModel& document)
{
    ElementIds ids;
    std::unordered_set<std::int64_t> known;
    for (const PatchProblem& problem : problems) {
        const ElementIds concerned = problem.rule == PatchRule::SharedChannels
                                         ? Sharing(problem.elements, document)
                                         : problem.elements;
        for (const std::int64_t id : concerned) {
            if (document.GetItemByUniqueID(id) && known.insert(id).second)
                ids.push_back(id);
        }
    }
    return ids;
}

bool CanBeRemedied(const PatchProblem& problem, const MappedDeviceModel& document)
{
    const PatchRemedy remedy = RemedyOf(problem.rule);
    return remedy != PatchRemedy::None &&
           std::ranges::any_of(problem.elements, [&](std::int64_t id) {
               const MappedLedItem* element = document.GetItemByUniqueID(id);
               if (!element)
                   return false;
               if (remedy == PatchRemedy::FreeAddress)
                   return element->GetFixture().GetChannelCount() <= PatchAddress::LastChannel;
               return problem.rule != PatchRule::OverEdge || FitsCanvas(*element, document);
           });
}

std::vector<ElementAddress> RemedyAddresses(std::span<const PatchProblem> problems,
                                            const MappedDeviceModel& document,
                                            std::span<const std::int32_t> taken)
{
    const ElementIds ids = RemedyElements(problems, document);
    switch (RemedyOf(problems)) {
    case PatchRemedy::FreeAddress:
        return FreeAddresses(ids, problems.front().rule != PatchRule::MergerTarget, document,
                             taken);
    case PatchRemedy::SendToAll:
        return AddressesForAll(ids, document);
    default:
        return {};
    }
}

std::vector<ElementMapping> RemedyPlaces(std::span<const PatchProblem> problems,
                                         const MappedDeviceModel& document)
{
    const PatchRemedy remedy = RemedyOf(problems);
    if (remedy != PatchRemedy::OntoCanvas && remedy != PatchRemedy::FitPixels)
        return {};
    const PatchRule rule = problems.front().rule;
    const QSizeF canvas(document.GetCanvasWidth(), document.GetCanvasHeight());
    std::vector<ElementMapping> places;
    for (const std::int64_t id : RemedyElements(problems, document)) {
        const MappedLedItem* element = document.GetItemByUniqueID(id);
        const VideoMapping* video = element ? element->GetVideoMapping() : nullptr;
        if (!video || (rule == PatchRule::OverEdge && !FitsCanvas(*element, document)))
            continue;
        const double degrees = static_cast<double>(video->rotation);
        const ElementGeometry::Placement present = ElementGeometry::PlacementOf(*video, canvas);
        const ElementGeometry::Placement place =
            remedy == PatchRemedy::OntoCanvas
                ? OntoCanvas(present, degrees, canvas)
                : Enlarged(present, degrees, element->GetFixture().pixelMap);
        places.push_back({id, ElementGeometry::Placed(*video, place, canvas)});
    }
    return places;
}

std::vector<ElementFixture> RemedyFixtures(std::span<const PatchProblem> problems,
                                           const MappedDeviceModel& document,
                                           const DeviceModel& library)
{
    if (RemedyOf(problems) != PatchRemedy::LibraryDefinition)
        return {};
    std::vector<ElementFixture> fixtures;
    for (const std::int64_t id : RemedyElements(problems, document)) {
        const MappedLedItem* element = document.GetItemByUniqueID(id);
        const DeviceLedItem* fixture =
            element ? library.GetFixtures().value(element->GetFixture().uniqueID, nullptr)
                    : nullptr;
        if (fixture)
            fixtures.push_back({id, *fixture});
    }
    return fixtures;
}
