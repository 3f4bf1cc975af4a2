// SPDX-License-Identifier: MIT
#include "UI/Output/UniverseCells.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

#include <QVector>

#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"

namespace {

/// Gives each owner a tint when its first channel comes, in turn, but never that of the cell
/// before.
class TintsInTurn
{
public:
    std::uint8_t Of(std::int32_t span, int before)
    {
        const auto [known, isNew] = tints_.try_emplace(span, std::uint8_t{0});
        if (isNew) {
            if (next_ == before)
                next_ = (next_ + 1) % UniverseCells::Tints;
            known->second = static_cast<std::uint8_t>(next_);
            next_ = (next_ + 1) % UniverseCells::Tints;
        }
        return known->second;
    }

private:
    std::unordered_map<std::int32_t, std::uint8_t> tints_;
    int next_ = 0;
};

/// Whether channel 512 is a part of a pixel that would go on behind it.
bool IsCutAtTheEnd(const ChannelOwner& last, const MappedLedItem* element)
{
    return element && last.use.kind == ChannelUse::Kind::Pixel &&
           last.use.component + 1 < element->GetFixture().pixelMap.GetChannelsPerPixel();
}

} // namespace

UniverseCells UniverseCells::Of(const PatchUniverse* universe, bool hasInput,
                                const MappedDeviceModel& document)
{
    UniverseCells all;
    if (universe)
        all.owners = OwnersOf(*universe, document);
    TintsInTurn tints;
    std::int32_t before = -1;
    int tintBefore = -1;
    for (std::size_t i = 0; i < all.cells.size(); ++i) {
        const ChannelOwner& owner = all.owners[i];
        UniverseCell& cell = all.cells[i];
        if (owner.span < 0) {
            cell.ground = hasInput ? UniverseCell::Ground::Received : UniverseCell::Ground::Free;
            tintBefore = -1;
        } else {
            cell.ground = UniverseCell::Ground::Owned;
            cell.tint = tints.Of(owner.span, tintBefore);
            cell.shared = owner.shared;
            cell.element = universe->spans[static_cast<std::size_t>(owner.span)].element;
            tintBefore = cell.tint;
        }
        cell.begins = owner.span >= 0 && owner.span != before;
        if (i > 0)
            all.cells[i - 1].ends = before >= 0 && owner.span != before;
        before = owner.span;
    }
    UniverseCell& last = all.cells.back();
    last.ends = before >= 0;
    last.cut = IsCutAtTheEnd(all.owners.back(), document.GetItemByUniqueID(last.element));
    return all;
}

std::optional<WantedChannel> ReadWantedChannel(QStringView text)
{
    constexpr int universesInSubnet = 16;
    constexpr int lastPortAddress = 0x7FFF;
    std::vector<int> numbers;
    for (const QStringView part : text.split(QLatin1Char('/'))) {
        bool isNumber = false;
        const int number = part.trimmed().toString().toInt(&isNumber);
        if (!isNumber || number < 0 || number > lastPortAddress)
            return std::nullopt;
        numbers.push_back(number);
    }
    if (numbers.empty() || numbers.size() > 3 || numbers.back() < 1 || numbers.back() > 512)
        return std::nullopt;
    WantedChannel wanted{.portAddress = std::nullopt, .channel = numbers.back()};
    if (numbers.size() == 2)
        wanted.portAddress = numbers[0];
    else if (numbers.size() == 3 && numbers[1] < universesInSubnet)
        wanted.portAddress = numbers[0] * universesInSubnet + numbers[1];
    else if (numbers.size() == 3)
        return std::nullopt;
    return wanted;
}
