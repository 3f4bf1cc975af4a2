// SPDX-License-Identifier: MIT
#include "Model/PatchRemedy.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "FixtureModel/FreePatch.h"
#include "FixtureModel/PatchOverlaps.h"
#include "FixtureModel/PatchTarget.h"
#include "FixtureModel/UniverseMerging.h"
#include "Model/DeviceModel.h"
#include "Model/ElementGeometry.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"

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
        if (!(mayStayInUniverse && TakeGap(address, count)) && !TakeBehindAll(address, count))
            return std::nullopt;
        Occupy(address, count);
        return address;
    }

private:
    using Channels = std::bitset<PatchAddress::LastChannel + 1>;

    void Occupy(const DMXMappingArtNet& address, std::int32_t count)
    {
        patched_.push_back(
            {{address.GetSubnet(), address.GetUniverse(), address.GetChannel()}, count});
        const SentChannels sent = ChannelsSent(address.GetChannel(), count);
        Channels& universe = SentOn(address);
        for (std::int32_t channel = sent.first; channel <= sent.last; ++channel)
            universe.set(static_cast<std::size_t>(channel));
    }

    /// The channels of the universe that this address ends up in.
    Channels& SentOn(const DMXMappingArtNet& address)
    {
        return occupied_[TargetPortAddress(address, merging_)];
    }

    bool TakeGap(DMXMappingArtNet& address, std::int32_t count)
    {
        const Channels& universe = SentOn(address);
        std::int32_t free = 0;
        for (std::int32_t channel = 1; channel <= PatchAddress::LastChannel; ++channel) {
            free = universe.test(static_cast<std::size_t>(channel)) ? 0 : free + 1;
            if (free < std::max(count, 1))
                continue;
            address.SetChannel(channel - free + 1);
            return true;
        }
        return false;
    }

    /// A merged element stays: elsewhere it would no longer be laid on what is received.
    bool TakeBehindAll(DMXMappingArtNet& address, std::int32_t count)
    {
        if (IsMerged(address, merging_) || count > PatchAddress::LastChannel)
            return false;
        const PatchAddress next = NextFreePatch(patched_, count, taken_);
        if (next.subnet < 0 || next.subnet >= PatchAddress::SubnetCount)
            return false;
        address.SetSubnet(next.subnet);
        address.SetUniverse(next.universe);
        address.SetChannel(next.channel);
        patched_.clear(); // the next one is behind this one
        return true;
    }

    const UniverseMerging& merging_;
    std::vector<std::int32_t> taken_;
    std::vector<PatchedSpan> patched_;
    std::unordered_map<std::uint16_t, Channels> occupied_;
};

/// The elements of these problems in their order, each once.
ElementIds ElementsOf(std::span<const PatchProblem> problems)
{
    ElementIds ids;
    std::unordered_set<std::int64_t> known;
    for (const PatchProblem& problem : problems) {
        const bool firstStays = problem.rule == PatchRule::SharedChannels;
        for (std::size_t i = firstStays ? 1 : 0; i < problem.elements.size(); ++i) {
            if (known.insert(problem.elements[i]).second)
                ids.push_back(problem.elements[i]);
        }
    }
    return ids;
}

std::vector<ElementAddress> FreeAddresses(const ElementIds& ids, bool mayStayInUniverse,
                                          const MappedDeviceModel& document,
                                          std::span<const std::int32_t> taken)
{
    FreePlaces places(document, {ids.begin(), ids.end()}, taken);
    std::vector<ElementAddress> addresses;
    for (const std::int64_t id : ids) {
        const MappedLedItem* element = document.GetItemByUniqueID(id);
        const DMXMappingArtNet* present = element ? element->GetArtNetMapping() : nullptr;
        if (!present)
            continue;
        const auto free =
            places.Take(*present, element->GetFixture().GetChannelCount(), mayStayInUniverse);
        if (free)
            addresses.push_back({id, free});
    }
    return addresses;
}

std::vector<ElementAddress> AddressesForAll(const ElementIds& ids,
                                            const MappedDeviceModel& document)
{
    std::vector<ElementAddress> addresses;
    for (const std::int64_t id : ids) {
        const MappedLedItem* element = document.GetItemByUniqueID(id);
        const DMXMappingArtNet* present = element ? element->GetArtNetMapping() : nullptr;
        if (!present || present->IsAuto())
            continue;
        DMXMappingArtNet address = *present;
        address.SetNode(AutoNode, {});
        addresses.push_back({id, std::move(address)});
    }
    return addresses;
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

ElementGeometry::Placement OntoCanvas(ElementGeometry::Placement place, double degrees,
                                      QSizeF canvas)
{
    const double width = place.size.width() / 2;
    const double height = place.size.height() / 2;
    const QPointF down = ElementGeometry::TurnedAbout({width, height}, {}, degrees);
    const QPointF up = ElementGeometry::TurnedAbout({width, -height}, {}, degrees);
    const QPointF reach(std::max(std::abs(down.x()), std::abs(up.x())),
                        std::max(std::abs(down.y()), std::abs(up.y())));
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

std::vector<ElementAddress> RemedyAddresses(std::span<const PatchProblem> problems,
                                            const MappedDeviceModel& document,
                                            std::span<const std::int32_t> taken)
{
    const ElementIds ids = ElementsOf(problems);
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
    const QSizeF canvas(document.GetCanvasWidth(), document.GetCanvasHeight());
    std::vector<ElementMapping> places;
    for (const std::int64_t id : ElementsOf(problems)) {
        const MappedLedItem* element = document.GetItemByUniqueID(id);
        const VideoMapping* video = element ? element->GetVideoMapping() : nullptr;
        if (!video)
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
    for (const std::int64_t id : ElementsOf(problems)) {
        const MappedLedItem* element = document.GetItemByUniqueID(id);
        const DeviceLedItem* fixture =
            element ? library.GetFixtures().value(element->GetFixture().uniqueID, nullptr)
                    : nullptr;
        if (fixture)
            fixtures.push_back({id, *fixture});
    }
    return fixtures;
}
