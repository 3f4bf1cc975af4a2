// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "LEDEngine/LEDEngine.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"

/// A document of patched elements with its engine. Frames are built and not sent: there is no
/// Art-Net service.
class PatchedShow : public testing::Test
{
protected:
    PatchedShow() { manager.Initialize(); }

    struct Bar
    {
        int portAddress = 0;
        int channel = 1;
        int channels = 6; ///< pixels of three channels each
        std::wstring node = AutoNode;
        int freeChannel = 0;
    };
    /// Its number, which its name ends with.
    std::int64_t Add(const Bar& bar)
    {
        PixelMap map(bar.channels / 3, 1, PixelMapType::RGB);
        for (int pixel = 0; pixel < bar.channels / 3; ++pixel)
            map.SetCell(pixel, 0, 1 + 3 * pixel);
        DeviceLedItem fixture(L"Maker", L"Bar", std::move(map), 1, bar.channels);
        if (bar.freeChannel > 0)
            fixture.staticChannels.SetUnassigned(bar.freeChannel, 1);
        const DMXMappingArtNet address(bar.portAddress / 16, bar.portAddress % 16, bar.channel,
                                       bar.node, bar.node == AutoNode ? L"" : L"Stage left");
        const std::int64_t id = Document().GetNextElementID();
        auto element = std::make_unique<MappedLedItem>(
            L"Bar " + std::to_wstring(id), fixture,
            std::make_unique<VideoMapping>(VideoMapping{{0.5F, 0.5F}, {1, 1}, 0, false, false}),
            &address);
        element->uniqueID = id;
        Document().AddMappingElement(std::move(element));
        return id;
    }
    void Merge(std::uint32_t from, int count, std::uint32_t to, bool on = true)
    {
        Document().SetMerging(
            {on, from / 16, from % 16, count, to / 16, to % 16, MergerDMXSource::PixelWeft});
    }
    /// On a network, with the port ours.
    void Connect(const std::wstring& broadcast = L"2.255.255.255")
    {
        engine.InitializeOutput(L"2.0.0.1", broadcast, L"", Document().GetMerging());
        for (int tick = 0; tick < 12; ++tick)
            engine.GetOutput().HandleEvent(OutputEvent::Tick);
    }
    /// Builds a frame of a picture in one colour.
    void Frame(std::uint8_t red, std::uint8_t green, std::uint8_t blue)
    {
        constexpr std::uint32_t fourBytes = 4;
        const auto picture = ZenBitmap::Create(1, 1, fourBytes);
        std::ranges::copy(std::initializer_list<std::uint8_t>{blue, green, red, 255},
                          picture->data);
        EXPECT_TRUE(engine.CreateElements(100, 100));
        engine.UpdateElementBitmaps(*picture);
        engine.SendFrame();
    }
    [[nodiscard]] MappedDeviceModel& Document() { return *manager.GetMappedDeviceModel(); }
    [[nodiscard]] DMXMappingArtNet AddressOf(std::int64_t id)
    {
        return *Document().GetItemByUniqueID(id)->GetArtNetMapping();
    }

    DeviceManager manager{QString()};
    LEDEngine engine{manager};
    ArtNetNodeModel nodes;
};
