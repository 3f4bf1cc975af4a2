// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

/// The channels of a universe that an element is sent on, 1 to 512. None when first is above last.
struct SentChannels
{
    std::int32_t first = 1;
    std::int32_t last = 0;
    bool beyond = false; ///< the element has channels beyond 512, which are not sent

    [[nodiscard]] bool AreNone() const { return first > last; }
    bool operator==(const SentChannels&) const = default;
};

/// For an element that starts at `channel`, which may be any number. An element that starts below 1
/// is not sent.
[[nodiscard]] SentChannels ChannelsSent(std::int32_t channel, std::int32_t channelCount);

/// Where an element is sent.
struct PatchedElement
{
    std::uint16_t portAddress = 0;
    SentChannels channels;
    std::wstring_view node; ///< "Auto" or the dotted address of the receiving node
    bool chosen = false;
};

/// Two elements share channels when a node may receive both: those of one node, and those without a
/// node with all of their universe.
[[nodiscard]] bool ShareChannels(const PatchedElement& one, const PatchedElement& other);

/// The elements that share channels with a chosen one other than themselves, as indices in
/// `elements`, by universe, first channel and index.
[[nodiscard]] std::vector<std::size_t> OverlapsWithChosen(std::span<const PatchedElement> elements);

/// Elements that share channels with each other, directly or through others among them.
struct OverlapGroup
{
    std::uint16_t portAddress = 0;
    /// The first and the last channel that several of them have; some between may have one alone.
    std::int32_t first = 0;
    std::int32_t last = 0;
    std::vector<std::size_t> elements; ///< indices, ascending; at least two

    bool operator==(const OverlapGroup&) const = default;
};

/// All elements that share channels, whichever are chosen, by universe and first channel.
[[nodiscard]] std::vector<OverlapGroup> OverlapGroups(std::span<const PatchedElement> elements);

/// For each chosen element, in the order of `elements`, the first other one that shares channels
/// with it, as an index in `elements`: by its first channel, then by its index. Nothing for an
/// element that shares none, and for one that isn't chosen.
[[nodiscard]] std::vector<std::optional<std::size_t>>
FirstSharing(std::span<const PatchedElement> elements);
