// SPDX-License-Identifier: MIT
#include "DebugVariables/DebugVariables.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Zen::DebugVariables;
using Duration = DebugVariables::Duration;
using Type = DebugVariables::Type;

constexpr std::uint32_t SlotCount = 127;
constexpr float NotANumber = std::numeric_limits<float>::quiet_NaN();

/// The `nth` name of the form "v000" whose search begins at `slot`.
consteval std::array<char, 4> NameAt(std::uint32_t slot, int nth)
{
    for (int i = 0; i < 1000; ++i) {
        const std::array<char, 4> name{'v', static_cast<char>('0' + i / 100),
                                       static_cast<char>('0' + i / 10 % 10),
                                       static_cast<char>('0' + i % 10)};
        if (DebugVariables::Key({name.data(), name.size()}) % SlotCount == slot && nth-- == 0)
            return name;
    }
    throw "no such name";
}

template <std::size_t Size>
constexpr std::string_view View(const std::array<char, Size>& name)
{
    return {name.data(), Size};
}

std::vector<std::string> Names(const DebugVariables& variables)
{
    std::vector<std::string> names;
    variables.ListNames(names);
    return names;
}

/// What a dump writes into a span of `room` bytes, and that it touched nothing behind.
template <typename Dump>
std::string Written(std::size_t room, Dump dump)
{
    std::vector<char> buffer(room + 8, '#');
    const std::size_t size = dump(std::span(buffer).first(room));
    EXPECT_LE(size, room);
    EXPECT_TRUE(std::all_of(buffer.end() - 8, buffer.end(), [](char c) { return c == '#'; }));
    return {buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(size)};
}

std::string Values(const DebugVariables& variables, std::size_t room = 4096)
{
    return Written(room, [&](std::span<char> out) { return variables.DumpValues(out); });
}

std::string Types(const DebugVariables& variables, std::size_t room = 4096)
{
    return Written(room, [&](std::span<char> out) { return variables.DumpTypes(out); });
}

// Reckoned by another program; they cover every length of the tail and bytes above 127.
static_assert(DebugVariables::Key("") == 0x0A3B641E);
static_assert(DebugVariables::Key("a") == 0xE80372E1);
static_assert(DebugVariables::Key("ab") == 0x9441F816);
static_assert(DebugVariables::Key("abcd") == 0x73364BA1);
static_assert(DebugVariables::Key("\xC3\xA9\xFF") == 0xAD372981);

TEST(DebugVariables, TheSwitchIsReadByItsKey)
{
    DebugVariables variables;
    constexpr std::uint32_t key = 0x61DF7AAE;
    EXPECT_EQ(variables.Get(key).type, Type::None);
    EXPECT_FALSE(variables.GetBool(key));
    variables.Set("artnetdebug", true);
    EXPECT_EQ(variables.Get(key).type, Type::Bool);
    EXPECT_TRUE(variables.GetBool(key));
    variables.Set("artnetdebug", false);
    EXPECT_FALSE(variables.GetBool(key));
    EXPECT_EQ(Names(variables), std::vector<std::string>{"artnetdebug"});
}

TEST(DebugVariables, ValuesConvert)
{
    DebugVariables variables;
    const auto expect = [&](bool asBool, std::int32_t asInt, float asFloat) {
        const auto value = variables.Get(DebugVariables::Key("x"));
        EXPECT_EQ(value.AsBool(), asBool);
        EXPECT_EQ(value.AsInt(), asInt);
        EXPECT_EQ(value.AsFloat(), asFloat);
    };
    expect(false, 0, 0.0F);
    variables.Set("x", std::int32_t{-7});
    expect(true, -7, -7.0F);
    variables.Set("x", std::int32_t{0});
    expect(false, 0, 0.0F);
    variables.Set("x", -2.75F);
    expect(true, -2, -2.75F);
    variables.Set("x", -0.0F);
    expect(false, 0, 0.0F);
    variables.Set("x", true);
    expect(true, 1, 1.0F);
    variables.Set("x", Duration{250});
    expect(true, 250, 250.0F);

    variables.Set("x", NotANumber);
    EXPECT_TRUE(variables.GetBool(DebugVariables::Key("x")));
    for (const float wild : {NotANumber, 1e30F, -1e30F, 2147483648.0F}) {
        variables.Set("x", wild); // no integer holds it: any answer will do, undefined won't
        EXPECT_EQ(variables.Get(DebugVariables::Key("x")).AsInt(), 0);
    }
}

