// SPDX-License-Identifier: MIT
#include "FixtureModel/FreePatch.h"

#include <algorithm>
#include <limits>
#include <tuple>

namespace {

/// Wider than an address, since a document may hold any number.
struct Place
{
    std::int64_t subnet = 0;
    std::int64_t universe = 0;
    std::int64_t channel = 1;

    void GoToNextUniverse()
    {
        if (universe >= PatchAddress::UniversesInSubnet - 1) {
            ++subnet;
            universe = 0;
        } else {
            ++universe;
        }
    }
};

std::int32_t Narrow(std::int64_t value)
{
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(value, std::numeric_limits<std::int32_t>::max()));
}

} // namespace

PatchAddress NextFreePatch(std::span<const PatchedSpan> patched, std::int32_t channelCount,
                           std::span<const std::int32_t> taken)
{
    Place next;
    for (const PatchedSpan& element : patched) {
        const Place behind{element.start.subnet, element.start.universe,
                           std::int64_t{element.start.channel} + element.channelCount};
        const auto order =
            std::tie(behind.subnet, behind.universe) <=> std::tie(next.subnet, next.universe);
        if (order > 0)
            next = behind;
        else if (order == 0)
            next.channel = std::max(next.channel, behind.channel);
    }
    if (next.channel - 1 + channelCount > PatchAddress::LastChannel) {
        next.channel = 1;
        next.GoToNextUniverse();
    }
    while (std::find(taken.begin(), taken.end(),
                     next.subnet * PatchAddress::UniversesInSubnet + next.universe) != taken.end())
        next.GoToNextUniverse();
    return {Narrow(next.subnet), Narrow(next.universe), Narrow(next.channel)};
}
