// SPDX-License-Identifier: MIT
#include "Platform/Numbers.h"

#include <cfloat>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "Platform/IPv4.h"

namespace {

using namespace Platform;
using namespace std::string_literals;

TEST(Numbers, WholeNumbersInTheirRangeOnly)
{
    using Whole = std::pair<const char*, std::optional<std::int32_t>>;
    for (const auto& [text, value] : {Whole{" \t+42\r\n", 42}, Whole{"-2147483648", INT32_MIN},
                                      Whole{"2147483647", INT32_MAX}, Whole{"007", 7}})
        EXPECT_EQ(ParseInt(text), value) << '"' << text << '"';
    for (const char* text : {"", " ", "+", "-", "--1", "+-1", "-+1", "++1", "- 1", "1 2", "1x",
                             "0x10", "1.5", "2147483648", "-2147483649", "99999999999999999999"})
        EXPECT_EQ(ParseInt(text), std::nullopt) << '"' << text << '"';
    for (const auto& [text, value] :
         {Whole{"0x7fFFffFF", INT32_MAX}, Whole{"-0X10", -16}, Whole{"010", 8}, Whole{"0", 0},
          Whole{"0x", {}}, Whole{"0x-1", {}}, Whole{"0xG", {}}, Whole{"08", {}},
          Whole{"0x80000000", {}}, Whole{"0x1 0", {}}})
        EXPECT_EQ(ParseIntAutoBase(text), value) << '"' << text << '"';
}

TEST(Numbers, FloatsAreFiniteAndTheTooSmallAreZero)
{
    const std::string zeros(400, '0');
    const std::string nines(500, '9');
    using Float = std::pair<const char*, float>;
    for (const auto& [text, value] :
         {Float{" +1.5 ", 1.5F}, Float{"-.25", -0.25F}, Float{"5.", 5.0F}, Float{"2.5e2", 250.0F},
          Float{"3.402823466e38", FLT_MAX}})
        EXPECT_EQ(ParseFloat(text), value) << '"' << text << '"';
    for (const std::string& text : {"1e-50"s, "-1e-50"s, "1E-400"s, "1e-999999999999999999999"s,
                                    "0." + zeros + "1", "1" + zeros + "e-500"})
        EXPECT_EQ(ParseFloat(text), 0.0F) << '"' << text << '"';
    for (const std::string& text :
         {"1e39"s, "-1e999999999999999999999"s, nines, nines + "e-1", "0." + zeros + "1e500"})
        EXPECT_EQ(ParseFloat(text), std::nullopt) << '"' << text << '"';
    for (const char* text :
         {"", ".", "nan", "-inf", "infinity", "1,5", "0x10", "1e", "1.5.2", "+-1", "1 1"})
        EXPECT_EQ(ParseFloat(text), std::nullopt) << '"' << text << '"';
}

TEST(Numbers, FloatsPrintSixDecimals)
{
    EXPECT_EQ(FormatFloat(0.1F), "0.100000");
    EXPECT_EQ(FormatFloat(-FLT_MAX), "-340282346638528859811704183484516925440.000000");
    EXPECT_EQ(FormatFloat(std::numeric_limits<float>::infinity()), "0.000000");
    EXPECT_EQ(FormatFloat(std::nanf("")), "0.000000");
}

TEST(IPv4, DottedTexts)
{
    EXPECT_EQ(ParseIPv4("2.0.0.1"), 0x02000001U);
    EXPECT_EQ(ParseIPv4(L"255.255.255.255"), 0xFFFFFFFFU);
    EXPECT_EQ(FormatIPv4(0xC0A80AFE), "192.168.10.254");
    for (const char* text :
         {"", "1", "1.2.3", "1.2.3.", ".1.2.3", "1.2.3.4.", "1.2.3.4.5", "1..2.3", "256.0.0.1",
          "1.2.3.0004", "1.2.3.4 ", " 1.2.3.4", "+1.2.3.4", "1.2.3.-4", "a.b.c.d", "1,2,3,4"})
        EXPECT_EQ(ParseIPv4(text), std::nullopt) << '"' << text << '"';
    EXPECT_EQ(ParseIPv4(L"\uFF11.2.3.4"), std::nullopt) << "a wide digit that looks like one";
}

TEST(IPv4, ANetworkHasWholeOctets)
{
    EXPECT_EQ(BroadcastOf(0xC0A80A81, 25), 0xC0A80AFFU);
    EXPECT_EQ(BroadcastOf(0x02000001, 0), 0xFFFFFFFFU);
    EXPECT_EQ(BroadcastOf(0x02000001, 32), 0x02000001U);
    constexpr std::uint32_t two = 0x02FFFFFF;
    for (const char* inside : {"2.0.0.1", "2.255.255.255", "127.0.0.1"})
        EXPECT_TRUE(IsInNetwork(two, inside)) << inside;
    for (const char* outside : {"3.0.0.1", "127.0.0.2", "", "2.0.0.256", "Auto", " 2.0.0.1"})
        EXPECT_FALSE(IsInNetwork(two, outside)) << outside;
    EXPECT_TRUE(IsInNetwork(0xC0A801FF, "192.168.1.7"));
    EXPECT_FALSE(IsInNetwork(0xC0A801FF, "192.168.2.7"));
    EXPECT_TRUE(IsInNetwork(0xC0A8017F, "192.168.1.127")) << "a net of 128 matches itself only";
    EXPECT_FALSE(IsInNetwork(0xC0A8017F, "192.168.1.5"));
}

} // namespace
