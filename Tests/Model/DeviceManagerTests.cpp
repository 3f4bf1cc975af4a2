// SPDX-License-Identifier: MIT
// What each change of an element writes and tells, in order.
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Support/LogCapture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

class DeviceManagerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        manager.Initialize();
        manager.SetCanvasSize(200, 100);
        manager.GetDeviceModel()->AddFixture(std::make_unique<DeviceLedItem>(
            L"Maker", L"Lamp", PixelMap(2, 1, PixelMapType::RGB), 0, 6));
        MappedObjectParams params;
        params.fixtureID = 1;
        params.ipconf = QStringLiteral("Auto");
        const auto added = manager.AddMappedObjects({params, params});
        first = added.at(0).index;
        second = added.at(1).index;
        manager.SetObjectSize({{first, 20, 10}, {second, 20, 10}});
        Listen();
    }

    template <typename... Values>
    void Note(const char* name, Values... values)
    {
        std::ostringstream line;
        line << name;
        ((line << ' ' << values), ...);
        told.push_back(line.str());
    }

    void Listen()
    {
        using M = DeviceManager;
        const auto geometry = [this](const char* name) {
            return [this, name](int64_t id, const Zen::Vector4DF& g) {
                Note(name, id, g.left, g.top, g.height, g.width);
            };
        };
        QObject::connect(&manager, &M::deviceChangeGeometry, &manager, geometry("final"));
        QObject::connect(&manager, &M::deviceUpdatedGeometry, &manager, geometry("step"));
        const auto pair = [this](const char* name) {
            return [this, name](int64_t id, float a, float b) {
                Note(name, id, a, b);
            };
        };
        QObject::connect(&manager, &M::deviceChangeCentreXY, &manager, pair("xy"));
        QObject::connect(&manager, &M::deviceChangeMapSize, &manager, pair("size"));
        const auto single = [this](const char* name) {
            return [this, name](int64_t id, float value) {
                Note(name, id, value);
            };
        };
        QObject::connect(&manager, &M::deviceChangeCentreX, &manager, single("x"));
        QObject::connect(&manager, &M::deviceChangeCentreY, &manager, single("y"));
        QObject::connect(&manager, &M::deviceChangeRotation, &manager, single("turn"));
        QObject::connect(&manager, &M::deviceChangeFlip, &manager,
                         [this](int64_t id, int side, bool on) { Note("flip", id, side, on); });
        QObject::connect(&manager, &M::devicesChangedGeometry, &manager, [this] { Note("end"); });
        QObject::connect(&manager, &M::mappingsChanged, &manager, [this] { Note("mappings"); });
        QObject::connect(&manager, &M::signalDocumentSavedState, &manager,
                         [this](bool saved) { Note("saved", saved); });
    }

    Lines Told() { return std::exchange(told, {}); }
    const VideoMapping& Video(const QModelIndex& index)
    {
        return *manager.GetMappedItem(index)->GetVideoMapping();
    }
    float Left(const QModelIndex& index)
    {
        const VideoMapping& video = Video(index);
        return (video.centerX - video.width / 2) *
               static_cast<float>(manager.GetMappedDeviceModel()->GetCanvasWidth());
    }

    Support::LogCapture log;
    DeviceManager manager{QString()};
    QPersistentModelIndex first;
    QPersistentModelIndex second;
    Lines told;
};

TEST_F(DeviceManagerTest, AMoveTellsStepAndEnd)
{
    manager.MoveObjects({{first, 30, 40}, {second, -10, 0}}, false);
    EXPECT_EQ(Told(), (Lines{"step 1 30 40 10 20", "step 2 -10 0 10 20", "end"}));
    EXPECT_FLOAT_EQ(Video(first).centerX, 0.2F);
    EXPECT_FLOAT_EQ(Video(first).centerY, 0.45F);
    EXPECT_NEAR(Video(second).centerX, 0, 1e-6);
    manager.MoveObject(first, 0, 0, true);
    EXPECT_EQ(Told(), (Lines{"final 1 0 0 10 20", "end"}));

    manager.SetObjectSize(first, 0, 0);
    manager.MoveObject(first, 50, 50, true);
    EXPECT_EQ(Told(), (Lines{"size 1 0 0", "end", "final 1 50 50 0 0", "end"}));
    EXPECT_FLOAT_EQ(Video(first).centerX, 0.25F);
    EXPECT_FLOAT_EQ(Video(first).centerY, 0.5F);
}

TEST_F(DeviceManagerTest, CentreSizeAndFlipsAreTold)
{
    manager.SetObjectCentre(first, 50, 75);
    manager.SetObjectSize(first, 100, 50);
    manager.SetObjectFlipState({{first, FlipHorizontal, true}, {second, FlipVertical, true}});
    EXPECT_EQ(Told(), (Lines{"x 1 50", "y 1 75", "xy 1 50 75", "end", "size 1 100 50", "end",
                             "flip 1 0 1", "flip 2 1 1", "end"}));
    const VideoMapping& video = Video(first);
    EXPECT_EQ(video.GetCenter(), (PointF{0.25F, 0.75F}));
    EXPECT_EQ(video.GetSize(), (PointF{0.5F, 0.5F}));
    EXPECT_TRUE(video.flipHorizontal && !video.flipVertical);
    EXPECT_TRUE(!Video(second).flipHorizontal && Video(second).flipVertical);
    // Numbers that a file could not bring back change nothing.
    manager.SetObjectCentre(first, std::numeric_limits<double>::quiet_NaN(), 0);
    manager.SetObjectSize(first, 1e300, 1);
    EXPECT_EQ(Told(), (Lines{"end", "end"}));
    EXPECT_EQ(video.GetCenter(), (PointF{0.25F, 0.75F}));
}

