// SPDX-License-Identifier: MIT
// What the list of nodes shows for what answers on the network, what the document sends to and what
// the operator entered.
#include "Model/ArtNetNodeModel.h"
#include "Model/MappedDeviceModel.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;
using Records = std::vector<ArtNetNodeRecord>;

ArtNetNodeRecord Node(const std::string& ip, const std::string& name,
                      std::initializer_list<std::uint16_t> ports = {}, bool manual = false)
{
    ArtNetNodeRecord record;
    record.ip = ip;
    record.name = name;
    record.manual = manual;
    for (const std::uint16_t port : ports)
        record.universes.push_back({port, 0});
    return record;
}

class ArtNetNodeModelTest : public testing::Test
{
protected:
    void Place(const wchar_t* ip, int subnet, int universe, const wchar_t* description = L"Lamp")
    {
        const DMXMappingArtNet address(subnet, universe, 1, ip, L"");
        const DeviceLedItem fixture(L"Maker", L"Lamp", PixelMap(1, 1, PixelMapType::RGB), 1, 3);
        document.AddMappingElement(
            std::make_unique<MappedLedItem>(description, fixture, nullptr, &address));
    }

    /// The rows below `parent`, each with those of its ports behind it.
    void Append(Lines& lines, const QModelIndex& parent = {}) const
    {
        for (int row = 0; row < nodes.rowCount(parent); ++row) {
            QStringList cells;
            for (int column = 0; column < 5; ++column)
                cells << nodes.index(row, column, parent).data().toString();
            const int trouble = nodes.index(row, 3, parent).data(TroubleRole).toInt();
            if (trouble > 0) {
                EXPECT_FALSE(nodes.index(row, 0, parent).data(Qt::ToolTipRole).isNull());
            }
            lines.push_back((parent.isValid() ? "." : "") +
                            cells.join(QLatin1Char('|')).toStdString() +
                            (trouble == 2   ? " red"
                             : trouble == 1 ? " orange"
                                            : ""));
            Append(lines, nodes.index(row, 0, parent));
        }
    }
    /// All rows after a rebuild for the network 2.X.X.X, those of ports behind a point.
    Lines Rows()
    {
        nodes.Rebuild(document, 0x02FFFFFF);
        Lines lines;
        Append(lines);
        return lines;
    }

    ArtNetNodeModel nodes;
    MappedDeviceModel document;
};

TEST_F(ArtNetNodeModelTest, ShowsNodesAndTargetsOfItsNetwork)
{
    EXPECT_TRUE(nodes.UpdateNodes(
        {Node("2.0.0.10", "Left", {1, 0x7FFF, 0x12}), Node("2.0.0.1", "Zentri PixelWeft"),
         Node("2.0.0.2", "My ReelCommand 5"), Node("2.0.0.3", "pixelweft"),
         Node("2.0.0.4", "B\xC3\xBChne"), Node("2.0.0.5", "B\xFChne"), Node("2.0.0.6", "\xC3"),
         Node("10.0.0.10", "Elsewhere", {1})}));
    // A target that a node offers counts in the node's row, any other has its own.
    Place(L"Auto", 0, 1);
    for (const int universe : {1, 18, 1})
        Place(L"2.0.0.10", universe / 16, universe % 16);
    Place(L"2.0.0.10", 0, 9, L"Named");
    Place(L"2.0.0.30", 0, 1);
    Place(L"2.0.0.20", 2, 3, L"Bar 1");
    Place(L"2.0.0.20", 2, 3, L"Bar 2");
    Place(L"2.0.0.20", 0, 1, L"Bar 3");
    Place(L"10.0.0.20", 0, 1);
    Place(L"\x263A", 0, 1);
    const Lines rows = {"Bar 1|2.0.0.20|3|2|3 red",
                        "Bar 1|2.0.0.20|3|0|1 red",
                        "Lamp|2.0.0.30|1|0|1 red",
                        "Named|2.0.0.10|4|0|9 orange", // it has no such port
                        "Left|2.0.0.10|4||",
                        ".Port 0|||0|1",
                        ".Port 1|||15|15",
                        ".Port 2|||1|2",
                        "Zentri PixelWeft|2.0.0.1|0||", // our own kind: nothing is sent there
                        "My ReelCommand 5|2.0.0.2|0||",
                        "pixelweft|2.0.0.3|0||",
                        "B\xC3\xBChne|2.0.0.4|0||", // UTF-8, Latin-1, and what only begins as UTF-8
                        "B\xC3\xBChne|2.0.0.5|0||",
                        "\xC3\x83|2.0.0.6|0||"};
    EXPECT_EQ(Rows(), rows);
    EXPECT_EQ(Rows(), rows) << "no count of an older walk stays";
}

