// SPDX-License-Identifier: MIT
#include "FixtureModel/PatchTarget.h"

#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/UniverseMerging.h"

bool IsMerged(const DMXMappingArtNet& address, const UniverseMerging& merging)
{
    return merging.IsEnabled() && merging.IsInFromRange(address.GetPortAddress());
}

PatchTarget TargetOf(const DMXMappingArtNet& address, const UniverseMerging& merging)
{
    const std::uint16_t own = address.GetPortAddress();
    if (IsMerged(address, merging))
        return {AutoNode, static_cast<std::uint16_t>(merging.TranslateToOutput(own))};
    return {address.GetIpconf(), own};
}
