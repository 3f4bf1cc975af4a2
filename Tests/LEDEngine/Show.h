// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/VideoMapping.h"
#include "LEDEngine/LEDEngine.h"
#include "LibTools/ZenBitmap.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"

using Bytes = std::vector<std::uint8_t>;
/// The universes of one frame by address and Port-Address.
using Universes = std::map<std::pair<std::wstring, std::uint16_t>, Bytes>;

struct Rgb
{
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;
};

/// A picture of these colours, row by row, with 4 bytes a pixel or, with format code 3, 3 bytes.
[[nodiscard]] std::unique_ptr<ZenBitmap>
Picture(int width, int height, const std::vector<Rgb>& colours, std::uint32_t format = 4);

/// A map with these cells, row by row.
[[nodiscard]] PixelMap MapOf(int width, int height, PixelMapType type,
                             std::initializer_list<std::int32_t> cells);

/// A fixture; constants and free channels as given, in their order.
[[nodiscard]] DeviceLedItem FixtureOf(PixelMap map, int channelCount,
                                      const StaticChannelList& constants = {});

/// The whole canvas, not rotated.
[[nodiscard]] VideoMapping WholeCanvas();

[[nodiscard]] DMXMappingArtNet Address(int subnet, int universe, int channel,
                                       const std::wstring& ipconf = AutoNode);

/// A document with its engine. No network is chosen, so frames are built and not sent.
class Show
{
public:
    Show();

    MappedLedItem& Add(const DeviceLedItem& fixture, const VideoMapping& video,
                       const DMXMappingArtNet& address, const std::wstring& name = L"Element");

    /// Rebuilds the engine's buffers.
    bool Create();
    /// Samples and sends; the result is that of SendFrame.
    int Frame(const ZenBitmap& source);

    /// The channels of the last frame's universe, empty when there is none.
    [[nodiscard]] Bytes Universe(int portAddress, const std::wstring& address = AutoNode);
    [[nodiscard]] Universes AllUniverses();

    [[nodiscard]] MappedDeviceModel& Document() { return *manager.GetMappedDeviceModel(); }

    DeviceManager manager;
    LEDEngine engine;
};
