// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

class DMXMappingArtNet;
class UniverseMerging;

/// The universe that an element ends up in, as a destination receives it.
struct PatchTarget
{
    std::wstring node; ///< AutoNode, or the dotted address of the node that alone receives it
    std::uint16_t portAddress = 0;

    auto operator<=>(const PatchTarget&) const = default;
};

/// Whether an element with this address is laid on top of received DMX.
[[nodiscard]] bool IsMerged(const DMXMappingArtNet& address, const UniverseMerging& merging);

/// The two parts of TargetOf, for those who look at every element. The node is a view of the
/// address.
[[nodiscard]] std::uint16_t TargetPortAddress(const DMXMappingArtNet& address,
                                              const UniverseMerging& merging);
[[nodiscard]] std::wstring_view TargetNode(const DMXMappingArtNet& address,
                                           const UniverseMerging& merging);

/// With merging on, what is patched into the received run is sent on the run of the merger's
/// output, to all nodes; everything else goes where its address says.
[[nodiscard]] PatchTarget TargetOf(const DMXMappingArtNet& address, const UniverseMerging& merging);
