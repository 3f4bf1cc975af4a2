// SPDX-License-Identifier: MIT
#include <QTreeView>

#include "Support/Literals.h"
#include "UI/Network/Machine.h"
#include "UI/Network/NodeList.h"

namespace {

class NodeListTest : public Machine
{
protected:
    NodeListTest() { choice.Choose("2.X.X.X"_q); }
    ~NodeListTest() override
    {
        const std::unique_ptr<QTreeView> view(list->View());
        list.reset();
    }

    /// What the list says after the next pauses: address and uses of each row.
    std::string Rows()
    {
        for (int pause = 0; pause < 3; ++pause)
            list->WorkBetweenTicks();
        QString rows;
        const QAbstractItemModel& model = *list->View()->model();
        for (int row = 0; row < model.rowCount(); ++row) {
            for (const int column : {ArtNetNodeModel::IpColumn, ArtNetNodeModel::UseCountColumn})
                rows += model.index(row, column).data().toString() + QLatin1Char(' ');
        }
        return rows.toStdString();
    }

    std::unique_ptr<NodeList> list = std::make_unique<NodeList>(nodes, manager, engine, choice);
};

} // namespace

TEST_F(NodeListTest, TheRowsFollowTheDocumentAlsoWithoutAnswers)
{
    EXPECT_EQ(Rows(), "");
    MappedDeviceModel& document = *manager.GetMappedDeviceModel();
    Place(L"2.0.0.5");
    const QModelIndex second = Place(L"2.0.0.5");
    EXPECT_EQ(Rows(), "2.0.0.5 2 ");
    ElementAddress moved = manager.GetAddresses({manager.GetUniqueID(second)}).front();
    moved.address->SetNode(L"2.0.0.6", std::wstring());
    manager.SetAddresses({moved});
    EXPECT_EQ(Rows(), "2.0.0.6 1 2.0.0.5 1 ");
    document.RemoveMappingElement(document.GetElement(0)->uniqueID);
    EXPECT_EQ(Rows().find("2.0.0.5 1"), std::string::npos);
    manager.ClearAll();
    nodes.Clear();
    EXPECT_EQ(Rows(), "");
    // Nor does a node of the operator need an element.
    nodes.AddManualNode({.ip = "2.0.0.8", .name = "Mine", .manual = true, .universes = {}});
    EXPECT_EQ(Rows(), "2.0.0.8 0 ");
    nodes.RemoveNode("2.0.0.8"_q);
    EXPECT_EQ(Rows(), "");
}

TEST_F(NodeListTest, NodesThatAnswerShowTheirPorts)
{
    ArtNetNodeRecord node;
    node.ip = "2.0.0.7";
    node.universes = {{3, 0}, {4, 0}};
    ASSERT_TRUE(nodes.UpdateNodes({node}));
    list->RequestRows();
    EXPECT_EQ(Rows(), "2.0.0.7 0 ");
    const QModelIndex row = nodes.index(0, 0);
    EXPECT_EQ(nodes.rowCount(row), 2);
    EXPECT_TRUE(list->View()->isExpanded(row));
    // Of another network the list shows others, at once.
    choice.Choose("10.0.0.1"_q);
    EXPECT_EQ(nodes.rowCount(), 0);
    // A discovery without this node leaves it in its place, and it comes with its network again.
    choice.Choose("2.0.0.1"_q);
    EXPECT_EQ(Rows(), "2.0.0.7 0 ");
    list->RequestNodes();
    EXPECT_EQ(Rows(), "2.0.0.7 0 ");
    EXPECT_TRUE(nodes.GetLiveNodes().isEmpty()) << "no node answers here";

    // Who is silent is known after ten seconds, and never without a network.
    Place(L"2.0.0.9");
    const MappedDeviceModel& document = *manager.GetMappedDeviceModel();
    for (const char* network : {"2.X.X.X", ""}) {
        choice.Choose(QLatin1String(network));
        for (int looks = 0; looks < 10; ++looks) {
            const bool known = *network && looks > 8;
            EXPECT_EQ(document.index(0, 0).data(TroubleRole).toInt() > 0, known) << looks;
            list->ProcessNodesList();
        }
    }
}