TEST(DebugVariables, ReadingByNameTellsTheType)
{
    DebugVariables variables;
    using Tagged = DebugVariables::Tagged;
    EXPECT_EQ(variables.Get("absent"), Tagged(std::int32_t{0}));
    variables.Set("x", 1.5F);
    EXPECT_EQ(variables.Get("x"), Tagged(1.5F));
    variables.Set("x", true);
    EXPECT_EQ(variables.Get("x"), Tagged(true));
    variables.Set("x", Duration{-3});
    EXPECT_EQ(variables.Get("x"), Tagged(Duration{-3}));
    variables.Set("x", std::int32_t{9});
    EXPECT_EQ(variables.Get("x"), Tagged(std::int32_t{9}));
}

TEST(DebugVariables, NamesOfOneSlotStandSideBySide)
{
    static constexpr auto first = NameAt(50, 0);
    static constexpr auto second = NameAt(50, 1);
    static constexpr auto next = NameAt(51, 0);
    DebugVariables variables;
    variables.Set(View(first), std::int32_t{1});
    variables.Set(View(second), std::int32_t{2});
    variables.Set(View(next), std::int32_t{3}); // its own slot is taken by now
    constexpr std::uint32_t keys[] = {DebugVariables::Key(View(first)),
                                      DebugVariables::Key(View(second)),
                                      DebugVariables::Key(View(next))};
    for (std::int32_t i = 0; i < 3; ++i)
        EXPECT_EQ(variables.Get(keys[i]).AsInt(), i + 1);
    EXPECT_EQ(Names(variables),
              (std::vector<std::string>{std::string(View(first)), std::string(View(second)),
                                        std::string(View(next))}));
}

TEST(DebugVariables, BehindTheLastSlotComesTheFirst)
{
    static constexpr auto first = NameAt(126, 0);
    static constexpr auto second = NameAt(126, 1);
    DebugVariables variables;
    variables.Set(View(first), std::int32_t{1});
    variables.Set(View(second), std::int32_t{2});
    EXPECT_EQ(variables.Get(DebugVariables::Key(View(first))).AsInt(), 1);
    EXPECT_EQ(variables.Get(DebugVariables::Key(View(second))).AsInt(), 2);
    EXPECT_EQ(Names(variables),
              (std::vector<std::string>{std::string(View(second)), std::string(View(first))}));
}

TEST(DebugVariables, AFullTableRefusesNewNamesAndStillAnswers)
{
    DebugVariables variables;
    for (std::int32_t i = 1; i <= 200; ++i)
        variables.Set("name" + std::to_string(i), i);
    EXPECT_EQ(Names(variables).size(), 126U);
    EXPECT_EQ(variables.Get("name126"), DebugVariables::Tagged(std::int32_t{126}));
    EXPECT_EQ(variables.Get("name127"), DebugVariables::Tagged(std::int32_t{0}));
    variables.Set("name126", true); // a known name may still change
    EXPECT_EQ(variables.Get("name126"), DebugVariables::Tagged(true));
}

TEST(DebugVariables, ALongNameIsCutAndItsKeyIsNot)
{
    DebugVariables variables;
    constexpr std::string_view whole = "abcdefghijklmnopqrstuvwxyz0123456789";
    constexpr std::string_view exact = "ABCDEFGHIJKLMNOPQRSTUVWXYZ012345";
    static_assert(exact.size() == 32);
    variables.Set(whole, std::int32_t{5});
    variables.Set(exact, std::int32_t{6});
    EXPECT_EQ(variables.Get(DebugVariables::Key(whole)).AsInt(), 5);
    EXPECT_EQ(variables.Get(DebugVariables::Key(whole.substr(0, 32))).type, Type::None);
    auto names = Names(variables);
    std::ranges::sort(names);
    EXPECT_EQ(names,
              (std::vector<std::string>{std::string(exact), std::string(whole.substr(0, 32))}));
    EXPECT_EQ(Values(variables).size(), 2 * (32 + 5) + 1U);
}

