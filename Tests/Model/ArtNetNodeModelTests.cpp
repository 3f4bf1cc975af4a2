// SPDX-License-Identifier: MIT
#include <chrono>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <QColor>
#include <QCoreApplication>
#include <QHeaderView>
#include <QTreeView>

#include "Model/ArtNetNodeModel.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"

namespace {

constexpr std::uint32_t Network = 0x02FFFFFF;
using Lines = std::vector<std::string>;

ArtNetNodeRecord Node(const std::string& ip, const std::string& name,
                      std::initializer_list<std::uint16_t> ports = {})
{
    ArtNetNodeRecord record;
    record.ip = ip;
    record.name = name;
    for (const std::uint16_t port : ports)
        record.universes.push_back({port, 0});
    return record;
}

class ArtNetNodeModelTest : public testing::Test
{
protected:
    ArtNetNodeModel nodes;
    MappedDeviceModel document;

    void Place(const std::wstring& ip, int subnet, int universe, const std::wstring& name = {},
               const std::wstring& description = L"Lamp")
    {
        const DMXMappingArtNet address(subnet, universe, 1, ip, name);
        const DeviceLedItem fixture(L"Maker", L"Lamp", PixelMap(1, 1, PixelMapType::RGB), 1, 3);
        auto element = std::make_unique<MappedLedItem>(description, fixture, nullptr, &address);
        document.AddMappingElement(std::move(element));
    }

    static std::string TextOf(const QStandardItemModel& model, int row, const QModelIndex& parent)
    {
        QStringList cells;
        for (int column = 0; column < 5; ++column)
            cells << model.index(row, column, parent).data().toString();
        return cells.join(QLatin1Char('|')).toStdString();
    }

    /// All rows, those of ports behind a point.
    Lines Rows(QTreeView* view = nullptr)
    {
        nodes.Rebuild(document, view, Network);
        Lines lines;
        for (int row = 0; row < nodes.rowCount(); ++row) {
            lines.push_back(TextOf(nodes, row, {}));
            const QModelIndex parent = nodes.index(row, 0);
            for (int port = 0; port < nodes.rowCount(parent); ++port)
                lines.push_back("." + TextOf(nodes, port, parent));
        }
        return lines;
    }

