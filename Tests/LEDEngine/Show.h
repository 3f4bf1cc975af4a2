// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

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
[[nodiscard]] inline std::unique_ptr<ZenBitmap>
Picture(int width, int height, const std::vector<Rgb>& colours, std::uint32_t format = 4)
{
    auto picture = ZenBitmap::Create(width, height, format);
    std::uint8_t* next = picture->data;
    for (const Rgb& colour : colours) {
        const std::uint8_t bytes[] = {colour.b, colour.g, colour.r, 255};
        next = std::copy_n(bytes, format, next);
    }
    return picture;
}

/// A fixture with these cells in rows of equal length. The channel count -1 is automatic.
[[nodiscard]] inline DeviceLedItem Fixture(PixelMapType type,
                                           const std::vector<std::int32_t>& cells,
                                           int channelCount = -1,
                                           const StaticChannelList& constants = {}, int rows = 1)
{
    const int width = static_cast<int>(cells.size()) / rows;
    PixelMap map(width, rows, type);
    for (int i = 0; i < width * rows; ++i)
        map.SetCell(i % width, i / width, cells[static_cast<std::size_t>(i)]);
    DeviceLedItem fixture(L"Maker", L"Product", std::move(map), 1, channelCount);
    fixture.staticChannels = constants;
    return fixture;
}

[[nodiscard]] inline DMXMappingArtNet Address(int portAddress, int channel = 1,
                                              const std::wstring& ipconf = AutoNode)
{
    return {portAddress / 16, portAddress % 16, channel, ipconf, L""};
}

[[nodiscard]] inline UniverseMerging Merge(std::uint32_t from, int count, std::uint32_t to)
{
    return {true, from / 16, from % 16, count, to / 16, to % 16, MergerDMXSource::PixelWeft};
}

/// An element to place; at first it covers the whole canvas.
struct Placed
{
    DeviceLedItem fixture;
    DMXMappingArtNet address = Address(0);
    VideoMapping video{{0.5F, 0.5F}, {1, 1}, 0, false, false};
};

/// A document with its engine. No network is chosen, so frames are built and not sent.
class Show
{
public:
    /// Places the elements and makes the engine's buffers.
    explicit Show(const std::vector<Placed>& elements = {})
        : manager(QString())
        , engine((manager.Initialize(), manager))
    {
        for (const Placed& element : elements)
            Add(element);
        EXPECT_TRUE(Create());
    }

    MappedLedItem& Add(const Placed& element)
    {
        const auto id = Document().GetNextElementID();
        auto item = std::make_unique<MappedLedItem>(
            L"Element " + std::to_wstring(id), element.fixture,
            std::make_unique<VideoMapping>(element.video), &element.address);
        MappedLedItem& added = *item;
        added.uniqueID = id;
        Document().AddMappingElement(std::move(item));
        return added;
    }
    /// Rebuilds the engine's buffers.
    bool Create()
    {
        return engine.CreateElements(Document().GetCanvasWidth(), Document().GetCanvasHeight());
    }
    /// Sets up the output, on our own port where a network is chosen.
    void SetOutput(const UniverseMerging& merging, const std::wstring& broadcast = {})
    {
        Document().SetMerging(merging);
        engine.InitializeOutput(L"2.0.0.1", broadcast, L"", merging);
        for (int tick = 0; tick < 12; ++tick)
            engine.GetOutput().HandleEvent(OutputEvent::Tick);
    }
    /// Samples and sends; the result is that of SendFrame.
    int Frame(const ZenBitmap& source)
    {
        engine.UpdateElementBitmaps(source);
        return engine.SendFrame();
    }

    [[nodiscard]] Universes AllUniverses()
    {
        Universes universes;
        const ArtNetUniverses& tables = engine.GetOutput().GetUniverses();
        for (const auto& [port, universe] : tables.Broadcast())
            universes[{AutoNode, port}] = {universe.channels.begin(), universe.channels.end()};
        for (const auto& [key, universe] : tables.Unicast()) {
            const std::string_view address = key.first.Text();
            universes[{std::wstring(address.begin(), address.end()), key.second}] = {
                universe.channels.begin(), universe.channels.end()};
        }
        return universes;
    }
    /// The channels of a universe of the last frame, empty when there is none.
    [[nodiscard]] Bytes Universe(std::uint16_t portAddress)
    {
        return AllUniverses()[{AutoNode, portAddress}];
    }

    [[nodiscard]] MappedDeviceModel& Document() { return *manager.GetMappedDeviceModel(); }

    DeviceManager manager;
    LEDEngine engine;
};
