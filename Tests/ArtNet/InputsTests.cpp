// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetInputs.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr std::int64_t OneMillisecond = 1'000'000;

std::string ConflictText(const std::vector<ArtNetSourceConflict>& conflicts)
{
    std::string text;
    for (const auto& [portAddress, taken, ignored] : conflicts)
        text += std::to_string(portAddress) + ':' + static_cast<char>(taken) + '>' +
                static_cast<char>(ignored) + ' ';
    return text;
}

TEST(Inputs, TheFirstOfSeveralSendersCountsUntilItIsSilent)
{
    struct Step
    {
        int milliseconds;
        std::string packet; ///< sender and universe; with '?' the sender may be ourselves
        std::string taken;  ///< whose packet counts in universes 1 and 2 then
        std::string conflicts;
    };
    ArtNetInputs inputs;
    inputs.Add(2, true);
    inputs.Add(1, true);
    for (const auto& [milliseconds, packet, taken, conflicts] :
         std::vector<Step>{{0, "a3", "--", ""}, // not kept
                           {0, "a1?", "--", ""},
                           {1, "a1", "a-", ""},
                           {1, "a1?", "a-", ""}, // it is known by now
                           {2, "b1?", "a-", ""},
                           {3, "b1", "a-", "1:a>b "},
                           {3, "b1?", "a-", "1:a>b "},
                           {4, "b2", "ab", "1:a>b "}, // each universe for itself
                           {5, "a2", "ab", "1:a>b 2:b>a "},
                           {2500, "c1", "ab", "1:a>c 2:b>a "},
                           {2501, "c1", "cb", "2:b>a "}, // 2.5 s after the last of a
                           {2502, "a1", "cb", "1:c>a 2:b>a "},
                           {2504, "c1", "cb", "1:c>a "},
                           {2505, "a2", "ca", "1:c>a "},
                           {5001, "c1", "ca", "1:c>a "},
                           {5002, "c1", "ca", ""}})
    {
        const std::int64_t now = milliseconds * OneMillisecond;
        const std::array<std::byte, 1> channel{static_cast<std::byte>(packet[0])};
        inputs.Take({static_cast<std::uint16_t>(packet[1] - '0'), channel},
                    static_cast<std::uint32_t>(packet[0]), now, packet.size() == 2);
        std::string sent;
        for (const int universe : {1, 2}) {
            const std::uint8_t value = (*inputs.Find(universe))[0];
            sent += value == 0 ? '-' : static_cast<char>(value);
        }
        EXPECT_EQ(sent, taken) << milliseconds << packet;
        EXPECT_EQ(ConflictText(inputs.Conflicts(now)), conflicts) << milliseconds << packet;
    }
    EXPECT_EQ(inputs.Find(3), nullptr);

    inputs.Take({2, {}}, 'b', 5003 * OneMillisecond, true);
    inputs.Take({1, {}}, 'b', 5003 * OneMillisecond, true);
    EXPECT_EQ(ConflictText(inputs.Conflicts(5003 * OneMillisecond, 2, 1)), "2:a>b ");
    EXPECT_EQ(ConflictText(inputs.Conflicts(5003 * OneMillisecond, 0, 2)), "1:c>b ");
}

TEST(Inputs, WhoSendsAUniverseThatIsNotKeptIsNotedUntilHeIsSilent)
{
    using Others = std::vector<ArtNetOtherSender>;
    using Verdict = ArtNetInputs::Verdict;
    ArtNetInputs inputs;
    inputs.Add(1, true);
    const auto take = [&inputs](std::uint16_t universe, std::uint32_t sender, std::int64_t now,
                                bool known) {
        return inputs.Take({universe, {}}, sender, now, known);
    };
    EXPECT_EQ(take(7, 'a', 0, false), Verdict::Unheard);
    EXPECT_EQ(inputs.OtherSenders(0), Others{});
    EXPECT_EQ(take(7, 'b', 0, true), Verdict::NotKept);
    EXPECT_EQ(take(7, 'a', 1, true), Verdict::NotKept);
    EXPECT_EQ(take(7, 'a', 2, false), Verdict::NotKept) << "it is known by now";
    EXPECT_EQ(take(1, 'a', 2, true), Verdict::Taken);
    EXPECT_EQ(inputs.OtherSenders(2), (Others{{7, 'a'}, {7, 'b'}}));
    constexpr std::int64_t silence = ArtNetOtherSenders::Silence;
    EXPECT_EQ(inputs.OtherSenders(silence), (Others{{7, 'a'}}));
    EXPECT_EQ(inputs.OtherSenders(silence + 2), Others{});
    EXPECT_EQ(take(7, 'a', silence + 2, false), Verdict::Unheard) << "the address may be ours now";

    // A flood costs no memory, and the newest are noted.
    for (std::uint32_t sender = 1; sender <= 3000; ++sender)
        take(static_cast<std::uint16_t>(sender % 3), sender, 2 * silence + sender, true);
    EXPECT_EQ(inputs.OtherSenders(2 * silence + 3000), (Others{{0, 2991},
                                                               {0, 2994},
                                                               {0, 2997},
                                                               {0, 3000},
                                                               {2, 2990},
                                                               {2, 2993},
                                                               {2, 2996},
                                                               {2, 2999}}));
    inputs.Clear();
    EXPECT_EQ(inputs.OtherSenders(2 * silence + 3000), Others{});
}

TEST(Inputs, OfferedUniversesMakePagesOfFourThatShareTheirSubNet)
{
    ArtNetInputs inputs;
    for (int universe = 14; universe < 22; ++universe)
        inputs.Add(universe, universe != 15);
    inputs.Add(15, true); // another client's
    inputs.Add(14, false);
    inputs.Add(0x1234, true);
    inputs.Take({17, {}}, 1, 0, true);
    inputs.Take({0x1234, {}}, 1, 1, true);
    using Page = ArtNetInputs::Page;
    const Page last{0x12, 3, 1, {4}, 1};
    const std::vector<Page> pages{
        {0, 0, 2, {14, 15}, 0}, {0, 1, 4, {0, 1, 2, 3}, 2}, {0, 1, 2, {4, 5}, 0}, last};
    EXPECT_EQ(inputs.Offered(ArtNetInputs::Silence - 1), pages);
    EXPECT_EQ(inputs.Offered(ArtNetInputs::Silence)[1].dataComesIn, 0);
    EXPECT_EQ(inputs.Offered(ArtNetInputs::Silence)[3], last);
    for (int universe = 0; universe < 1000; ++universe)
        inputs.Add(universe, true);
    EXPECT_EQ(inputs.Offered(0).size(), ArtNetInputs::MaxPages);
}

} // namespace
