// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

/// What a channel value of an element is, and so what it does to a universe that is merged.
enum class ChannelType : std::uint8_t
{
    Pixel = 0,    ///< sampled
    Constant = 1, ///< fixed by the fixture
    Free = 2      ///< the fixture has the channel and nothing drives it: merged input shows through
};

/// The channel values of one element with a tag for each; index 0 is the fixture's channel 1. A
/// view: the frame plan holds the values of all elements in one block.
struct ElementDMX
{
    std::span<const std::uint8_t> values;
    std::span<const ChannelType> types;
};
