// SPDX-License-Identifier: MIT
// The order of elements by where they lie, and what a repatch makes of their addresses.
#include "Model/DeviceManager.h"
#include "Model/ElementCopies.h"
#include "Model/ElementOrder.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedObjectListProxy.h"
#include "Model/PatchText.h"
#include "Model/Repatch.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using enum ElementOrder::Corner;
using enum ElementOrder::Lines;

/// The indices of each line, with a "|" between lines.
std::string LinesText(const std::vector<QRectF>& boxes, const ElementOrder& order)
{
    std::string text;
    for (const auto& line : LinesByPlace(boxes, order)) {
        text += text.empty() ? "" : " |";
        for (const std::size_t index : line)
            text += (text.empty() ? "" : " ") + std::to_string(index);
    }
    return text;
}

TEST(ElementOrder, GoesFromAnyCornerInRowsOrColumns)
{
    // Three by two, not in their order in the document:  4 0 2
    //                                                    1 5 3
    const std::vector<QRectF> wall = {{20, 0, 20, 10},  {0, 10, 20, 10}, {40, 0, 20, 10},
                                      {40, 10, 20, 10}, {0, 0, 20, 10},  {20, 10, 20, 10}};
    using Case = std::tuple<ElementOrder, std::string>;
    for (const auto& [order, lines] : {
             Case{{Rows, TopLeft, false}, "4 0 2 | 1 5 3"},
             Case{{Rows, TopLeft, true}, "4 0 2 | 3 5 1"},
             Case{{Rows, TopRight, false}, "2 0 4 | 3 5 1"},
             Case{{Rows, TopRight, true}, "2 0 4 | 1 5 3"},
             Case{{Rows, BottomLeft, false}, "1 5 3 | 4 0 2"},
             Case{{Rows, BottomLeft, true}, "1 5 3 | 2 0 4"},
             Case{{Rows, BottomRight, false}, "3 5 1 | 2 0 4"},
             Case{{Rows, BottomRight, true}, "3 5 1 | 4 0 2"},
             Case{{Columns, TopLeft, false}, "4 1 | 0 5 | 2 3"},
             Case{{Columns, TopLeft, true}, "4 1 | 5 0 | 2 3"},
             Case{{Columns, TopRight, false}, "2 3 | 0 5 | 4 1"},
             Case{{Columns, BottomLeft, false}, "1 4 | 5 0 | 3 2"},
             Case{{Columns, BottomRight, true}, "3 2 | 0 5 | 1 4"},
         })
        EXPECT_EQ(LinesText(wall, order), lines) << order.lines << order.from << order.snake;
}

TEST(ElementOrder, FindsTheRowsThatOneSees)
{
    using Case = std::tuple<const char*, std::vector<QRectF>, std::string>;
    for (const auto& [what, boxes, lines] : {
             Case{"nothing", {}, ""},
             Case{"off the line by less than half", {{20, 4, 10, 10}, {0, 0, 10, 10}}, "1 0"},
             Case{"half", {{20, 5, 10, 10}, {0, 0, 10, 10}}, "1 0"},
             Case{"more than half", {{0, 6, 10, 10}, {20, 0, 10, 10}}, "1 | 0"},
             Case{"bricks", {{5, 7, 10, 10}, {0, 0, 10, 10}, {10, 0, 10, 10}}, "1 2 | 0"},
             Case{"a lamp on the edge of a panel", {{50, 60, 10, 10}, {0, 0, 40, 80}}, "1 | 0"},
             Case{"a lamp beside a panel", {{50, 50, 10, 10}, {0, 0, 40, 80}}, "1 0"},
             Case{"a slope of many", {{0, 0, 9, 10}, {10, 3, 9, 10}, {20, 6, 9, 10}}, "0 1 2"},
             Case{"at one place", {{0, 0, 5, 5}, {0, 0, 5, 5}, {0, 0, 5, 5}}, "0 1 2"},
             Case{"without size", {{9, 0, 0, 0}, {0, 0.4, 0, 0}, {0, 1.4, 0, 0}}, "1 0 | 2"},
         })
        EXPECT_EQ(LinesText(boxes, {}), lines) << what;
    EXPECT_EQ(LinesText({{0, 0, 5, 5}, {0, 0, 5, 5}}, {Rows, BottomRight, true}), "0 1");
}

