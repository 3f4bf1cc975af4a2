// SPDX-License-Identifier: MIT
// What each change of elements makes of them and of the document's table, and that it is reported.
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedObjectListProxy.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QColor>
#include <QItemSelectionModel>

#include <cmath>
#include <random>
#include <sstream>

namespace {

/// A document without elements, on a canvas of 200 by 100, and one fixture for them.
class EmptyDocument : public ::testing::Test
{
protected:
    EmptyDocument()
    {
        manager.SetCanvasSize(200, 100);
        manager.GetDeviceModel()->AddFixture(std::make_unique<DeviceLedItem>(
            L"Maker", L"Lamp", PixelMap(2, 1, PixelMapType::RGB), 1, 6));
    }

    DeviceManager manager{QString()};
    bool ready = manager.Initialize();
    MappedDeviceModel& table = *manager.GetMappedDeviceModel();
    MappedObjectParams record{QStringLiteral("Auto"), {}, 100, 50, 20, 10, 1};
};

// ---- Each operation ----------------------------------------------------------------------------

/// Two elements of 20 by 10 pixels round the top left corner.
class TwoElements : public EmptyDocument
{
protected:
    TwoElements()
    {
        const auto added = manager.AddMappedObjects({record, record});
        first = added.at(0).index;
        second = added.at(1).index;
        manager.SetObjectSize({{first, 20, 10}, {second, 20, 10}});
        QObject::connect(&manager, &DeviceManager::devicesChangedGeometry, [this] { ++moves; });
        QObject::connect(&manager, &DeviceManager::mappingsChanged, [this] { ++rebuilds; });
    }

    /// The centre, the size, the angle and the mirrors of an element.
    std::string State(const QModelIndex& index) const
    {
        std::array<float, 4> pixels{};
        std::array<bool, 2> mirrors{};
        EXPECT_TRUE(manager.GetObjectCentre(index, pixels[0], pixels[1]));
        EXPECT_TRUE(manager.GetObjectSize(index, pixels[2], pixels[3]));
        EXPECT_TRUE(manager.GetObjectFlipState(index, mirrors[0], mirrors[1]));
        std::ostringstream state;
        for (const float length : pixels)
            state << std::round(length * 1000) / 1000 << ' ';
        state << manager.GetObjectRotation(index) << (mirrors[0] ? " h" : "")
              << (mirrors[1] ? " v" : "");
        return state.str();
    }
    /// How often moved elements were reported since the last call, and the two elements.
    void Expect(int reports, const std::string& one, const std::string& other)
    {
        EXPECT_EQ(std::exchange(moves, 0), reports);
        EXPECT_EQ(State(first), one);
        EXPECT_EQ(State(second), other);
    }

