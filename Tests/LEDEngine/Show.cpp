// SPDX-License-Identifier: MIT
#include "Show.h"

#include <gtest/gtest.h>

std::unique_ptr<ZenBitmap> Picture(int width, int height, const std::vector<Rgb>& colours,
                                   std::uint32_t format)
{
    auto picture = ZenBitmap::Create(width, height, format);
    std::uint8_t* next = picture->data;
    for (const Rgb& colour : colours) {
        for (const std::uint8_t byte : {colour.b, colour.g, colour.r})
            *next++ = byte;
        if (format == 4)
            *next++ = 255;
    }
    return picture;
}

DeviceLedItem Fixture(PixelMapType type, const std::vector<std::int32_t>& cells, int channelCount,
                      const StaticChannelList& constants, int rows)
{
    const int width = static_cast<int>(cells.size()) / rows;
    PixelMap map(width, rows, type);
    for (int i = 0; i < width * rows; ++i)
        map.SetCell(i % width, i / width, cells[static_cast<std::size_t>(i)]);
    DeviceLedItem fixture(L"Maker", L"Product", std::move(map), 1, channelCount);
    fixture.staticChannels = constants;
    return fixture;
}

DMXMappingArtNet Address(int portAddress, int channel, const std::wstring& ipconf)
{
    return {portAddress / 16, portAddress % 16, channel, ipconf, L""};
}

UniverseMerging Merge(int from, int count, int to)
{
    const auto number = [](int value) {
        return static_cast<std::uint32_t>(value);
    };
    return {true,
            number(from / 16),
            number(from % 16),
            count,
            number(to / 16),
            number(to % 16),
            MergerDMXSource::PixelWeft};
}

Show::Show(const std::vector<Placed>& elements)
    : manager(QString())
    , engine((manager.Initialize(), manager))
{
    for (const Placed& element : elements)
        Add(element);
    EXPECT_TRUE(Create());
}

MappedLedItem& Show::Add(const Placed& element)
{
    auto item = std::make_unique<MappedLedItem>(element.name, element.fixture,
                                                std::make_unique<VideoMapping>(element.video),
                                                &element.address);
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

void Show::SetMerging(const UniverseMerging& merging)
{
    Document().SetMerging(merging);
    engine.InitializeOutput(L"", L"", L"", merging);
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
