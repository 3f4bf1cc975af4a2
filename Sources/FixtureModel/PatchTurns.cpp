// SPDX-License-Identifier: MIT
#include "FixtureModel/PatchTurns.h"

#include <algorithm>

namespace {

// Channels are counted through all universes here, from 0.
constexpr std::int64_t Length = PatchAddress::LastChannel;
constexpr std::int64_t End = Length * PatchAddress::UniversesInSubnet * PatchAddress::SubnetCount;

std::int64_t CountedThrough(const PatchAddress& address)
{
    const auto within = [](std::int64_t value, std::int64_t lowest, std::int64_t highest) {
        return std::clamp(value, lowest, highest);
    };
    const std::int64_t subnet = within(address.subnet, 0, PatchAddress::SubnetCount - 1);
    const std::int64_t universe = within(address.universe, 0, PatchAddress::UniversesInSubnet - 1);
    return (subnet * PatchAddress::UniversesInSubnet + universe) * Length +
           within(address.channel, 1, Length) - 1;
}

PatchAddress AddressAt(std::int64_t place)
{
    const std::int64_t universe = place / Length;
    return {static_cast<std::int32_t>(universe / PatchAddress::UniversesInSubnet),
            static_cast<std::int32_t>(universe % PatchAddress::UniversesInSubnet),
            static_cast<std::int32_t>(place % Length + 1)};
}

/// The first channel of the universe that begins here or behind.
std::int64_t UniverseFrom(std::int64_t place)
{
    return (place + Length - 1) / Length * Length;
}

/// Behind an element that ends before `end`.
std::int64_t Behind(std::int64_t end, const PatchTurn& turn, const PatchRules& rules)
{
    if (rules.lineBeginsUniverse && turn.beginsLine)
        return UniverseFrom(end);
    const std::int64_t place = end + std::clamp<std::int32_t>(rules.gap, 0, PatchRules::LargestGap);
    // A gap keeps elements of one universe apart; there is nothing to keep apart in the next.
    return rules.neverSplit ? std::min(place, UniverseFrom(end)) : place;
}

} // namespace

std::vector<std::optional<PatchAddress>> AddressesInTurn(std::span<const PatchTurn> turns,
                                                         const PatchRules& rules)
{
    std::vector<std::optional<PatchAddress>> addresses;
    addresses.reserve(turns.size());
    std::int64_t end = 0;
    for (const PatchTurn& turn : turns) {
        const std::int64_t count = std::max(turn.channelCount, 0);
        std::int64_t place =
            addresses.empty() ? CountedThrough(rules.start) : Behind(end, turn, rules);
        if (rules.neverSplit && place % Length + count > Length)
            place = UniverseFrom(place);
        addresses.push_back(place < End ? std::optional(AddressAt(place)) : std::nullopt);
        end = place + count;
    }
    return addresses;
}