// ---- Addresses ---------------------------------------------------------------------------------

class Repatching : public testing::Test
{
protected:
    Repatching() { manager.SetCanvasSize(1000, 1000); }

    /// An element of so many channels. Lengths are thousandths of the canvas.
    void Add(const std::wstring& name, int channels, QRectF place,
             std::optional<DMXMappingArtNet> address, float degrees = 0)
    {
        const auto thousandth = [](double length) {
            return static_cast<float>(length / 1000);
        };
        const QPointF centre = place.center();
        elements.push_back({name,
                            std::make_shared<DeviceLedItem>(
                                L"Maker", L"Lamp", PixelMap(2, 1, PixelMapType::RGB), 1, channels),
                            VideoMapping({thousandth(centre.x()), thousandth(centre.y())},
                                         {thousandth(place.width()), thousandth(place.height())},
                                         degrees, false, false),
                            std::move(address)});
    }
    static DMXMappingArtNet At(int universe, int channel, const wchar_t* node = AutoNode)
    {
        return {0, universe, channel, node, L""};
    }
    /// Puts what was added into the document; the first `chosen` of them are repatched.
    Repatch Of(std::size_t chosen)
    {
        manager.AddMappedItems(MakeElements(elements));
        ElementIds ids;
        for (std::size_t row = 0; row < chosen; ++row)
            ids.push_back(manager.GetMappedItemByRow(static_cast<int>(row))->uniqueID);
        return Repatch(manager, ids);
    }
    /// "name address" of each row, with the node of one that has any and the number of its faults.
    static std::string Text(const Repatch& repatch, const std::vector<RepatchRow>& rows)
    {
        QStringList texts;
        for (const RepatchRow& row : rows) {
            QString text = repatch.Elements()[row.element].description + QLatin1Char(' ') +
                           (row.address ? AddressText(*row.address) : QStringLiteral("-"));
            if (row.address && !row.address->IsAuto())
                text += QLatin1Char(' ') + QString::fromStdWString(row.address->GetIpconf());
            if (row.faults)
                text += QStringLiteral(" !%1").arg(static_cast<int>(row.faults));
            texts << text + (row.sharedWith.isEmpty() ? QString() : u'=' + row.sharedWith);
        }
        return texts.join(QStringLiteral(", ")).toStdString();
    }
    static std::string Text(const Repatch& repatch, const RepatchOptions& options)
    {
        return Text(repatch, repatch.Plan(options));
    }

    DeviceManager manager{QString()};
    bool ready = manager.Initialize();
    std::vector<ElementValues> elements;
};

} // namespace