TEST_F(ArtNetNodeModelTest, ANodeThatIsRenamedAsksForNewRows)
{
    for (const char* name : {"Right", "Stage right"}) {
        EXPECT_TRUE(nodes.UpdateNodes({Node("2.0.0.11", name, {2})}));
        EXPECT_FALSE(nodes.UpdateNodes({Node("2.0.0.11", name, {2})}));
    }
    EXPECT_EQ(Rows(), (Lines{"Stage right|2.0.0.11|0||", ".Port 0|||0|2"}));
    EXPECT_TRUE(nodes.UpdateNodes({Node("2.0.0.12", "Left")}));
    EXPECT_TRUE(nodes.UpdateNodes({Node("2.0.0.11", "Stage right", {2})})) << "known, and back";
}

TEST_F(ArtNetNodeModelTest, AManualNodeIsEditedRemovedOrBecomesAnOrdinaryOne)
{
    const QString address = QStringLiteral("2.0.0.10");
    const auto mine = Node("2.0.0.10", "Mine", {}, true);
    EXPECT_TRUE(nodes.AddManualNode(mine));
    EXPECT_TRUE(nodes.AddManualNode(Node("10.0.0.30", "Far", {}, true)));
    EXPECT_EQ(nodes.rowCount(), 2) << "its row comes at once";
    EXPECT_FALSE(nodes.AddManualNode(mine));
    EXPECT_EQ(Rows(), (Lines{"Far|10.0.0.30|0|0|0", "Mine|2.0.0.10|0|0|0"}));

    nodes.GetNode(address)->ip = "2.0.0.11";
    nodes.ReinsertNode(address);
    EXPECT_FALSE(nodes.GetNode(address));
    EXPECT_EQ(Rows(), (Lines{"Far|10.0.0.30|0|0|0", "Mine|2.0.0.11|0|0|0"}));
    nodes.RemoveNode(QStringLiteral("2.0.0.11"));
    nodes.RemoveNode(QStringLiteral("10.0.0.30"));
    EXPECT_EQ(Rows(), Lines{});
    EXPECT_TRUE(nodes.AddManualNode(mine));
    nodes.UpdateNodes({Node("2.0.0.10", "Lamp", {1})});
    EXPECT_FALSE(nodes.IsManualNode(address));
    EXPECT_FALSE(nodes.AddManualNode(mine)) << "it answers";
    nodes.RemoveNode(address);
    EXPECT_EQ(nodes.GetNodeName(address), QStringLiteral("Lamp")) << "a live node isn't removed";
    EXPECT_EQ(Rows(), (Lines{"Lamp|2.0.0.10|0||", ".Port 0|||0|1"}));
    nodes.Clear();
    EXPECT_EQ(Rows(), (Lines{"Lamp|2.0.0.10|0|| orange", ".Port 0|||0|1 orange"})) << "it was seen";
}

