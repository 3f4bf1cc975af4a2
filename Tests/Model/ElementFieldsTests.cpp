// SPDX-License-Identifier: MIT
#include "Model/ElementFields.h"

#include <gtest/gtest.h>

#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"

namespace {

/// A canvas of 200 by 100 with elements of a fixture for each of some numbers of channels.
class Fold : public testing::Test
{
protected:
    Fold()
    {
        manager.Initialize();
        manager.SetCanvasSize(200, 100);
    }

    std::int64_t Add(int channels, float centre = 0.5F)
    {
        const DeviceLedItem fixture(L"Maker", L"Lamp", PixelMap(1, 1, PixelMapType::RGB), 1,
                                    channels);
        const DMXMappingArtNet address(0, 0, 1, AutoNode, L"");
        auto video = std::make_unique<VideoMapping>(PointF{centre, 0.5F}, PointF{0.1F, 0.2F}, 0.0F,
                                                    false, false);
        std::vector<std::unique_ptr<MappedLedItem>> items;
        items.push_back(std::make_unique<MappedLedItem>(L"", fixture, std::move(video), &address));
        const auto added = manager.AddMappedItems(std::move(items));
        ids.push_back(manager.GetUniqueID(added.front()));
        return ids.back();
    }
    [[nodiscard]] ElementFields Read() const { return FoldElements(manager, ids); }
    MappedLedItem& Item(std::int64_t id) const
    {
        return *manager.GetMappedDeviceModel()->GetItemByUniqueID(id);
    }

    DeviceManager manager{QString()};
    ElementIds ids;
};

} // namespace

TEST_F(Fold, TheLastStartChannelIsThatOfTheWidestElement)
{
    EXPECT_EQ(Read().lastStartChannel, 512);
    EXPECT_FALSE(Read().allArtNet);
    for (const auto& [channels, last] :
         {std::pair(0, 512), {3, 510}, {5, 508}, {3, 508}, {170, 343}}) {
        Add(channels);
        EXPECT_EQ(Read().lastStartChannel, last) << channels;
    }
    EXPECT_TRUE(Read().allArtNet);
    Item(ids.back()).SetArtNetMapping(std::nullopt);
    EXPECT_FALSE(Read().allArtNet);
    EXPECT_TRUE(Read().hasArtNet.mixed);
}

TEST_F(Fold, AFieldIsMixedWhenItsDifferenceShows)
{
    Add(3);
    ids.push_back(4711); // There is no such element.
    const std::int64_t other = Add(3, 0.50001F);
    EXPECT_EQ(Read().count, 2);
    EXPECT_FALSE(Read().left.mixed) << "0.002 pixels";
    EXPECT_NEAR(Read().left.value, 90, 1e-4);
    EXPECT_EQ(Read().width.value, 20);
    Item(other).EditVideoMapping()->width = 0.102F; // 20.4
    EXPECT_FALSE(Read().width.mixed);
    Item(other).EditVideoMapping()->width = 0.103F;
    EXPECT_TRUE(Read().width.mixed);
    EXPECT_TRUE(Read().left.mixed);
    EXPECT_FALSE(Read().height.mixed);
    Item(other).EditArtNetMapping()->SetNode(L"2.0.0.10", L"");
    EXPECT_TRUE(Read().nodeText.mixed);
    EXPECT_EQ(Read().nodeText.value, L"Auto") << "the first one's";
    EXPECT_FALSE(Read().channel.mixed);
}