    QPersistentModelIndex first;
    QPersistentModelIndex second;
    int moves = 0;
    int rebuilds = 0;
};

TEST_F(TwoElements, AreMovedSizedTurnedAndMirrored)
{
    // A batch ends at an entry without element, but for rotations.
    const QModelIndex none;
    manager.MoveObjects({{none, 2, 2}, {second, 3, 3}}, true);
    manager.CropToSelection({none});
    Expect(0, "0 0 20 10 0", "0 0 20 10 0");
    manager.MoveObjects({{first, 30, 40}, {second, -10, 0}}, false);
    Expect(1, "40 45 20 10 0", "0 5 20 10 0");
    manager.SetObjectSize(first, 0, 0);
    manager.MoveObject(first, 50, 50, true);
    Expect(2, "50 50 0 0 0", "0 5 20 10 0");
    manager.SetObjectCentre(first, 50, 75);
    manager.SetObjectFlipState({{first, FlipHorizontal, true}, {second, FlipVertical, true}});
    Expect(2, "50 75 0 0 0 h", "0 5 20 10 0 v");
    manager.SetObjectRects({{first, 10.5, 20, 4, 10}, {second, -10.5, 20.4, 4, 10}});
    Expect(1, "11 20 4 10 0 h", "-10 20 4 10 0 v");
    // Numbers that a file could not bring back change nothing.
    manager.SetObjectCentre(first, std::nan(""), 0);
    manager.SetObjectSize(first, 1, 1e300);
    manager.SetObjectRotation(first, INFINITY);
    Expect(3, "11 20 4 10 0 h", "-10 20 4 10 0 v");

    // Angles become whole degrees, up to a full turn.
    const std::vector<std::pair<float, std::string>> angles = {
        {725, "5"},    {360, "360"}, {720, "360"},  {360.5F, "0"},
        {44.9F, "44"}, {-0.5F, "0"}, {-725, "-725"}};
    for (const auto& [given, stored] : angles) {
        manager.SetObjectRotation({{none, 5}, {first, given}});
        Expect(1, "11 20 4 10 " + stored + " h", "-10 20 4 10 0 v");
    }
}

TEST_F(TwoElements, AreJoinedByOthers)
{
    MappedObjectParams unknown = record;
    unknown.fixtureID = 9;
    EXPECT_FALSE(manager.AddMappedObject(unknown).isValid());
    const auto added = manager.AddMappedObjects({unknown, record});
    ASSERT_EQ(added.size(), 1U);
    EXPECT_EQ(State(added[0].index), "0 0 0 0 0");
    manager.ApplyObjectParams(added);
    EXPECT_EQ(State(added[0].index), "100 50 20 10 0");
    manager.SetDescription(first, L"Bar");
    EXPECT_EQ(table.index(0, MappedDeviceModel::NameColumn).data().toString(),
              QStringLiteral("Bar"));
    EXPECT_EQ(table.GetItemByDescription(L"Bar"), table.GetElement(0));

    // An element that was made elsewhere keeps its number while that is free.
    const auto add = [&](std::int64_t number) {
        std::vector<std::unique_ptr<MappedLedItem>> items;
        items.push_back(std::make_unique<MappedLedItem>(
            L"Bare", *manager.GetLEDFixtureByProduct(L"Lamp"), nullptr, nullptr));
        items.back()->uniqueID = number;
        return manager.GetUniqueID(manager.AddMappedItems(std::move(items)).front());
    };
    EXPECT_EQ(add(3), 4);
    EXPECT_EQ(add(9), 9);
    EXPECT_EQ(add(0), 10);
    manager.RemoveMappedObjects({1, 3});
    EXPECT_GE(rebuilds, 6);
    EXPECT_EQ(manager.GetUniqueID(manager.AddMappedObject(record)), 11);
    // One without a place is passed over.
    manager.CropToSelection({second, table.index(1, 0)});
    EXPECT_EQ(manager.CanvasPixels(), QSize(20, 10));
    manager.SetCanvasSize(-5, 100'001);
    EXPECT_EQ(manager.CanvasPixels(), QSize(1, 100'000)) << "within what a document keeps";
}

// ---- The table ---------------------------------------------------------------------------------

constexpr std::array<const char*, 3> Nodes = {"Auto", "2.0.0.0", "2.0.0.1"};

struct Row
{
    qint64 id = 0;
    std::size_t node = 0; ///< of Nodes
    int universe = 0;
    QPersistentModelIndex index = {};
    bool selected = false;
};

/// Edits at random, beside a list of what the elements must be.
class TableWalk : public EmptyDocument
{
protected:
    TableWalk()
    {
        QObject::connect(&proxy, &MappedObjectListProxy::select, &selection,
                         qOverload<const QItemSelection&, QItemSelectionModel::SelectionFlags>(
                             &QItemSelectionModel::select));
        // Also in the middle of a removal, each element is found under its own row.
        QObject::connect(&selection, &QItemSelectionModel::selectionChanged, &manager, [this] {
            for (int row = 0; row < table.rowCount(); ++row)
                EXPECT_EQ(manager.GetUniqueID(table.index(row, 0)),
                          table.index(row, 7).data(Qt::UserRole).toLongLong());
        });
    }

    std::size_t Below(std::size_t end) { return random() % end; }

    void Add()
    {
        for (auto count = 1 + Below(6); count > 0; --count) {
            const Row row = {++lastId, Below(Nodes.size()), static_cast<int>(Below(4))};
            record.ipconf = QString::fromLatin1(Nodes[row.node]);
            record.universe = row.universe;
            rows.push_back(row);
            rows.back().index = manager.AddMappedObject(record);
        }
    }
    /// Takes elements out, for good or to put them back where they were.
    void Take(bool forGood)
    {
        ElementIds some = {0, -1, lastId + 1};
        const std::size_t oneOf = 1 + Below(8); // many go in one move, or a few
        for (const Row& row : rows) {
            if (Below(oneOf) == 0)
                some.push_back(row.id);
        }
        auto taken = manager.TakeElements(some);
        EXPECT_EQ(taken.size(), some.size() - 3);
        EXPECT_EQ(table.rowCount(), std::ssize(rows) - std::ssize(taken));
        if (!forGood)
            manager.PutBackElements(std::move(taken));
        std::erase_if(rows, [&](Row& row) {
            if (std::ranges::find(some, row.id) == some.end())
                return false;
            EXPECT_FALSE(row.index.isValid());
            row.index = table.GetIndexOfUniqueID(row.id);
            EXPECT_NE(row.index.isValid(), forGood);
            row.selected = false;
            return forGood;
        });
    }
    void Readdress()
    {
        const int universe = static_cast<int>(Below(4));
        const std::size_t from = Below(Nodes.size());
        const std::size_t to = Below(Nodes.size());
        QModelIndexList indexes;
        for (Row& row : rows) {
            row.node = row.node == from ? to : row.node;
            if (Below(3) > 0)
                continue;
            row.universe = universe;
            indexes << row.index;
        }
        table.ReplaceNodeAddress(QString::fromLatin1(Nodes[from]), QString::fromLatin1(Nodes[to]),
                                 {});
        manager.EditObjectArtNetMappings(
            indexes, [&](DMXMappingArtNet& address) { address.SetUniverse(universe); });
    }
    void Select()
    {
        ElementIds ids;
        for (Row& row : rows) {
            row.selected = Below(3) == 0;
            if (row.selected)
                ids.push_back(row.id);
        }
        proxy.SelectByUniqueIDs(ids);
    }

    /// Red where a universe is both broadcast and sent to a node, orange for other broadcasts.
    QVariant ColourOf(const Row& row) const
    {
        const bool conflict = std::ranges::any_of(rows, [&](const Row& other) {
            return other.universe == row.universe && (other.node == 0) != (row.node == 0);
        });
        if (conflict)
            return QColor(255, 0, 0);
        return row.node == 0 ? QColor(255, 102, 0) : QVariant();
    }
    void Check()
    {
        ASSERT_EQ(table.rowCount(), static_cast<int>(rows.size()));
        for (int number = 0; number < table.rowCount(); ++number) {
            const Row& row = rows[static_cast<std::size_t>(number)];
            EXPECT_EQ(row.index.row(), number);
            EXPECT_EQ(table.GetIndexOfUniqueID(row.id).row(), number);
            EXPECT_EQ(table.GetItemByUniqueID(row.id), table.GetElement(number));
            QStringList texts;
            for (const int column : {2, 5, 7, 9})
                texts << row.index.sibling(number, column).data().toString();
            EXPECT_EQ(texts.join(QLatin1Char(' ')),
                      QStringLiteral("2x1 Lamp-%1 %1 ArtNet/IP %2/sub 000/univ 00%3/ch 001")
                          .arg(row.id)
                          .arg(QString::fromLatin1(Nodes[row.node]))
                          .arg(row.universe));
            EXPECT_EQ(row.index.data(Qt::ForegroundRole), ColourOf(row)) << number;
            const QModelIndex shown = proxy.mapFromSource(row.index);
            EXPECT_EQ(selection.isSelected(shown), row.selected);
            EXPECT_LE(shown.sibling(shown.row() + 1, order).data().toString(),
                      shown.siblingAtColumn(order).data().toString());
        }
    }

    std::mt19937 random{2026};
    MappedObjectListProxy& proxy = *manager.GetMappedObjectListProxy();
    QItemSelectionModel selection{&proxy};
    int order = 0; ///< the column by which the list is sorted
    std::vector<Row> rows;
    qint64 lastId = 0;
};

TEST_F(TableWalk, KeepsRowsColoursSelectionAndOrder)
{
    const QAbstractItemModelTester tableTester(&table);
    const QAbstractItemModelTester proxyTester(&proxy);
    for (int step = 0; step < 120 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        if (step % 60 == 0) {
            order = step == 0 ? MappedDeviceModel::NameColumn : MappedDeviceModel::AddressColumn;
            proxy.sort(order, Qt::DescendingOrder);
        }
        const auto what = rows.empty() ? 0 : Below(6);
        if (step % 40 == 39) {
            table.Clear();
            rows.clear();
            lastId = 0;
        } else if (what <= 2)
            Add();
        else if (what == 3)
            Take(Below(2) == 0);
        else if (what == 4)
            Readdress();
        else
            Select();
        Check();
    }
    Add();
    EXPECT_TRUE(table.removeRow(0)); // past the model's own operations
    rows.erase(rows.begin());
    Check();
}

} // namespace