TEST_F(ArtNetNodeModelTest, WhatStaysKeepsItsRow)
{
    nodes.UpdateNodes({Node("2.0.0.10", "Left", {1}), Node("2.0.0.11", "Right", {2, 3})});
    EXPECT_FALSE(
        nodes.UpdateNodes({Node("2.0.0.11", "Right", {2, 3}), Node("2.0.0.10", "Left", {1})}));
    Place(L"2.0.0.99", 0, 1);
    EXPECT_EQ(Rows().size(), 6U);
    const QPersistentModelIndex right(nodes.index(2, 0));
    const QPersistentModelIndex port(nodes.index(1, 0, right));
    EXPECT_TRUE(
        nodes.UpdateNodes({Node("2.0.0.10", "Left"), Node("2.0.0.11", "Right", {2, 3, 4})}));
    EXPECT_EQ(Rows(), (Lines{"Lamp|2.0.0.99|1|0|1 red", "Left|2.0.0.10|0||", "Right|2.0.0.11|0||",
                             ".Port 0|||0|2", ".Port 1|||0|3", ".Port 2|||0|4"}));
    EXPECT_TRUE(right.isValid() && port.isValid());
    const QSignalSpy repaints(&nodes, &QAbstractItemModel::dataChanged);
    EXPECT_TRUE(nodes.UpdateNodes({}));
    Rows();
    EXPECT_GT(repaints.count(), 0) << "no text has changed, but none answers now";
}

TEST_F(ArtNetNodeModelTest, NodesOfManyPortsAreWrittenInPortionsToo)
{
    Records heard;
    for (int i = 0; i < 4; ++i) {
        heard.push_back(Node("2.0.0." + std::to_string(i + 1), "Wall"));
        for (std::uint16_t port = 0; port < 150; ++port)
            heard.back().universes.push_back({port, 0});
    }
    nodes.UpdateNodes(heard);
    nodes.Rebuild(document, 0x02FFFFFF);
    EXPECT_EQ(nodes.rowCount(), 2);
    nodes.WriteWaitingRows();
    EXPECT_EQ(nodes.rowCount(), 4);
    EXPECT_EQ(nodes.rowCount(nodes.index(3, 0)), 150);
}

TEST_F(ArtNetNodeModelTest, AFloodOfAddressesIsBoundedAndWrittenInPortions)
{
    const auto numbered = [](int number) {
        return "2." + std::to_string(number / 65536 + 1) + "." +
               std::to_string(number / 256 % 256) + "." + std::to_string(number % 256);
    };
    const auto faithful = Node("2.9.9.9", "Faithful", {1});
    nodes.UpdateNodes({Node("2.0.0.1", "Lamp")});
    nodes.UpdateNodes({});
    nodes.RemoveNode(QStringLiteral("2.0.0.1"));
    nodes.AddManualNode(Node("2.0.0.1", "Mine", {}, true)); // of an address that is forgotten
    for (int first = 0; first < 9000; first += 300) {
        Records heard = {faithful};
        for (int i = 0; i < 300; ++i)
            heard.push_back(Node(numbered(first + i), "Lamp"));
        EXPECT_TRUE(nodes.UpdateNodes(heard));
    }
    nodes.UpdateNodes({faithful});
    nodes.Rebuild(document, 0x02FFFFFF);
    const int known = static_cast<int>(ArtNetNodeModel::MaxNodes) + 1; // with the manual one
    EXPECT_EQ(nodes.GetAllNodes().size(), known);
    EXPECT_TRUE(nodes.IsManualNode(QStringLiteral("2.0.0.1")));
    EXPECT_TRUE(nodes.GetLiveNodes().contains(QStringLiteral("2.9.9.9")));
    for (const int number : {0, 1, 4800, 4904})
        EXPECT_FALSE(nodes.GetNode(QString::fromStdString(numbered(number)))) << number;
    EXPECT_TRUE(nodes.GetNode(QString::fromStdString(numbered(8999)))) << "the last one heard";

    for (int rows = 0; rows < known; nodes.WriteWaitingRows()) {
        rows = std::min(rows + ArtNetNodeModel::RowsAtOnce, known);
        EXPECT_EQ(nodes.rowCount(), rows);
    }
}

} // namespace
