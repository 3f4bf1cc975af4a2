// SPDX-License-Identifier: MIT
#include "Show.h"

#include <gtest/gtest.h>

std::unique_ptr<ZenBitmap> Picture(int width, int height, const std::vector<Rgb>& colours,
                                   std::uint32_t format)
{
    auto picture = ZenBitmap::Create(width, height, format);
    std::uint8_t* next = picture->data;
    for (const Rgb& colour : colours) {
        *next++ = colour.b;
        *next++ = colour.g;
        *next++ = colour.r;
        if (format == 4)
            *next++ = 255;
    }
    EXPECT_EQ(next, picture->data + std::ptrdiff_t{picture->bytesPerRow} * height);
    return picture;
}

PixelMap MapOf(int width, int height, PixelMapType type, std::initializer_list<std::int32_t> cells)
{
    PixelMap map(width, height, type);
    std::int32_t index = 0;
    for (const std::int32_t cell : cells) {
        map.SetCell(index % width, index / width, cell);
        ++index;
    }
    EXPECT_EQ(index, width * height);
    return map;
}

DeviceLedItem FixtureOf(PixelMap map, int channelCount, const StaticChannelList& constants)
{
    DeviceLedItem fixture(L"Maker", L"Product", std::move(map), 1, channelCount);
    fixture.staticChannels = constants;
    return fixture;
}

VideoMapping WholeCanvas()
{
    return {{0.5F, 0.5F}, {1.0F, 1.0F}, 0.0F, false, false};
}

DMXMappingArtNet Address(int subnet, int universe, int channel, const std::wstring& ipconf)
{
    return {subnet, universe, channel, ipconf, L""};
}

Show::Show()
    : manager(QString())
    , engine((manager.Initialize(), manager))
{}

MappedLedItem& Show::Add(const DeviceLedItem& fixture, const VideoMapping& video,
                         const DMXMappingArtNet& address, const std::wstring& name)
{
    auto item = std::make_unique<MappedLedItem>(name, fixture,
                                                std::make_unique<VideoMapping>(video), &address);
    MappedLedItem& added = *item;
    added.uniqueID = Document().GetNextElementID();
    Document().AddMappingElement(std::move(item));
    return added;
}

bool Show::Create()
{
    engine.ReleaseElements();
    return engine.CreateElements(Document().GetCanvasWidth(), Document().GetCanvasHeight());
}

int Show::Frame(const ZenBitmap& source)
{
    engine.UpdateElementBitmaps(source);
    return engine.SendFrame();
}

Universes Show::AllUniverses()
{
    Universes universes;
    const ArtNetUniverses& tables = engine.GetOutput().GetUniverses();
    for (const auto& [port, universe] : tables.Broadcast()) {
        EXPECT_EQ(universe.portAddress, port);
        universes[{AutoNode, port}] = {universe.channels.begin(), universe.channels.end()};
    }
    for (const auto& [key, universe] : tables.Unicast()) {
        EXPECT_EQ(universe.portAddress, key.second);
        const std::string_view address = key.first.Text();
        universes[{std::wstring(address.begin(), address.end()), key.second}] = {
            universe.channels.begin(), universe.channels.end()};
    }
    return universes;
}

Bytes Show::Universe(int portAddress, const std::wstring& address)
{
    return AllUniverses()[{address, static_cast<std::uint16_t>(portAddress)}];
}
