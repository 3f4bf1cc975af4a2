// SPDX-License-Identifier: MIT
#include "Model/MappedDeviceModel.h"
#include "Model/PatchWalk.h"

#include <functional>

#include <gtest/gtest.h>

namespace {

void Add(MappedDeviceModel& document, const std::optional<DMXMappingArtNet>& address)
{
    const DeviceLedItem fixture(L"Maker", L"Bar", PixelMap(1, 1, PixelMapType::RGB), 1, 3);
    auto element =
        std::make_unique<MappedLedItem>(L"Bar", fixture, nullptr, address ? &*address : nullptr);
    element->uniqueID = document.GetNextElementID();
    document.AddMappingElement(std::move(element));
}

TEST(PatchWalk, GoesByAddressAndKeepsItsPlaceWhileTheDocumentChanges)
{
    const auto at = [](int universe, int channel, const wchar_t* node = AutoNode) {
        return DMXMappingArtNet(universe / 16, universe % 16, channel, node, L"");
    };
    MappedDeviceModel document;
    for (const auto& address : {std::optional(at(20, 97)),
                                {at(0, 10)},
                                {},
                                {at(20, 1, L"2.0.0.9")},
                                {at(20, 300, L"2.0.0.9")},
                                {at(0, 10)},
                                {at(4, 400)}})
        Add(document, address);
    // By address: 2 6 7 4 5 1
    PatchWalk walk;
    TakenElements taken;
    const auto begin = [&](const ElementIds& chosen, std::int64_t start) {
        walk.Begin(document, chosen, start);
    };
    const auto take = [&](const ElementIds& ids) {
        taken = document.TakeElements(ids);
        walk.Follow(document);
    };
    const auto putBack = [&] {
        document.PutBackElements(std::move(taken));
        walk.Follow(document);
    };
    struct Case
    {
        const char* what;
        std::function<void()> act;
        std::int64_t current;
        std::size_t position;
        std::size_t count;
    };
    const std::vector<Case> cases = {
        {"all", [&] { begin({}, 0); }, 2, 0, 6},
        {"not before the first", [&] { walk.Step(-1); }, 2, 0, 6},
        {"equal addresses by row", [&] { walk.Step(1); }, 6, 1, 6},
        {"several", [&] { walk.Step(3); }, 5, 4, 6},
        {"the node's elements together", [&] { walk.Step(-1); }, 4, 3, 6},
        {"not behind the last", [&] { walk.Step(10); }, 1, 5, 6},
        {"without address", [&] { EXPECT_FALSE(walk.GoTo(3)); }, 1, 5, 6},
        {"from one on", [&] { begin({}, 7); }, 7, 2, 6},
        {"another goes", [&] { take({2}); }, 7, 1, 5},
        {"and comes back", putBack, 7, 2, 6},
        {"the present one goes with the next",
         [&] {
             take({7, 4});
         },
         5, 2, 4},
        {"undone", putBack, 5, 4, 6},
        {"the last ones go",
         [&] {
             take({5, 1});
         },
         4, 3, 4},
        {"undone again", putBack, 4, 3, 6},
        {"another address",
         [&] {
             document.GetItemByUniqueID(4)->EditArtNetMapping()->SetSubnet(15);
             walk.Follow(document);
         },
         4, 5, 6},
        {"all go",
         [&] {
             take({1, 2, 3, 4, 5, 6, 7});
         },
         0, 0, 0},
        {"nowhere to go", [&] { walk.Step(1); }, 0, 0, 0},
        {"and come back", putBack, 2, 0, 6},
        {"chosen ones",
         [&] {
             begin({1, 3, 6}, 2);
         },
         6, 0, 2},
        {"the chosen are gone",
         [&] {
             take({1, 6});
         },
         0, 0, 0},
    };
    for (const Case& each : cases) {
        each.act();
        EXPECT_EQ(walk.Current(), each.current) << each.what;
        EXPECT_EQ(walk.Position(), each.position) << each.what;
        EXPECT_EQ(walk.Count(), each.count) << each.what;
    }
    EXPECT_EQ(walk.LeftOut(), 1U);
}

} // namespace
