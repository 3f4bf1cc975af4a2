// SPDX-License-Identifier: MIT
#include "Model/ElementFields.h"

#include <gtest/gtest.h>

#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"

// What of it is mixed is judged at the inspector's fields.
TEST(ElementFieldsTest, TheLastStartChannelIsThatOfTheWidestElement)
{
    DeviceManager manager{QString()};
    manager.Initialize();
    ElementIds ids = {4711}; // There is no such element.
    EXPECT_EQ(FoldElements(manager, ids).lastStartChannel, 512);
    EXPECT_FALSE(FoldElements(manager, ids).allArtNet);
    const DMXMappingArtNet address(0, 0, 1, AutoNode, L"");
    for (const auto& [channels, last] :
         {std::pair(0, 512), {3, 510}, {5, 508}, {3, 508}, {170, 343}}) {
        const DeviceLedItem fixture(L"Maker", L"Lamp", PixelMap(1, 1, PixelMapType::RGB), 1,
                                    channels);
        std::vector<std::unique_ptr<MappedLedItem>> items;
        items.push_back(std::make_unique<MappedLedItem>(
            L"", fixture, std::make_unique<VideoMapping>(), &address));
        ids.push_back(manager.GetUniqueID(manager.AddMappedItems(std::move(items)).front()));
        EXPECT_EQ(FoldElements(manager, ids).lastStartChannel, last) << channels;
    }
    EXPECT_TRUE(FoldElements(manager, ids).allArtNet);
    EXPECT_EQ(FoldElements(manager, ids).count, 5);
}