TEST(DebugVariables, DumpsTellEachType)
{
    const auto both = [](auto value) {
        DebugVariables variables;
        variables.Set("x", value);
        return Types(variables) + Values(variables);
    };
    EXPECT_EQ(both(std::int32_t{-7}), R"({"x":int}{"x":-7})");
    EXPECT_EQ(both(1.5F), R"({"x":float}{"x":1.500000})");
    EXPECT_EQ(both(true), R"({"x":bool}{"x":true})");
    EXPECT_EQ(both(false), R"({"x":bool}{"x":false})");
    EXPECT_EQ(both(Duration{3}), R"({"x":duration}{"x":3})");
}

TEST(DebugVariables, DumpsOfAnEmptyTableAndIntoTinySpans)
{
    const DebugVariables empty;
    std::array<char, 4> span{'#', '#', '#', '#'};
    EXPECT_EQ(empty.DumpValues(span), 0U);
    EXPECT_EQ(View(span), "{###");
    span = {'#', '#', '#', '#'};
    EXPECT_EQ(empty.DumpTypes(std::span(span).first(1)), 0U);
    EXPECT_EQ(empty.DumpTypes(std::span<char>()), 0U);
    EXPECT_EQ(View(span), "####");
}

TEST(DebugVariables, ADumpEndsWhereAnItemDoesNotFit)
{
    static constexpr auto first = NameAt(10, 0);
    static constexpr auto second = NameAt(20, 0);
    DebugVariables variables;
    variables.Set(View(first), std::int32_t{1});
    variables.Set(View(second), std::int32_t{2});
    const std::string one = "{\"" + std::string(View(first)) + "\":1";
    const std::string whole = one + ",\"" + std::string(View(second)) + "\":2}";
    EXPECT_EQ(Values(variables, 2), "{}");
    EXPECT_EQ(Values(variables, one.size()), "{}");
    EXPECT_EQ(Values(variables, one.size() + 1), one + "}");
    EXPECT_EQ(Values(variables, one.size() + 2), one + ",}"); // where the second would have begun
    EXPECT_EQ(Values(variables, whole.size() - 1), one + ",}");
    EXPECT_EQ(Values(variables, whole.size()), whole);
}

TEST(DebugVariables, ThreadsThatSetTheSameNewNamesMeetInOneSlot)
{
    for (int round = 0; round < 50; ++round) {
        DebugVariables variables;
        std::vector<std::thread> threads;
        for (std::int32_t t = 0; t < 4; ++t) {
            threads.emplace_back([&variables, t] {
                for (int i = 0; i < 60; ++i)
                    variables.Set("name" + std::to_string(i), t);
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        auto names = Names(variables);
        std::ranges::sort(names);
        EXPECT_EQ(names.size(), 60U);
        EXPECT_EQ(std::ranges::adjacent_find(names), names.end());
    }
}

TEST(DebugVariables, ValueAndTypeChangeTogether)
{
    DebugVariables variables;
    std::atomic<bool> ended{false};
    std::thread writer([&] {
        while (!ended) {
            variables.Set("x", std::int32_t{7});
            variables.Set("x", 1.5F);
        }
    });
    int torn = 0;
    for (int i = 0; i < 200000; ++i) {
        const auto value = variables.Get(DebugVariables::Key("x"));
        const bool sound = value.type == Type::None ||
                           (value.type == Type::Int && value.bits == 7) ||
                           (value.type == Type::Float && value.AsFloat() == 1.5F);
        torn += sound ? 0 : 1;
    }
    ended = true;
    writer.join();
    EXPECT_EQ(torn, 0);
}

} // namespace
