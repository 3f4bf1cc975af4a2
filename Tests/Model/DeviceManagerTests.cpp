// SPDX-License-Identifier: MIT
// What each change of elements makes of them, and that it is reported. The document's table under
// any edits is judged by the walk over the canvas.
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedObjectListProxy.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

#include <cmath>
#include <sstream>

namespace {

/// Two elements of 20 by 10 pixels round the top left corner of a canvas of 200 by 100.
class TwoElements : public ::testing::Test
{
protected:
    TwoElements()
    {
        manager.SetCanvasSize(200, 100);
        manager.GetDeviceModel()->AddFixture(std::make_unique<DeviceLedItem>(
            L"Maker", L"Lamp", PixelMap(2, 1, PixelMapType::RGB), 1, 6));
        const auto added = manager.AddMappedObjects({record, record});
        first = added.at(0).index;
        second = added.at(1).index;
        manager.SetObjectSize({{first, 20, 10}, {second, 20, 10}});
        QObject::connect(&manager, &DeviceManager::devicesChangedGeometry, [this] { ++moves; });
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

    DeviceManager manager{QString()};
    bool ready = manager.Initialize();
    MappedDeviceModel& table = *manager.GetMappedDeviceModel();
    MappedObjectParams record{QStringLiteral("Auto"), {}, 100, 50, 20, 10, 1};
    const QAbstractItemModelTester tableTester{&table};
    const QAbstractItemModelTester proxyTester{manager.GetMappedObjectListProxy()};
    QPersistentModelIndex first;
    QPersistentModelIndex second;
    int moves = 0;
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
    const auto added = manager.AddMappedObjects({unknown, record});
    ASSERT_EQ(added.size(), 1U);
    EXPECT_EQ(State(added[0].index), "0 0 0 0 0");
    QStringList texts;
    for (const int column : {2, 5, 7, 9, 10})
        texts << table.index(2, column).data().toString();
    EXPECT_EQ(texts.join(QLatin1Char(' ')), QStringLiteral("2x1 Lamp-3 3 0/0/1 Auto"));
    manager.ApplyObjectParams(added);
    EXPECT_EQ(State(added[0].index), "100 50 20 10 0");
    manager.SetDescription(first, L"Bar");
    EXPECT_EQ(table.GetItemByDescription(L"Bar"), table.GetElement(0));

    // An element that was made elsewhere keeps its number while that is free.
    for (const auto& [number, becomes] : {std::pair(3, 4), {9, 9}, {0, 10}}) {
        std::vector<std::unique_ptr<MappedLedItem>> items;
        items.push_back(std::make_unique<MappedLedItem>(
            L"Bare", *manager.GetLEDFixtureByProduct(L"Lamp"), nullptr, nullptr));
        items.back()->uniqueID = number;
        EXPECT_EQ(manager.GetUniqueID(manager.AddMappedItems(std::move(items)).front()), becomes);
    }
    table.ReplaceNodeAddress(QStringLiteral("Auto"), QStringLiteral("2.0.0.1"), {});
    EXPECT_EQ(table.index(0, MappedDeviceModel::NodeColumn).data().toString(),
              QStringLiteral("2.0.0.1"));
    // One without a place is passed over.
    manager.CropToSelection({first, table.index(3, 0)});
    EXPECT_EQ(manager.CanvasPixels(), QSize(20, 10));
    manager.SetCanvasSize(-5, 100'001);
    EXPECT_EQ(manager.CanvasPixels(), QSize(1, 100'000)) << "within what a document keeps";
}

} // namespace
