// SPDX-License-Identifier: MIT
// Elements that are patched one behind the other, and which of them share channels then.
#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/PatchOverlaps.h"
#include "FixtureModel/PatchTurns.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>

namespace {

/// Channel counts, each first one of a line behind a "|".
std::vector<PatchTurn> Turns(const std::string& text)
{
    std::vector<PatchTurn> turns;
    std::istringstream words(text);
    bool begins = false;
    for (std::string word; words >> word;) {
        if (word != "|")
            turns.push_back({std::stoi(word), begins});
        begins = word == "|";
    }
    return turns;
}

std::string AddressesOf(const std::string& turns, const PatchRules& rules)
{
    std::string text;
    for (const auto& address : AddressesInTurn(Turns(turns), rules)) {
        text += text.empty() ? "" : " ";
        text += address
                    ? std::to_string(address->subnet) + '/' + std::to_string(address->universe) +
                          '/' + std::to_string(address->channel)
                    : "-";
    }
    return text;
}

TEST(PatchTurns, RunOnFromUniverseToUniverse)
{
    constexpr bool whole = true;
    constexpr bool runOn = false;
    struct Case
    {
        PatchAddress start;
        int gap;
        bool neverSplit;
        std::string turns;
        std::string addresses;
    };
    for (const Case& each : {
             Case{{}, 0, whole, "170 170 170 170", "0/0/1 0/0/171 0/0/341 0/1/1"},
             {{}, 0, runOn, "170 170 170 170 170", "0/0/1 0/0/171 0/0/341 0/0/511 0/1/169"},
             {{}, 0, whole, "256 256 256", "0/0/1 0/0/257 0/1/1"}, // 512 is the last that fits
             {{0, 0, 477}, 0, whole, "36 36", "0/0/477 0/1/1"},
             {{0, 0, 478}, 0, whole, "36 36", "0/1/1 0/1/37"},
             {{0, 0, 500}, 0, runOn, "36 36", "0/0/500 0/1/24"},
             {{}, 10, whole, "100 3 0", "0/0/1 0/0/111 0/0/124"},
             {{0, 0, 490}, 30, whole, "1 1", "0/0/490 0/1/1"}, // no gap at the beginning
             {{0, 0, 490}, 30, runOn, "1 1", "0/0/490 0/1/9"},
             {{0, 0, 510}, 1, whole, "1 1 1", "0/0/510 0/0/512 0/1/1"},
             {{0, 15, 500}, 0, whole, "36 512 1", "1/0/1 1/1/1 1/2/1"},
             {{15, 15, 400}, 0, whole, "100 100 1", "15/15/400 - -"},
             {{15, 15, 400}, 0, runOn, "113 1", "15/15/400 -"},
             {{}, 0, whole, "0 -5 3 3", "0/0/1 0/0/1 0/0/1 0/0/4"},
             {{-1, 99, 0}, -5, whole, "3 3", "0/15/1 0/15/4"},
             {{20, 3, 900}, 1000, runOn, "1 1", "15/3/512 15/4/512"},
         })
        EXPECT_EQ(AddressesOf(each.turns, {each.start, each.gap, each.neverSplit, false}),
                  each.addresses)
            << each.turns;
}

TEST(PatchTurns, ALineBeginsAUniverse)
{
    for (const bool neverSplit : {true, false}) {
        const auto lines = [&](const PatchAddress& start, const char* turns) {
            return AddressesOf(turns, {start, 7, neverSplit, true});
        };
        EXPECT_EQ(lines({0, 2, 11}, "| 100 100 | 100 | 1"), "0/2/11 0/2/118 0/3/1 0/4/1");
        EXPECT_EQ(lines({}, "| 512 | 1"), "0/0/1 0/1/1") << "a full universe leaves none out";
        EXPECT_EQ(lines({15, 15, 1}, "| 1 | 1"), "15/15/1 -");
    }
    // What runs over the end of a universe takes the next one too.
    EXPECT_EQ(AddressesOf("| 36 | 36", {{0, 0, 500}, 0, false, true}), "0/0/500 0/2/1");
}

TEST(SharedChannels, NamesTheFirstOneThatANodeReceivesToo)
{
    std::mt19937 random(11);
    const auto below = [&random](unsigned limit) {
        return static_cast<int>(random() % limit);
    };
    for (int round = 0; round < 300; ++round) {
        std::vector<PatchedElement> elements;
        for (int i = below(30); i >= 0; --i) {
            const wchar_t* nodes[] = {AutoNode, L"2.0.0.1", L"2.0.0.2"};
            elements.push_back({static_cast<std::uint16_t>(below(3)),
                                ChannelsSent(below(600) - 10, below(40)), nodes[below(3)],
                                below(2) == 0});
        }
        const auto first = FirstSharing(elements);
        ASSERT_EQ(first.size(), elements.size());
        for (std::size_t i = 0; i < elements.size(); ++i) {
            std::optional<std::size_t> wanted;
            for (std::size_t k = 0; k < elements.size() && elements[i].chosen; ++k) {
                // Alone with each other, and only the one as the chosen.
                std::vector<PatchedElement> two = {elements[i], elements[k]};
                two[1].chosen = false;
                const bool share = i != k && !OverlapsWithChosen(two).empty();
                if (share &&
                    (!wanted || elements[k].channels.first < elements[*wanted].channels.first))
                    wanted = k;
            }
            ASSERT_EQ(first[i], wanted) << "round " << round << ", element " << i;
        }
    }
}

} // namespace