TEST_F(Repatching, AWallIsSnakedFromTheBottomRight)
{
    // 16 x 9 panels of 36 channels, placed by hand: up to three pixels off.
    for (int row = 0; row < 9; ++row) {
        for (int column = 0; column < 16; ++column)
            Add(L"r" + std::to_wstring(row) + L"c" + std::to_wstring(column), 36,
                QRectF(60 * column + (row * 7 + column * 5) % 4, 100 * row + column % 4, 60, 100),
                At(3, 1));
    }
    const Repatch repatch = Of(144);
    RepatchOptions options;
    options.place = {Rows, BottomRight, true};
    auto rows = repatch.Plan(options);
    ASSERT_EQ(rows.size(), 144U);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto line = static_cast<int>(i / 16);
        const auto along = static_cast<int>(i % 16);
        const int column = line % 2 == 0 ? 15 - along : along;
        ASSERT_EQ(repatch.Elements()[rows[i].element].description,
                  QStringLiteral("r%1c%2").arg(8 - line).arg(column));
        EXPECT_EQ(rows[i].beginsLine, along == 0);
        EXPECT_FALSE(rows[i].faults);
    }
    // Fourteen panels fill a universe up to 504.
    for (const auto& [place, address] :
         {std::pair(0U, "0/0/1"), {13U, "0/0/469"}, {14U, "0/1/1"}, {143U, "0/10/109"}})
        EXPECT_EQ(AddressText(*rows[place].address), QLatin1String(address)) << place;
    options.rules.start = {0, 15, 1};
    options.rules.lineBeginsUniverse = true;
    rows = repatch.Plan(options);
    for (const auto& [place, address] : {std::pair(0U, "0/15/1"),
                                         {14U, "1/0/1"},
                                         {15U, "1/0/37"},
                                         {16U, "1/1/1"},
                                         {143U, "2/0/37"}})
        EXPECT_EQ(AddressText(*rows[place].address), QLatin1String(address)) << place;
}

TEST_F(Repatching, FollowsThePresentAddressOrTheList)
{
    Add(L"Bar-10", 36, {0, 0, 10, 10}, At(1, 1, L"2.0.0.9"));
    Add(L"Bar-9", 36, {30, 0, 10, 10}, std::nullopt);
    Add(L"Bar-2", 36, {10, 0, 10, 10}, At(1, 100));
    Add(L"Bar-1", 36, {20, 0, 10, 10}, At(1, 50, L"2.0.0.9"));
    Add(L"Bar-3", 36, {40, 0, 10, 10}, At(0, 400));
    manager.GetMappedObjectListProxy()->sort(MappedDeviceModel::NameColumn);
    const Repatch repatch = Of(5);
    EXPECT_EQ(repatch.LowestAddress(), (PatchAddress{0, 0, 400}));
    RepatchOptions options;
    options.rules.start = {2, 0, 1};
    options.sequence = RepatchOptions::AsListed;
    options.node = {L"2.0.0.7", L"Left"};
    EXPECT_EQ(Text(repatch, options), "Bar-1 2/0/1 2.0.0.7, Bar-2 2/0/37 2.0.0.7, "
                                      "Bar-3 2/0/73 2.0.0.7, Bar-9 2/0/109 2.0.0.7, "
                                      "Bar-10 2/0/145 2.0.0.7");
    EXPECT_EQ(repatch.Plan(options).front().address->GetIpName(), L"Left");
    // The universe that two nodes have goes node by node; what has no address comes last and gets
    // one.
    options.sequence = RepatchOptions::ByAddress;
    options.node.reset();
    options.rules.start = {0, 4, 1};
    options.rules.gap = 476; // a universe for each
    EXPECT_EQ(Text(repatch, options), "Bar-3 0/4/1, Bar-10 0/5/1 2.0.0.9, Bar-1 0/6/1 2.0.0.9, "
                                      "Bar-2 0/7/1, Bar-9 0/8/1");
    options.sequence = RepatchOptions::ByPlace;
    options.rules.gap = 0;
    options.node = {AutoNode, L""};
    EXPECT_EQ(Text(repatch, options),
              "Bar-10 0/4/1, Bar-2 0/4/37, Bar-1 0/4/73, Bar-9 0/4/109, Bar-3 0/4/145");
}

