// SPDX-License-Identifier: MIT
#include "DebugVariables/DebugVariables.h"

#include <algorithm>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Zen::DebugVariables;
using Duration = DebugVariables::Duration;

// Computed by another program; they cover every length of the tail and bytes above 127.
static_assert(DebugVariables::Key("") == 0x0A3B641E);
static_assert(DebugVariables::Key("a") == 0xE80372E1);
static_assert(DebugVariables::Key("ab") == 0x9441F816);
static_assert(DebugVariables::Key("abcd") == 0x73364BA1);
static_assert(DebugVariables::Key("\xC3\xA9\xFF") == 0xAD372981);

std::vector<std::string> Names(const DebugVariables& variables)
{
    std::vector<std::string> names;
    variables.ListNames(names);
    return names;
}

TEST(DebugVariables, ValuesConvertAndTheDumpNamesThem)
{
    DebugVariables variables;
    std::string dump(64, '#');
    EXPECT_EQ(variables.DumpValues(dump), 0U);
    const std::vector<std::tuple<DebugVariables::Tagged, bool, int, float, const char*>> cases{
        {-7, true, -7, -7.0F, R"({"x":-7})"},
        {-2.75F, true, -2, -2.75F, R"({"x":-2.750000})"},
        {-0.0F, false, 0, 0.0F, R"({"x":-0.000000})"},
        {2147483648.0F, true, 0, 2147483648.0F, R"({"x":2147483648.000000})"},
        {true, true, 1, 1.0F, R"({"x":true})"},
        {Duration{250}, true, 250, 250.0F, R"({"x":250})"}};
    for (const auto& [value, asBool, asInt, asFloat, dumped] : cases) {
        std::visit([&](auto plain) { variables.Set("x", plain); }, value);
        const auto read = variables.Get(DebugVariables::Key("x"));
        EXPECT_EQ(std::tuple(read.AsBool(), read.AsInt(), read.AsFloat()),
                  std::tuple(asBool, asInt, asFloat));
        EXPECT_EQ(variables.Get("x"), value);
        EXPECT_EQ(dump.substr(0, variables.DumpValues(dump)), dumped);
    }
}

// 126 of 127 slots: nearly every name has its slot taken by another, and the search passes the end.
TEST(DebugVariables, AFullTableRefusesNewNamesAndStillAnswers)
{
    DebugVariables variables;
    const std::string longName = "abcdefghijklmnopqrstuvwxyz0123456789";
    variables.Set(longName, 0);
    variables.Set(std::string_view("part of a text").substr(0, 4), 0);
    for (int i = 1; i <= 200; ++i)
        variables.Set("name" + std::to_string(i), i);
    EXPECT_EQ(Names(variables).size(), 126U);
    EXPECT_EQ(std::ranges::count(Names(variables), longName.substr(0, 32)), 1);
    EXPECT_EQ(std::ranges::count(Names(variables), "part"), 1);
    for (int i = 1; i <= 200; ++i)
        EXPECT_EQ(variables.Get("name" + std::to_string(i)),
                  DebugVariables::Tagged(i < 125 ? i : 0));
    for (std::size_t room = 0; room < 4096; ++room) { // a dump ends where an item does not fit
        std::string dump(4096, '#');
        const std::size_t written = variables.DumpValues(std::span(dump).first(room));
        EXPECT_LE(written, room);
        EXPECT_EQ(dump.find_first_not_of('#', written), std::string::npos) << room;
    }
    variables.Set("name124", true); // a known name may still change
    EXPECT_EQ(variables.Get("name124"), DebugVariables::Tagged(true));
}

TEST(DebugVariables, ThreadsThatSetTheSameNewNamesMeetInOneSlot)
{
    for (int round = 0; round < 50; ++round) {
        DebugVariables variables;
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([&variables] {
                for (int i = 0; i < 60; ++i)
                    variables.Set("name" + std::to_string(i), i);
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(Names(variables).size(), 60U) << "none is in two slots";
    }
}

} // namespace
