// SPDX-License-Identifier: MIT
#include "FixtureModel/PatchRun.h"

PatchAddress NextInRun(const PatchAddress& before, std::int32_t taken, std::int32_t channelCount)
{
    // Wider than an address, since a document may hold any number.
    const std::int64_t start = std::int64_t{before.channel} + taken;
    if (start < PatchAddress::LastChannel - channelCount)
        return {before.subnet, before.universe, static_cast<std::int32_t>(start)};
    std::int64_t universe = std::int64_t{before.universe} + 1;
    std::int64_t subnet = before.subnet;
    if (universe >= PatchAddress::UniversesInSubnet) {
        universe = 0;
        ++subnet;
        if (subnet >= PatchAddress::SubnetCount)
            subnet = 0;
    }
    return {static_cast<std::int32_t>(subnet), static_cast<std::int32_t>(universe), 1};
}
