// SPDX-License-Identifier: MIT
#include "Model/PatchWalk.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <tuple>
#include <unordered_set>
#include <vector>

#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"

void PatchWalk::Begin(const MappedDeviceModel& document, const ElementIds& chosen,
                      std::int64_t start)
{
    chosen_ = chosen;
    position_ = 0;
    Arrange(document);
    GoTo(start);
}

void PatchWalk::Arrange(const MappedDeviceModel& document)
{
    struct Place
    {
        const DMXMappingArtNet* address;
        std::int64_t element;

        [[nodiscard]] auto Key() const
        {
            return std::tuple<std::uint16_t, const std::wstring&, std::int32_t>(
                address->GetPortAddress(), address->GetIpconf(), address->GetChannel());
        }
    };
    const std::unordered_set<std::int64_t> chosen(chosen_.begin(), chosen_.end());
    std::vector<Place> places;
    leftOut_ = 0;
    for (int row = 0; row < document.rowCount(); ++row) {
        const MappedLedItem* element = document.GetElement(row);
        if (!element || (!chosen.empty() && !chosen.contains(element->uniqueID)))
            continue;
        if (const DMXMappingArtNet* address = element->GetArtNetMapping())
            places.push_back({address, element->uniqueID});
        else
            ++leftOut_;
    }
    std::ranges::stable_sort(places, {}, &Place::Key);
    order_.clear();
    std::ranges::transform(places, std::back_inserter(order_), &Place::element);
}

void PatchWalk::Follow(const MappedDeviceModel& document)
{
    const ElementIds before = order_;
    const auto was = before.begin() + static_cast<std::ptrdiff_t>(position_);
    Arrange(document);
    const std::unordered_set<std::int64_t> left(order_.begin(), order_.end());
    const auto isLeft = [&left](std::int64_t element) {
        return left.contains(element);
    };
    position_ = 0;
    if (const auto next = std::find_if(was, before.end(), isLeft); next != before.end())
        GoTo(*next);
    else if (!before.empty())
        GoToLast();
}

void PatchWalk::Step(std::ptrdiff_t by)
{
    if (order_.empty())
        return;
    const auto last = static_cast<std::ptrdiff_t>(order_.size()) - 1;
    const auto wanted = static_cast<std::ptrdiff_t>(position_) + by;
    position_ = static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(wanted, 0, last));
}

bool PatchWalk::GoTo(std::int64_t element)
{
    const auto found = std::ranges::find(order_, element);
    if (found == order_.end())
        return false;
    position_ = static_cast<std::size_t>(found - order_.begin());
    return true;
}