    bool IsRed(int row, int column = 0, const QModelIndex& parent = {})
    {
        return nodes.index(row, column, parent).data(Qt::ForegroundRole).value<QColor>() ==
               QColor(Qt::red);
    }
};

TEST_F(ArtNetNodeModelTest, ANodeShowsItsPortsBySubNetAndUniverse)
{
    EXPECT_TRUE(nodes.UpdateNodes({Node("2.0.0.10", "Left", {0, 0x7FFF, 0x12})}));
    EXPECT_EQ(Rows(),
              (Lines{"Left|2.0.0.10|0||", ".Port 0|||0|0", ".Port 1|||15|15", ".Port 2|||1|2"}));
    EXPECT_FALSE(IsRed(0));
    EXPECT_FALSE(IsRed(2, 3, nodes.index(0, 0)));
    QStringList labels;
    for (int column = 0; column < 5; ++column)
        labels << nodes.headerData(column, Qt::Horizontal).toString();
    EXPECT_EQ(labels.join(QLatin1Char(' ')), QStringLiteral("Name IP Nb Sub Univ"));
}

TEST_F(ArtNetNodeModelTest, OnlyNewsAskForNewRows)
{
    const auto left = Node("2.0.0.10", "Left", {1});
    const auto right = Node("2.0.0.11", "Right", {2});
    EXPECT_TRUE(nodes.UpdateNodes({left}));
    EXPECT_FALSE(nodes.UpdateNodes({left}));
    EXPECT_TRUE(nodes.UpdateNodes({left, right}));
    EXPECT_FALSE(nodes.UpdateNodes({right, left})) << "the order of answers is none";
    EXPECT_TRUE(nodes.UpdateNodes({left, Node("2.0.0.11", "Right", {3})}));
    EXPECT_EQ(Rows().back(), ".Port 0|||0|3");
    EXPECT_TRUE(nodes.UpdateNodes({left})) << "one is gone";
    EXPECT_FALSE(nodes.UpdateNodes({left}));
    EXPECT_TRUE(nodes.UpdateNodes({left, right})) << "and back";
}

TEST_F(ArtNetNodeModelTest, WhatIsGoneStaysAndTurnsRed)
{
    nodes.UpdateNodes({Node("2.0.0.10", "Left", {1})});
    nodes.UpdateNodes({});
    EXPECT_EQ(Rows(), (Lines{"Left|2.0.0.10|0||", ".Port 0|||0|1"}));
    EXPECT_TRUE(IsRed(0));
    EXPECT_TRUE(IsRed(0, 3, nodes.index(0, 0)));
    EXPECT_FALSE(nodes.IsManualNode(QStringLiteral("2.0.0.10")));
    EXPECT_TRUE(nodes.GetOfflineNodes().contains(QStringLiteral("2.0.0.10")));
}

TEST_F(ArtNetNodeModelTest, OurOwnKindIsSeenAndNoPlaceToSendTo)
{
    nodes.UpdateNodes({Node("2.0.0.1", "Zentri PixelWeft"), Node("2.0.0.2", "My ReelCommand 5"),
                       Node("2.0.0.3", "pixelweft")});
    EXPECT_EQ(nodes.GetLiveNodes().keys(), QStringList{QStringLiteral("2.0.0.3")});
    EXPECT_EQ(Rows().size(), 3U);
    EXPECT_TRUE(IsRed(0));
    EXPECT_TRUE(IsRed(1));
    EXPECT_FALSE(IsRed(2));
}

TEST_F(ArtNetNodeModelTest, ElementsAreCountedWhereTheyGo)
{
    nodes.UpdateNodes({Node("2.0.0.10", "Left", {1, 18})});
    Place(L"Auto", 0, 1);
    Place(L"2.0.0.10", 0, 1);
    Place(L"2.0.0.10", 1, 2);
    Place(L"2.0.0.10", 0, 1); // the same target once more
    EXPECT_EQ(Rows(), (Lines{"Left|2.0.0.10|3||", ".Port 0|||0|1", ".Port 1|||1|2"}));
    Place(L"2.0.0.10", 0, 9, L"Named"); // a universe that the node doesn't offer
    EXPECT_EQ(Rows(), (Lines{"Named|2.0.0.10|4|0|9", "Left|2.0.0.10|4||", ".Port 0|||0|1",
                             ".Port 1|||1|2"}));
    document.Clear();
    EXPECT_EQ(Rows().front(), "Left|2.0.0.10|0||") << "no count of an older walk stays";
}

TEST_F(ArtNetNodeModelTest, AnAddressWithoutANodeHasARowForEachUniverse)
{
    Place(L"2.0.0.20", 0, 1, {}, L"Bar 1");
    Place(L"2.0.0.20", 0, 1, {}, L"Bar 2");
    EXPECT_EQ(Rows(), (Lines{"Bar 1|2.0.0.20|2|0|1"}));
    EXPECT_TRUE(IsRed(0));
    Place(L"2.0.0.20", 2, 3, {}, L"Bar 3");
    EXPECT_EQ(Rows(), (Lines{"Bar 1|2.0.0.20|3|0|1", "Bar 1|2.0.0.20|3|2|3"}));
}

TEST_F(ArtNetNodeModelTest, OtherNetworksShowOnlyWhatTheUserEntered)
{
    nodes.UpdateNodes({Node("10.0.0.10", "Elsewhere", {1})});
    Place(L"10.0.0.20", 0, 1);
    Place(L"\x263A", 0, 1);
    EXPECT_TRUE(Rows().empty());
    EXPECT_TRUE(nodes.GetOfflineNodes().contains(QStringLiteral("10.0.0.20")));
    auto manual = Node("10.0.0.30", "Mine");
    manual.manual = true;
    EXPECT_TRUE(nodes.AddManualNode(manual));
    EXPECT_EQ(Rows(), (Lines{"Mine|10.0.0.30|0|0|0"}));
}

TEST_F(ArtNetNodeModelTest, AManualNodeThatAnswersIsAnOrdinaryOne)
{
    auto manual = Node("2.0.0.10", "Mine");
    manual.manual = true;
    EXPECT_TRUE(nodes.AddManualNode(manual));
    EXPECT_EQ(nodes.rowCount(), 1) << "its row comes at once";
    EXPECT_FALSE(nodes.AddManualNode(manual));
    EXPECT_TRUE(nodes.IsManualNode(QStringLiteral("2.0.0.10")));
    nodes.UpdateNodes({Node("2.0.0.10", "Lamp", {1})});
    EXPECT_FALSE(nodes.IsManualNode(QStringLiteral("2.0.0.10")));
    EXPECT_EQ(nodes.GetNodeName(QStringLiteral("2.0.0.10")), QStringLiteral("Lamp"));
    EXPECT_FALSE(nodes.AddManualNode(manual)) << "it is alive";
    EXPECT_EQ(Rows(), (Lines{"Lamp|2.0.0.10|0||", ".Port 0|||0|1"}));
}

TEST_F(ArtNetNodeModelTest, RecordsAreEditedAndRemovedByTheirAddress)
{
    auto manual = Node("2.0.0.10", "Mine");
    manual.manual = true;
    nodes.AddManualNode(manual);
    ArtNetNodeRecord* record = nodes.GetNode(QStringLiteral("2.0.0.10"));
    ASSERT_TRUE(record);
    record->ip = "2.0.0.11";
    nodes.ReinsertNode(QStringLiteral("2.0.0.10"));
    EXPECT_FALSE(nodes.GetNode(QStringLiteral("2.0.0.10")));
    EXPECT_TRUE(nodes.IsManualNode(QStringLiteral("2.0.0.11")));
    EXPECT_EQ(Rows(), (Lines{"Mine|2.0.0.11|0|0|0"}));
    nodes.RemoveNode(QStringLiteral("2.0.0.11"));
    EXPECT_TRUE(Rows().empty());
    nodes.UpdateNodes({Node("2.0.0.12", "Lamp")});
    nodes.RemoveNode(QStringLiteral("2.0.0.12"));
    EXPECT_TRUE(nodes.GetNode(QStringLiteral("2.0.0.12"))) << "a live node isn't removed";
    nodes.Clear();
    EXPECT_FALSE(nodes.GetNode(QStringLiteral("2.0.0.12")));
    EXPECT_EQ(Rows().size(), 1U) << "it was seen";
    EXPECT_TRUE(IsRed(0));
}

TEST_F(ArtNetNodeModelTest, NamesComeInAnyEncoding)
{
    nodes.UpdateNodes(
        {Node("2.0.0.10", "B\xC3\xBChne"), Node("2.0.0.11", "B\xFChne"), Node("2.0.0.12", "\xC3")});
    const Lines rows = Rows();
    EXPECT_EQ(rows[0], "B\xC3\xBChne|2.0.0.10|0||");
    EXPECT_EQ(rows[1], "B\xC3\xBChne|2.0.0.11|0||");
    EXPECT_EQ(rows[2], "\xC3\x83|2.0.0.12|0||");
    EXPECT_EQ(nodes.GetNodeName(QStringLiteral("2.0.0.11")), QString::fromUtf8("B\xC3\xBChne"));
}

TEST_F(ArtNetNodeModelTest, ColumnsKeepTheWidthsTheUserGaveThem)
{
    QTreeView view;
    view.setModel(&nodes);
    view.header()->setStretchLastSection(false);
    view.header()->setMinimumSectionSize(10);
    nodes.UpdateNodes({Node("2.0.0.10", "Left", {1})});
    Rows(&view);
    const auto widths = [&view] {
        std::vector<int> all;
        for (int column = 0; column < 5; ++column)
            all.push_back(view.columnWidth(column));
        return all;
    };
    EXPECT_EQ(widths(), (std::vector<int>{200, 150, 35, 35, 35}));
    view.setColumnWidth(0, 321);
    view.setColumnWidth(4, 77);
    Rows(&view);
    EXPECT_EQ(widths(), (std::vector<int>{321, 150, 35, 35, 77}));
}

TEST_F(ArtNetNodeModelTest, WhatStaysKeepsItsPlaceAndItsSelection)
{
    nodes.UpdateNodes({Node("2.0.0.10", "Left", {1}), Node("2.0.0.11", "Right", {2, 3})});
    Place(L"2.0.0.99", 0, 1);
    EXPECT_EQ(Rows().size(), 6U);
    const QPersistentModelIndex right(nodes.index(2, 0));
    const QPersistentModelIndex port(nodes.index(1, 0, right));
    nodes.UpdateNodes({Node("2.0.0.10", "Left", {}), Node("2.0.0.11", "Right", {2, 3, 4})});
    EXPECT_EQ(Rows(), (Lines{"Lamp|2.0.0.99|1|0|1", "Left|2.0.0.10|0||", "Right|2.0.0.11|0||",
                             ".Port 0|||0|2", ".Port 1|||0|3", ".Port 2|||0|4"}));
    EXPECT_TRUE(right.isValid() && port.isValid());
    nodes.Clear();
    document.Clear();
    EXPECT_EQ(Rows().size(), 5U) << "what was seen is still known";
}

TEST_F(ArtNetNodeModelTest, AChurnOfAddressesIsBoundedAndDropsTheLeastRecentlyHeard)
{
    const auto faithful = Node("2.9.9.9", "Faithful", {1});
    auto manual = Node("2.0.0.1", "Mine"); // an address of the churn
    manual.manual = true;
    nodes.AddManualNode(manual);
    for (int round = 0; round < 100; ++round) {
        std::vector<ArtNetNodeRecord> heard = {faithful};
        for (int i = 0; i < 100; ++i) {
            const int number = round * 100 + i;
            heard.push_back(Node("2." + std::to_string(number / 65536 + 1) + "." +
                                     std::to_string(number / 256 % 256) + "." +
                                     std::to_string(number % 256),
                                 "Lamp"));
        }
        EXPECT_TRUE(nodes.UpdateNodes(heard));
    }
    nodes.UpdateNodes({faithful});
    nodes.Rebuild(document, nullptr, Network);
    EXPECT_EQ(nodes.GetAllNodes().size(), static_cast<int>(ArtNetNodeModel::MaxNodes) + 1);
    EXPECT_TRUE(nodes.IsManualNode(QStringLiteral("2.0.0.1")));
    EXPECT_TRUE(nodes.GetLiveNodes().contains(QStringLiteral("2.9.9.9")));
    EXPECT_FALSE(nodes.GetNode(QStringLiteral("2.1.0.0")));
    EXPECT_TRUE(nodes.GetNode(QStringLiteral("2.1.39.15"))) << "the last one heard";
}

TEST_F(ArtNetNodeModelTest, FiveHundredNodesThatChangeEverySecondCostLittle)
{
    QTreeView view;
    view.setModel(&nodes);
    for (int i = 0; i < 100; ++i)
        Place(L"2.0.0." + std::to_wstring(i), 0, i % 16);
    std::vector<ArtNetNodeRecord> heard;
    for (int i = 0; i < 500; ++i)
        heard.push_back(Node("2.0." + std::to_string(i / 250) + "." + std::to_string(i % 250),
                             "Lamp", {0, 1, 2, 3}));
    using Clock = std::chrono::steady_clock;
    const auto begin = Clock::now();
    constexpr int rounds = 10;
    for (int round = 0; round < rounds; ++round) {
        heard[0].universes[0].first = static_cast<std::uint16_t>(100 + round);
        ASSERT_TRUE(nodes.UpdateNodes(heard));
        nodes.Rebuild(document, &view, Network);
        for (int i = 0; i < 20; ++i)
            nodes.WriteWaitingRows();
        ASSERT_GE(nodes.rowCount(), 500);
    }
    EXPECT_EQ(TextOf(nodes, 0, nodes.index(nodes.rowCount() - 500, 0)), "Port 0|||6|13") << "109";
    const auto each =
        std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin) / rounds;
    RecordProperty("milliseconds", static_cast<int>(each.count()));
    std::printf("%d ms for each change of 500 nodes\n", static_cast<int>(each.count()));
    // A tick is 25 ms; a sanitizer on a busy machine takes many times as long.
    EXPECT_LT(each.count(), 500);
}

} // namespace
