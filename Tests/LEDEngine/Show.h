// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "LEDEngine/LEDEngine.h"
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

/// A fixture with these cells in rows of equal length. The channel count -1 is automatic.
[[nodiscard]] DeviceLedItem Fixture(PixelMapType type, const std::vector<std::int32_t>& cells,
                                    int channelCount = -1, const StaticChannelList& constants = {},
                                    int rows = 1);

[[nodiscard]] DMXMappingArtNet Address(int portAddress, int channel = 1,
                                       const std::wstring& ipconf = AutoNode);

/// Merging of `count` universes.
[[nodiscard]] UniverseMerging Merge(int from, int count, int to);

/// An element to place; at first it covers the whole canvas.
struct Placed
{
    DeviceLedItem fixture;
    DMXMappingArtNet address = Address(0);
    VideoMapping video{{0.5F, 0.5F}, {1, 1}, 0, false, false};
    std::wstring name = L"Element";
};

/// A document with its engine. No network is chosen, so frames are built and not sent.
class Show
{
public:
    /// Places the elements and makes the engine's buffers.
    explicit Show(const std::vector<Placed>& elements = {});

    MappedLedItem& Add(const Placed& element);
    /// Rebuilds the engine's buffers.
    bool Create();
    void SetMerging(const UniverseMerging& merging);
    /// Samples and sends; the result is that of SendFrame.
    int Frame(const ZenBitmap& source);

    /// The channels of the last frame's universe, empty when there is none.
    [[nodiscard]] Bytes Universe(int portAddress, const std::wstring& address = AutoNode);
    [[nodiscard]] Universes AllUniverses();

    [[nodiscard]] MappedDeviceModel& Document() { return *manager.GetMappedDeviceModel(); }

    DeviceManager manager;
    LEDEngine engine;
};