TEST_F(Repatching, SaysWhatWouldBeWrong)
{
    Add(L"A", 100, {0, 0, 10, 10}, At(0, 1));
    Add(L"B", 100, {10, 0, 10, 10}, At(15, 1));
    Add(L"Other", 10, {20, 0, 10, 10}, At(0, 105));
    Add(L"Apart", 10, {20, 0, 10, 10}, At(2, 105, L"2.0.0.5"));
    Add(L"There", 10, {20, 0, 10, 10}, At(5, 150));
    UniverseMerging merging = UniverseMerging::OfNewDocument();
    merging = UniverseMerging(true, 0, 8, 2, 0, 4, MergerDMXSource::PixelWeft);
    manager.GetMappedDeviceModel()->SetMerging(merging);
    const Repatch repatch = Of(2);
    EXPECT_EQ(repatch.BehindTheOthers(36), (PatchAddress{0, 5, 160}));
    EXPECT_EQ(repatch.BehindTheOthers(399), (PatchAddress{0, 6, 1}));
    const auto none = static_cast<int>(RepatchFault::NoUniverse);
    const auto cut = static_cast<int>(RepatchFault::CutOff);
    const auto shared = static_cast<int>(RepatchFault::SharedChannels);
    const auto merger = static_cast<int>(RepatchFault::MergerTarget);
    const auto mixed = static_cast<int>(RepatchFault::MixedUniverse);
    struct Case
    {
        PatchAddress start;
        bool neverSplit;
        const wchar_t* node;
        std::string a;
        std::string b;
    };
    const auto fault = [](int faults, const char* with = "") {
        return " !" + std::to_string(faults) + with;
    };
    for (const Case& each : {
             Case{{0, 0, 1}, true, nullptr, "0/0/1", "0/0/101" + fault(shared, "=Other")},
             {{0, 0, 115}, true, nullptr, "0/0/115", "0/0/215"},
             {{0, 1, 400}, true, nullptr, "0/1/400", "0/2/1" + fault(mixed)},
             {{0, 2, 1},
              true,
              L"2.0.0.5",
              "0/2/1 2.0.0.5",
              "0/2/101 2.0.0.5" + fault(shared, "=Apart")},
             {{0, 2, 1}, true, L"2.0.0.6", "0/2/1 2.0.0.6", "0/2/101 2.0.0.6"},
             {{0, 5, 450}, false, nullptr, "0/5/450" + fault(cut | merger), "0/6/38"},
             {{0, 3, 450}, true, nullptr, "0/4/1" + fault(merger), "0/4/101" + fault(merger)},
             // The merger takes them to 0/4 and 0/5.
             {{0, 8, 1}, true, nullptr, "0/8/1", "0/8/101"},
             {{0, 9, 1}, true, nullptr, "0/9/1", "0/9/101" + fault(shared, "=There")},
             {{15, 15, 350}, true, nullptr, "15/15/350", "0/15/1" + fault(none)},
             {{15, 15, 450}, false, nullptr, "15/15/450" + fault(cut), "0/15/1" + fault(none)},
         })
    {
        RepatchOptions options;
        options.rules = {each.start, 0, each.neverSplit, false};
        if (each.node)
            options.node = {each.node, L""};
        EXPECT_EQ(Text(repatch, options), "A " + each.a + ", B " + each.b);
        for (const RepatchRow& row : repatch.Plan(options))
            EXPECT_EQ(row.Words().isEmpty(), row.GetTrouble() == Trouble::None);
    }
}

TEST_F(Repatching, TurnedElementsCountByTheirCentres)
{
    // Bars on their side: their centres lie in one row, their unturned rectangles don't.
    Add(L"Second", 3, {300, 95, 100, 10}, At(0, 1), 90);
    Add(L"First", 3, {100, 140, 100, 10}, At(0, 1), 270);
    Add(L"Third", 3, {500, 60, 10, 100}, At(0, 1));
    Add(L"Below", 3, {0, 220, 100, 10}, At(0, 1), 45);
    const Repatch repatch = Of(4);
    EXPECT_EQ(Text(repatch, RepatchOptions()),
              "First 0/0/1, Second 0/0/4, Third 0/0/7, Below 0/0/10");
    const auto addresses = repatch.AddressesOf(repatch.Plan(RepatchOptions()));
    manager.SetAddresses(addresses);
    EXPECT_EQ(manager.GetMappedItemByRow(2)->GetArtNetMapping()->GetChannel(), 7);
}