TEST_F(DeviceManagerTest, AnglesAreWholeDegreesUpToAFullTurn)
{
    const std::vector<std::pair<float, float>> cases = {
        {725, 5}, {360, 360}, {720, 360}, {360.5F, 0}, {44.9F, 44}, {0, 0}, {-0.5F, 0}, {-90, -90}};
    for (const auto& [given, stored] : cases) {
        manager.SetObjectRotation(first, given);
        EXPECT_EQ(manager.GetObjectRotation(first), stored) << given;
        std::ostringstream line;
        line << "turn 1 " << stored;
        EXPECT_EQ(Told(), (Lines{line.str(), "end"})) << given;
    }
    manager.SetObjectRotation(first, INFINITY);
    EXPECT_EQ(manager.GetObjectRotation(first), -90);
}

TEST_F(DeviceManagerTest, ARectangleBeginsOnAWholePixel)
{
    manager.SetObjectRects({{first, 10.5, 20, 4, 10}, {second, -10.5, 20.4, 4, 10}});
    EXPECT_EQ(Told(), (Lines{"x 1 11", "y 1 20", "size 1 4 10", "x 2 -10", "y 2 20", "size 2 4 10",
                             "end"}));
    EXPECT_FLOAT_EQ(Left(first), 9);
    EXPECT_FLOAT_EQ(Left(second), -12);
}

TEST_F(DeviceManagerTest, ABatchEndsAtAnEntryWithoutElement)
{
    const QModelIndex none;
    manager.MoveObjects({{first, 1, 1}, {none, 2, 2}, {second, 3, 3}}, true);
    EXPECT_EQ(Told(), Lines{"final 1 1 1 10 20"});
    manager.SetObjectCentre({{none, 2, 2}, {second, 3, 3}});
    manager.SetObjectSize({{none, 2, 2}, {second, 3, 3}});
    manager.SetObjectFlipState({{none, 0, true}, {second, 0, true}});
    manager.SetObjectRects({{none, 2, 2, 2, 2}, {second, 3, 3, 3, 3}});
    EXPECT_EQ(Told(), Lines{});
    manager.SetObjectRotation({{none, 5}, {second, 6}});
    EXPECT_EQ(Told(), (Lines{"turn 2 6", "end"}));

    log.Clear();
    EXPECT_EQ(manager.GetFixtureUniqueID(none), 0);
    EXPECT_EQ(manager.GetUniqueID(none), -1);
    EXPECT_EQ(manager.GetObjectRotation(none), 0);
    EXPECT_EQ(manager.GetMappedObjectArtNetMapping(none), nullptr);
    EXPECT_EQ(manager.GetDeviceChannelCount(77), 0);
    EXPECT_EQ(log.Messages(),
              (Lines{"Item lost?!", "Item lost!",
                     "GetMappedObjectArtNetMapping did not find item in mappedDeviceModel!",
                     "GetDeviceSize did not find a Library item with ID 77"}));
}

TEST_F(DeviceManagerTest, ACropMovesEveryElementAndKeepsItsSize)
{
    manager.SetObjectRects({{first, 100, 50, 40, 20}, {second, 10, 10, 4, 4}});
    Told();
    manager.CropToSelection({});
    EXPECT_EQ(Told(), Lines{});
    manager.CropToSelection({first});
    EXPECT_EQ(Told(), (Lines{"x 1 20", "y 1 10", "size 1 40 20", "x 2 -70", "y 2 -30", "size 2 4 4",
                             "end", "saved 0"}));
    int width = 0;
    int height = 0;
    manager.GetCanvasSize(width, height);
    EXPECT_EQ(width, 40);
    EXPECT_EQ(height, 20);
    EXPECT_NEAR(Left(first), 0, 1e-4);
    EXPECT_FLOAT_EQ(Video(first).width, 1);
    EXPECT_TRUE(manager.documentDirty);
}

TEST_F(DeviceManagerTest, AddedElementsTakeNumbersAndThenTheirGeometry)
{
    MappedObjectParams good;
    good.fixtureID = 1;
    good.posX = 100;
    good.posY = 50;
    good.width = 20;
    good.height = 10;
    MappedObjectParams unknown = good;
    unknown.fixtureID = 9;
    log.Clear();
    EXPECT_FALSE(manager.AddMappedObject(unknown).isValid());
    EXPECT_TRUE(log.Has("GetLEDFixture could not find #9"));
    const auto added = manager.AddMappedObjects({unknown, good});
    ASSERT_EQ(added.size(), 1U);
    EXPECT_EQ(Told(), (Lines{"mappings", "mappings"}));
    const MappedLedItem* element = manager.GetMappedItem(added[0].index);
    EXPECT_EQ(element->description, L"Lamp-3");
    EXPECT_EQ(element->GetVideoMapping()->GetSize(), PointF{});
    manager.ApplyObjectParams(added);
    EXPECT_EQ(Told(), (Lines{"size 3 20 10", "end", "x 3 100", "y 3 50", "xy 3 100 50", "end",
                             "turn 3 0", "end", "flip 3 0 0", "flip 3 1 0", "end"}));
    EXPECT_EQ(element->GetVideoMapping()->GetCenter(), (PointF{0.5F, 0.5F}));
    manager.RemoveMappedObjects({1, 3, 42});
    EXPECT_EQ(Told(), Lines{"mappings"});
    EXPECT_EQ(manager.GetMappedDeviceModel()->rowCount(), 1);
    EXPECT_FALSE(first.isValid());
}

} // namespace
