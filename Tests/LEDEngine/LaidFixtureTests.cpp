// SPDX-License-Identifier: MIT
// Fixtures from the operator's hand to the wire: laid, saved in a library, read again, placed.
#include <random>

#include <gtest/gtest.h>

#include "Show.h"
#include "Support/LayoutWalk.h"
#include "Support/TemporaryFolder.h"

namespace {

/// What the channels of each type hold: colours, inverted ones in capitals, x y z without their
/// white, which is w; l luminance, a amber, i intensity.
const std::string TypeSlots[] = {"rgb",    "rbg",  "grb",   "gbr", "brg", "bgr", "rgbi",
                                 "rgb0",   "rgbl", "xyzw",  "l",   "RGB", "BGR", "rgb000",
                                 "rrggbb", "rgba", "rgbia", "rb",  "r",   "g",   "b"};

int SlotValue(char slot, int r, int g, int b)
{
    const int white = std::min({r, g, b});
    const std::pair<std::string_view, std::vector<int>> values{
        "rgbRGBxyzwail0",
        {r, g, b, 255 - r, 255 - g, 255 - b, r - white, g - white, b - white, white, std::min(r, g),
         255, (r + g + g / 2 + b / 2) / 3, 0}};
    return values.second.at(values.first.find(slot));
}

/// The centre of no cell of a grid up to 6 x 6 is between two of its pixels.
constexpr int Side = 61;

const Rgb& Sampled(const std::vector<Rgb>& picture, const PixelMap& map, int cell)
{
    const int x = (2 * (cell % map.GetWidth()) + 1) * Side / (2 * map.GetWidth());
    const int y = (2 * (cell / map.GetWidth()) + 1) * Side / (2 * map.GetHeight());
    return picture.at(static_cast<std::size_t>(y * Side + x));
}

Bytes Expected(const FixtureLayout& layout, const std::vector<Rgb>& picture)
{
    const PixelMap& map = layout.GetPixelMap();
    Bytes bytes;
    for (const auto& [pixel, component, value] : layout.GetChannelUses()) {
        int byte = std::max(value, 0);
        // The engine sends no pixel that has the last channel of a universe.
        if (pixel >= 0 && std::ssize(bytes) - component + map.GetChannelsPerPixel() < 512) {
            const auto& [r, g, b] = Sampled(picture, map, pixel);
            const std::string& slotNames = TypeSlots[static_cast<int>(map.GetType())];
            byte = SlotValue(slotNames.at(static_cast<std::size_t>(component)), r, g, b);
        }
        bytes.push_back(static_cast<std::uint8_t>(byte));
    }
    return bytes;
}

TEST(LaidFixtures, AThousandReachTheWireThroughTheLibrarysFile)
{
    std::mt19937 random(1);
    const Support::Below below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    const std::wstring names[] = {L"Bar", L"\"5' \U0001F4A1\" <&amp;>", L"Two\n \tlines\r",
                                  std::wstring(500, L'\u00E9')};
    std::vector<FixtureLayout> layouts;
    DeviceModel made;
    for (int i = 0; i < 1000; ++i) {
        FixtureLayout& layout = layouts.emplace_back(Support::AnySize(below));
        for (int operations = below(40); operations > 0; --operations)
            Support::LayAnyhow(layout, below);
        auto item = std::make_unique<DeviceLedItem>(
            names[below(4)], names[below(4)] + std::to_wstring(i), layout.GetPixelMap(),
            made.GetNextUniqueID(), layout.GetChannelCount());
        item->staticChannels = layout.GetConstants();
        ASSERT_EQ(made.AddFixture(std::move(item)), 0);
    }
    const Support::TemporaryFolder folder;
    const std::wstring file = (folder.Path() / "library.wfl").wstring();
    ASSERT_TRUE(made.Save(file));
    DeviceModel read;
    read.Merge(file, true);
    ASSERT_EQ(read.GetFixtures().keys(), made.GetFixtures().keys());

    std::vector<Placed> elements;
    for (const DeviceLedItem* item : read.GetFixtures()) {
        const DeviceLedItem& before = *made.GetLEDFixture(item->uniqueID);
        ASSERT_EQ(item->manufacturer, before.manufacturer);
        ASSERT_EQ(item->product, before.product);
        elements.push_back({*item, Address(static_cast<int>(elements.size()))});
    }
    std::vector<Rgb> colours(Side * Side);
    for (Rgb& colour : colours) {
        for (std::uint8_t* part : {&colour.r, &colour.g, &colour.b})
            *part = static_cast<std::uint8_t>(below(256));
    }
    Show show(elements);
    show.Frame(*Picture(Side, Side, colours));
    auto universes = show.AllUniverses();
    for (std::size_t i = 0; i < layouts.size() && !testing::Test::HasFailure(); ++i) {
        EXPECT_EQ(FixtureLayout(elements[i].fixture).GetChannelUses(), layouts[i].GetChannelUses());
        EXPECT_EQ((universes[{AutoNode, static_cast<std::uint16_t>(i)}]),
                  Expected(layouts[i], colours))
            << i;
    }
}

} // namespace
