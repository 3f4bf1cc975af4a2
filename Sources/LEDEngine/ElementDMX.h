// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

/// Where a channel value of an element comes from; in a merged universe that decides what it does.
enum class ChannelType : std::uint8_t
{
    Pixel = 0,    ///< sampled
    Constant = 1, ///< fixed by the fixture
    Free = 2      ///< the fixture has the channel and nothing drives it: merged input stays
};

/// The channel values of one element with a tag for each; index 0 is the fixture's channel 1. A
/// view into the frame plan, which holds the values of all elements in one block.
struct ElementDMX
{
    std::span<const std::uint8_t> values;
    std::span<const ChannelType> types;
};
