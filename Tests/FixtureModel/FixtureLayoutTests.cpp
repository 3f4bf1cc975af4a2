// SPDX-License-Identifier: MIT
#include <climits>
#include <random>

#include <gtest/gtest.h>

#include "Support/LayoutWalk.h"
#include "XmlText/XmlText.h"

namespace {

using enum GridCorner;
using enum PixelMapType;
using enum FixtureLayout::Loss;

LEDFixture Fixture(const FixtureSize& size, const std::vector<std::int32_t>& cells,
                   const StaticChannelList& constants = {})
{
    PixelMap map(size.width, size.height, size.type);
    for (int i = 0; i < size.width * size.height; ++i)
        map.SetCell(i % size.width, i / size.width, cells.at(static_cast<std::size_t>(i)));
    LEDFixture fixture(L"Maker", L"Product", std::move(map), 1, size.channelCount);
    fixture.staticChannels = constants;
    return fixture;
}

TEST(AutoMapWalk, StartsAtTheCornerAndRunsInItsDirection)
{
    const auto walk = [](const AutoMapWalk& way, int width, int height) {
        std::string cells;
        for (const std::int32_t cell : way.Cells(width, height))
            cells += std::to_string(cell);
        return cells;
    };
    // By corner: row by row, the same as a snake, column by column, the same as a snake.
    const std::string orders[][4] = {{"012345", "012543", "031425", "034125"},
                                     {"210543", "210345", "251403", "254103"},
                                     {"345012", "345210", "304152", "301452"},
                                     {"543210", "543012", "524130", "521430"}};
    for (int corner = 0; corner < 4; ++corner) {
        for (int way = 0; way < 4; ++way)
            EXPECT_EQ(walk({static_cast<GridCorner>(corner), way < 2, way % 2 == 1}, 3, 2),
                      orders[corner][way]);
    }
    EXPECT_EQ(walk({}, 0, 3) + walk({TopLeft, false}, 2, -1), "");
}

// ---- Rules -------------------------------------------------------------------------------------

/// Pixels 1 and 3 of 2 x 2, a constant between them, and five free channels.
constexpr FixtureSize Small{2, 2, RB, 10};
const std::string SmallUses = "R1 B1 7 R3 B3 * * * * *";
using Layout = FixtureLayout;

Layout SmallLayout()
{
    return Layout(Fixture(Small, {1, 0, 4, 0}, {{3, 7}}));
}

/// The channels as the operator reads them, of a layout of the type RB.
std::string UsesOf(const Layout& layout)
{
    std::string text;
    for (const auto& [pixel, component, value] : layout.GetChannelUses()) {
        text += text.empty() ? "" : " ";
        if (pixel >= 0)
            text += (component == 0 ? "R" : "B") + std::to_string(pixel + 1);
        else
            text += value < 0 ? "*" : std::to_string(value);
    }
    return text;
}

void Lay(Layout& layout, std::int32_t channel, std::int32_t cell)
{
    layout.SetNextChannel(channel);
    layout.MapPixel(cell);
}

TEST(FixtureLayout, EachOperation)
{
    using L = Layout&;
    struct Case
    {
        void (*change)(L layout);
        std::string uses;
        std::int32_t next;
    };
    const Case cases[] = {
        {[](L) {}, SmallUses, 1},
        // One behind the other, up to the last channel, and one further.
        {[](L l) { Lay(l, 6, 1), l.MapPixel(3); }, "R1 B1 7 R3 B3 R2 B2 R4 B4 *", 10},
        {[](L l) { Lay(l, 9, 1), l.MapPixel(3); }, "R1 B1 7 R3 B3 * * * R2 B2", 11},
        {[](L l) { l.UnmapPixel(2), l.MapPixel(0); }, "R1 B1 7 * * * * * * *", 3},
        {[](L l) { Lay(l, 10, 0); }, SmallUses, 10},
        {[](L l) { Lay(l, 0, 0); }, SmallUses, 0},
        // Over a pixel and the constant, the constant and a pixel, a pixel's last channel, two.
        {[](L l) { Lay(l, 2, 1); }, "* R2 B2 R3 B3 * * * * *", 4},
        {[](L l) { Lay(l, 3, 3); }, "R1 B1 R4 B4 * * * * * *", 5},
        {[](L l) { Lay(l, 5, 1); }, "R1 B1 7 * R2 B2 * * * *", 7},
        {[](L l) { Lay(l, 2, 0), Lay(l, 3, 1); }, "* * R2 B2 * * * * * *", 5},
        // Where the pixel lies already, and one channel on.
        {[](L l) { Lay(l, 4, 2); }, SmallUses, 6},
        {[](L l) { Lay(l, 5, 2); }, "R1 B1 7 * R3 B3 * * * *", 7},
        {[](L l) { Lay(l, 8, 0), l.UnmapPixel(0); }, "* * 7 R3 B3 * * * * *", 10},
        {[](L l) { l.AdvanceNextChannel(); }, SmallUses, 3},
        {[](L l) { l.UnmapPixel(0), Lay(l, 4, 2), l.UnmapPixel(2), l.AdvanceNextChannel(); },
         "* * 7 * * * * * * *", 1},
        {[](L l) { Lay(l, 6, 3), l.ResetMapping(); }, "* * 7 * * * * * * *", 1},
        {[](L l) { Lay(l, 6, 3), l.ResetConstants(); }, "R1 B1 * R3 B3 R4 B4 * * *", 8},
        {[](L l) { l.SetConstant(10, 255), l.SetConstant(2, 0), l.SetConstant(3, -1); },
         "* 0 * R3 B3 * * * * 255", 1},
        {[](L l) { l.SetConstant(4, -1), l.SetConstant(0, 9), l.SetConstant(11, 9); },
         "R1 B1 7 * * * * * * *", 1},
        {[](L l) { Lay(l, 6, 1), l.AutoMap(1, {}); }, "R1 B1 R2 B2 R3 B3 R4 B4 * *", 1},
        {[](L l) {
             l.AutoMap(3, {BottomRight, false, true});
         },
         "* * R4 B4 R2 B2 R1 B1 R3 B3", 1},
        {[](L l) { l.AutoMap(4, {}), l.AutoMap(0, {}); }, SmallUses, 1},
    };
    for (const Case& each : cases) {
        Layout layout = SmallLayout();
        each.change(layout);
        EXPECT_EQ(UsesOf(layout), each.uses) << &each - cases;
        EXPECT_EQ(layout.GetNextChannel(), each.next) << &each - cases;
        EXPECT_EQ(layout.GetSize(), Small) << &each - cases;
    }
}

TEST(FixtureLayout, QuestionsBeforeAnOperation)
{
    Layout layout = SmallLayout();
    layout.SetConstant(3, -1);
    layout.SetConstant(10, 0);
    // By channel from 0: whether a pixel fits, overrides, and whether auto-mapping overrides.
    std::string answers;
    for (int channel = 0; channel <= 10; ++channel) {
        layout.SetNextChannel(channel);
        answers += layout.NextPixelFits() ? 'f' : '-';
        answers += layout.NextPixelOverrides() ? 'o' : '-';
        answers += layout.AutoMapOverrides(channel) ? "a " : "- ";
    }
    EXPECT_EQ(answers, "-o- fo- fo- foa foa foa f-a f-a f-a foa -oa ");
    EXPECT_EQ(layout.LastAutoMapStart(), 3);
    EXPECT_LT(Layout({512, 512, RGBXXX, 512}).LastAutoMapStart(), 1);
    EXPECT_TRUE(Layout({170, 1, RGB, 0}).AllPixelsFitUniverse());
    EXPECT_FALSE(Layout({19, 9, RGB, 512}).AllPixelsFitUniverse());
    EXPECT_TRUE(Layout({16, 32, L, 0}).AllPixelsFitUniverse());
    EXPECT_FALSE(Layout({19, 27, L, 512}).AllPixelsFitUniverse());
}

TEST(FixtureLayout, ANewSize)
{
    struct Case
    {
        FixtureSize size;
        Layout::Loss loss;
        std::string uses;
        std::int32_t next;
        bool pixels = true; ///< or none before
        bool constants = true;
    };
    const Case cases[] = {
        {Small, None, SmallUses, 8},
        {{2, 2, CMY, 10}, Everything, "* * 7 * * * * * * *", 1},
        {{3, 2, RB, 12}, Everything, "* * 7 * * * * * * * * *", 1},
        {{2, 1, RB, 3}, Everything, "* * 7", 1, false},
        {{2, 1, RB, 2}, Everything, "* *", 1, true, false},
        {{2, 1, RB, 9}, None, "* * * * * * * * *", 1, false, false},
        {{2, 2, RB, 12}, None, SmallUses + " * *", 8},
        {{2, 2, RB, 5}, None, "R1 B1 7 R3 B3", 8},
        {{2, 2, RB, 4}, RemovedChannels, "R1 B1 7 *", 8},
        {{2, 2, RB, 3}, None, "* * 7", 8, false},
        {{2, 2, RB, 2}, RemovedChannels, "* *", 8, false},
        {{2, 2, RB, 1}, RemovedChannels, "*", 8},
        {{2, 2, RB, 0}, None, "", 8, false, false},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(&each - cases);
        Layout layout = SmallLayout();
        if (!each.pixels)
            layout.ResetMapping();
        if (!each.constants)
            layout.ResetConstants();
        layout.SetNextChannel(8);
        EXPECT_EQ(layout.LossOf(each.size), each.loss);
        layout.Resize(each.size);
        EXPECT_EQ(layout.GetSize(), each.size);
        EXPECT_EQ(UsesOf(layout), each.uses);
        EXPECT_EQ(layout.GetNextChannel(), each.next);
    }
    // What a file has behind the last channel: pixels stay, and a constant gives way.
    Layout layout(Fixture({2, 1, RB, 1}, {3, 5}, {{2, 9}, {7, 9}}));
    EXPECT_EQ(layout.LossOf(layout.GetSize()), None);
    layout.Resize({2, 1, RB, 8});
    EXPECT_EQ(UsesOf(layout), "* * R1 B1 R2 B2 * *");
}

// ---- Any order of operations -------------------------------------------------------------------

/// As a file may have it: pixels that overlap or lie beyond the channels, constants beyond.
LEDFixture FromFile(const Support::Below& below)
{
    FixtureSize size = Support::AnySize(below);
    if (below(4) == 0)
        size.channelCount = LEDFixture::AutomaticChannelCount;
    std::vector<std::int32_t> cells(static_cast<std::size_t>(size.width * size.height));
    for (std::int32_t& cell : cells) {
        const int odd[] = {below(8) - 6, below(20) + 500, INT_MAX, INT_MIN};
        if (below(4) > 0)
            cell = below(5) > 0 ? below(80) : odd[below(4)];
    }
    LEDFixture fixture = Fixture(size, cells);
    const auto covered = fixture.pixelMap.GetCoveredChannels();
    for (int i = below(20); i > 0; --i) {
        const int channel = below(below(4) > 0 ? 80 : 512) + 1;
        if (!covered.test(static_cast<std::size_t>(channel)))
            fixture.staticChannels.Set(channel, below(257) - 1);
    }
    return fixture;
}

/// The layout after it was written and read.
Layout Again(const Layout& layout)
{
    LEDFixture fixture(L"M", L"P", layout.GetPixelMap(), 1, layout.GetChannelCount());
    fixture.staticChannels = layout.GetConstants();
    XmlText::Document document;
    fixture.ToXml(XmlText::AddElement(document, "P"));
    std::int32_t intensity = 0;
    return Layout(*LEDFixture::FromXml(*document.FirstChild()->FirstChildElement(), 1, intensity));
}

TEST(FixtureLayout, RulesHoldAfterEveryOperation)
{
    std::mt19937 random(20);
    const Support::Below below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    for (int round = 0; round < 300 && !testing::Test::HasFailure(); ++round) {
        Layout layout = round % 3 == 0 ? Layout(Support::AnySize(below)) : Layout(FromFile(below));
        for (int step = 0; step < 30; ++step) {
            SCOPED_TRACE(std::to_string(round) + ", " + std::to_string(step));
            ASSERT_EQ(Support::FaultOf(layout), "");
            const auto before = Support::FaultyCells(layout);
            if (below(6) == 0)
                Support::ResizeAnyhow(layout, below);
            else
                Support::LayAnyhow(layout, below);
            ASSERT_LE(Support::FaultyCells(layout), before);
        }
        const Layout again = Again(layout);
        EXPECT_EQ(again.GetPixelMap(), layout.GetPixelMap());
        EXPECT_EQ(again.GetChannelUses(), layout.GetChannelUses());
    }
}

TEST(FixtureLayout, AMillionPixelsOnOneChannelTakeNoMillionWalks)
{
    const Layout full(Fixture({1000, 1000, RGB, 512}, std::vector(1'000'000, 3)));
    Layout layout = full;
    Lay(layout, 1, 0);
    EXPECT_EQ(layout.GetPixelMap().GetHighestStartChannel(), 1);
    layout = full;
    layout.SetConstant(5, 7);
    EXPECT_EQ(layout.GetPixelMap().GetHighestStartChannel(), 0);
    layout = full;
    layout.Resize({1000, 1000, RGB, 4});
    EXPECT_EQ(layout.GetPixelMap().GetHighestStartChannel(), 0);
}

} // namespace
