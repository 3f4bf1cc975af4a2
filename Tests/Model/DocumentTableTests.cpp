// SPDX-License-Identifier: MIT
// The document's table, its colours, its sorted view and a selection in it, through a long walk of
// edits beside a plain list of what the elements must be.
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedObjectListProxy.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QColor>
#include <QItemSelectionModel>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

struct Row
{
    qint64 id = 0;
    QString name;
    QString node;
    int universe = 0;
    QPersistentModelIndex index;
    bool selected = false;
    bool chosen = false; ///< for the next edit
};

class TableWalk : public ::testing::Test
{
protected:
    TableWalk()
    {
        manager.GetDeviceModel()->AddFixture(std::make_unique<DeviceLedItem>(
            L"Maker", L"Lamp", PixelMap(2, 1, PixelMapType::RGB), 1, 6));
        proxy.sort(MappedDeviceModel::NameColumn, Qt::DescendingOrder);
        QObject::connect(&proxy, &MappedObjectListProxy::select, &selection,
                         qOverload<const QModelIndex&, QItemSelectionModel::SelectionFlags>(
                             &QItemSelectionModel::select));
        // Also in the middle of a removal, each element is found under its own row.
        QObject::connect(&selection, &QItemSelectionModel::selectionChanged, &manager, [this] {
            for (int row = 0; row < table.rowCount(); ++row)
                EXPECT_EQ(manager.GetUniqueID(table.index(row, 0)), IdOf(table.index(row, 0)));
        });
    }

    static qint64 IdOf(const QModelIndex& index)
    {
        return index.siblingAtColumn(7).data(Qt::UserRole).toLongLong();
    }
    int Below(int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); }
    QString AnyNode()
    {
        return Below(2) ? QStringLiteral("Auto") : QStringLiteral("2.0.0.%1").arg(Below(2));
    }
    /// Chooses each row with a chance of one in `of`.
    QList<qint64> Choose(int of)
    {
        QList<qint64> ids;
        for (Row& row : rows) {
            row.chosen = Below(of) == 0;
            if (row.chosen)
                ids << row.id;
        }
        return ids;
    }

    void Add()
    {
        std::vector<MappedObjectParams> records(static_cast<std::size_t>(1 + Below(6)));
        for (MappedObjectParams& record : records) {
            record.ipconf = AnyNode();
            record.universe = Below(4);
            record.fixtureID = 1;
        }
        for (const auto& [index, record] : manager.AddMappedObjects(records)) {
            ++lastId;
            rows.push_back({lastId, QStringLiteral("Lamp-%1").arg(lastId), record.ipconf,
                            record.universe, index});
        }
    }
    void Remove(const QList<qint64>& leaving)
    {
        manager.RemoveMappedObjects(leaving + QList<qint64>{0, -1, lastId + 1});
        std::erase_if(rows, [&](const Row& row) {
            EXPECT_EQ(row.index.isValid(), !leaving.contains(row.id));
            EXPECT_EQ(!table.GetItemByUniqueID(row.id), leaving.contains(row.id));
            return leaving.contains(row.id);
        });
    }
    void Clear()
    {
        table.Clear();
        rows.clear();
        lastId = 0;
    }
    void EditAddresses()
    {
        Choose(3);
        const int universe = Below(4);
        QModelIndexList indexes;
        for (Row& row : rows) {
            if (row.chosen) {
                row.universe = universe;
                indexes << row.index;
            }
        }
        manager.EditObjectArtNetMappings(
            indexes, [&](DMXMappingArtNet& address) { address.SetUniverse(universe); });
    }
    void RenameNodeAndElement()
    {
        const QString from = AnyNode();
        const QString to = AnyNode();
        table.ReplaceNodeAddress(from, to, {});
        for (Row& row : rows)
            row.node = row.node == from ? to : row.node;
        Row& renamed = rows[static_cast<std::size_t>(Below(static_cast<int>(rows.size())))];
        renamed.name = QStringLiteral("Bar-%1").arg(Below(50));
        manager.SetDescription(renamed.index, renamed.name.toStdWString());
    }
    void Select()
    {
        proxy.SelectByUniqueIDs(Choose(3));
        for (Row& row : rows)
            row.selected = row.chosen;
    }

    /// Red where a universe is both broadcast and sent to a node, orange for other broadcasts.
    QVariant ColourOf(const Row& row) const
    {
        const auto broadcast = [](const Row& other) {
            return other.node == QStringLiteral("Auto");
        };
        const bool conflict = std::ranges::any_of(rows, [&](const Row& other) {
            return other.universe == row.universe && broadcast(other) != broadcast(row);
        });
        return conflict         ? QColor(255, 0, 0)
               : broadcast(row) ? QVariant(QColor(255, 102, 0))
                                : QVariant();
    }
    void Check()
    {
        ASSERT_EQ(table.rowCount(), static_cast<int>(rows.size()));
        for (int number = 0; number < table.rowCount(); ++number) {
            const Row& row = rows[static_cast<std::size_t>(number)];
            EXPECT_EQ(row.index.row(), number);
            EXPECT_EQ(table.GetIndexOfUniqueID(row.id).row(), number);
            EXPECT_EQ(table.GetItemByUniqueID(row.id), table.GetElement(number));
            EXPECT_EQ(IdOf(row.index), row.id);
            QStringList texts;
            for (const int column : {2, 5, 7, 9})
                texts << row.index.sibling(number, column).data().toString();
            EXPECT_EQ(texts.join(QLatin1Char(' ')),
                      QStringLiteral("2x1 %1 %2 ArtNet/IP %3/sub 000/univ 00%4/ch 001")
                          .arg(row.name, QString::number(row.id), row.node)
                          .arg(row.universe));
            EXPECT_EQ(row.index.data(Qt::ForegroundRole), ColourOf(row)) << number;
            const QModelIndex shown = proxy.mapFromSource(row.index);
            EXPECT_EQ(selection.isSelected(shown), row.selected);
            const QModelIndex next = shown.sibling(shown.row() + 1, 5);
            EXPECT_LE(next.data().toString(), row.name);
        }
    }

    std::mt19937 random{2026};
    DeviceManager manager{QString()};
    bool ready = manager.Initialize();
    MappedDeviceModel& table = *manager.GetMappedDeviceModel();
    MappedObjectListProxy& proxy = *manager.GetMappedObjectListProxy();
    QItemSelectionModel selection{&proxy};
    std::vector<Row> rows;
    qint64 lastId = 0;
};

TEST_F(TableWalk, KeepsRowsColoursSelectionAndIndexes)
{
    const QAbstractItemModelTester tableTester(&table);
    const QAbstractItemModelTester proxyTester(&proxy);
    for (int step = 0; step < 120 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        const int what = rows.empty() ? 0 : Below(7);
        if (step % 40 == 39)
            Clear();
        else if (what <= 2)
            Add();
        else if (what == 3)
            Remove(Choose(rows.size() > 20 ? 2 : 8)); // many, which go in one move, or a few
        else if (what == 4)
            EditAddresses();
        else if (what == 5)
            RenameNodeAndElement();
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
