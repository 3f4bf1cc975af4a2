// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <QString>

#include "FixtureModel/ChannelUse.h"
#include "FixtureModel/PatchTarget.h"
#include "LEDEngine/ElementSampling.h"
#include "LEDEngine/IdentifyLight.h"
#include "LEDEngine/UniverseRoute.h"

class LEDEngine;
class MappedDeviceModel;
struct PatchUniverse;

/// The whole way of one channel, or of all channels of one pixel, from the picture to the node, as
/// of the last frame.
struct ChannelTrace
{
    /// Where a pixel takes its colour from.
    struct Sample
    {
        ElementSampling::PicturePixel place;
        PixelColour colour;
    };
    struct Value
    {
        std::wstring component; ///< "R", "Amber"; empty for a channel of no pixel
        std::uint8_t value = 0;
    };
    struct Receiver
    {
        std::string name; ///< may be empty
        std::string address;
    };

    std::wstring element; ///< its description; empty for a channel of nobody
    ChannelUse::Kind use = ChannelUse::Kind::Nothing;
    std::int32_t fixtureChannel = 0;  ///< the first of the traced channels in the fixture, from 1
    std::int32_t pixel = 0;           ///< along the fixture's channels, from 1; 0 for no pixel
    std::optional<Sample> sample;     ///< none for a pixel outside of the canvas
    std::optional<PixelColour> shown; ///< what the pixel has instead of the picture's colour

    PatchTarget target;
    std::int32_t patched = -1;     ///< its own Port-Address where the merger sends it on another
    std::int32_t firstChannel = 0; ///< of the universe
    std::int32_t channels = 1;     ///< how many are traced
    std::vector<Value> values;     ///< of those that are in the last frame
    bool shared = false;           ///< other elements write these channels, too
    std::wstring winner;           ///< the other element that decides what they have
    std::uint32_t sender = 0;      ///< of what is received for a channel of nobody; 0 for none

    UniverseRoute route;
    std::vector<Receiver> receivers; ///< where the route goes to single nodes
    std::optional<std::int64_t> age; ///< nanoseconds since the last frame, none before the first
};

/// Channel 1 to 512 of a universe of the document's table; one with no elements is a received one.
[[nodiscard]] ChannelTrace TraceChannel(LEDEngine& engine, const MappedDeviceModel& document,
                                        const PatchUniverse& universe, std::int32_t channel);

/// All channels of one pixel of an element: `cell` is its index in the fixture's map, row by row.
/// Nothing for a cell without a pixel that is sent, and for an element without an address.
[[nodiscard]] std::optional<ChannelTrace> TracePixel(LEDEngine& engine,
                                                     const MappedDeviceModel& document,
                                                     std::int64_t element, std::int32_t cell);

/// The way in one line for the operator: `picture (431, 207) #84c2ff, "ELAR-2" pixel 13 G, value
/// 194, universe 0/4 channel 97, to node "Stage left" 2.0.0.10, sent 12 ms ago`.
[[nodiscard]] QString ChannelTraceText(const ChannelTrace& trace);

/// The end of such a line where nobody gets the target's universe: `not sent: no node announced the
/// universe`. Empty for a route by which it is sent.
[[nodiscard]] QString NotSentText(const UniverseRoute& route, const PatchTarget& target);
