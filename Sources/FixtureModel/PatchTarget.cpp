// SPDX-License-Identifier: MIT
#include "FixtureModel/PatchTarget.h"

#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/UniverseMerging.h"

bool IsMerged(const DMXMappingArtNet& address, const UniverseMerging& merging)
{
    return merging.IsEnabled() && merging.IsInFromRange(address.GetPortAddress());
}

std::uint16_t TargetPortAddress(const DMXMappingArtNet& address, const UniverseMerging& merging)
{
    const std::uint16_t own = address.GetPortAddress();
    return IsMerged(address, merging) ? static_cast<std::uint16_t>(merging.TranslateToOutput(own))
                                      : own;
}

std::wstring_view TargetNode(const DMXMappingArtNet& address, const UniverseMerging& merging)
{
    return IsMerged(address, merging) ? std::wstring_view(AutoNode) : address.GetIpconf();
}

PatchTarget TargetOf(const DMXMappingArtNet& address, const UniverseMerging& merging)
{
    return {std::wstring(TargetNode(address, merging)), TargetPortAddress(address, merging)};
}
