// SPDX-License-Identifier: MIT
#include "Platform/Numbers.h"

#include <cfloat>
#include <clocale>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "Platform/IPv4.h"

namespace {

using namespace Platform;

TEST(Numbers, WholeNumbersInTheirRangeOnly)
{
    EXPECT_EQ(ParseInt(" \t+42\r\n"), 42);
    EXPECT_EQ(ParseInt("-2147483648"), INT32_MIN);
    EXPECT_EQ(ParseInt("2147483647"), INT32_MAX);
    EXPECT_EQ(ParseInt("007"), 7);
    for (const char* text : {"", " ", "+", "-", "--1", "+-1", "-+1", "++1", "- 1", "1 2", "1x",
                             "0x10", "1.5", "2147483648", "-2147483649", "99999999999999999999"})
        EXPECT_EQ(ParseInt(text), std::nullopt) << '"' << text << '"';
}

TEST(Numbers, AutomaticBase)
{
    EXPECT_EQ(ParseIntAutoBase("0x7fFFffFF"), INT32_MAX);
    EXPECT_EQ(ParseIntAutoBase("-0X10"), -16);
    EXPECT_EQ(ParseIntAutoBase("010"), 8);
    EXPECT_EQ(ParseIntAutoBase("0"), 0);
    EXPECT_EQ(ParseIntAutoBase("19"), 19);
    for (const char* text : {"0x", "0x-1", "0xG", "08", "0x80000000", "0x1 0"})
        EXPECT_EQ(ParseIntAutoBase(text), std::nullopt) << '"' << text << '"';
}

TEST(Numbers, FloatsAreFinite)
{
    EXPECT_EQ(ParseFloat(" +1.5 "), 1.5F);
    EXPECT_EQ(ParseFloat("-.25"), -0.25F);
    EXPECT_EQ(ParseFloat("5."), 5.0F);
    EXPECT_EQ(ParseFloat("2.5e2"), 250.0F);
    EXPECT_EQ(ParseFloat("3.402823466e38"), FLT_MAX);
    for (const std::string& text :
         {std::string(), std::string("."), std::string("nan"), std::string("-inf"),
          std::string("infinity"), std::string("1e39"), std::string("-1e999999999999"),
          std::string(400, '9'), std::string("1,5"), std::string("0x10"), std::string("1e"),
          std::string("1.5.2"), std::string("+-1"), std::string("1 1")})
        EXPECT_EQ(ParseFloat(text), std::nullopt) << '"' << text << '"';
}

TEST(Numbers, AFloatTooSmallToTellIsZero)
{
    for (const std::string& text :
         {std::string("1e-50"), std::string("-1e-50"), std::string("1E-400"),
          std::string("1e-999999999999"), "0." + std::string(60, '0') + "1",
          "0." + std::string(400, '0') + "1"})
    {
        const auto value = ParseFloat(text);
        ASSERT_TRUE(value.has_value()) << text;
        EXPECT_EQ(*value, 0.0F) << text;
    }
    // A minus in the exponent alone makes no number small.
    EXPECT_EQ(ParseFloat(std::string(500, '9') + "e-1"), std::nullopt);
}

TEST(Numbers, FloatsPrintSixDecimals)
{
    EXPECT_EQ(FormatFloat(0.1F), "0.100000");
    EXPECT_EQ(FormatFloat(-1234.5F), "-1234.500000");
    EXPECT_EQ(FormatFloat(-FLT_MAX), "-340282346638528859811704183484516925440.000000");
    EXPECT_EQ(FormatFloat(std::numeric_limits<float>::infinity()), "0.000000");
    EXPECT_EQ(FormatFloat(std::nanf("")), "0.000000");
}

TEST(Numbers, PointInEveryLocale)
{
    bool comma = false;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "nl_NL.UTF-8"})
        comma = comma || std::setlocale(LC_NUMERIC, name);
    if (!comma)
        GTEST_SKIP() << "no locale with a decimal comma on this machine";
    EXPECT_EQ(ParseFloat("1.5"), 1.5F);
    EXPECT_EQ(ParseFloat("1,5"), std::nullopt);
    EXPECT_EQ(FormatFloat(1.5F), "1.500000");
    std::setlocale(LC_NUMERIC, "C");
}

TEST(IPv4, DottedTexts)
{
    EXPECT_EQ(ParseIPv4("2.0.0.1"), 0x02000001U);
    EXPECT_EQ(ParseIPv4(L"255.255.255.255"), 0xFFFFFFFFU);
    EXPECT_EQ(ParseIPv4("0.0.0.0"), 0U);
    EXPECT_EQ(FormatIPv4(0xC0A80AFE), "192.168.10.254");
    for (const char* text :
         {"", "1", "1.2.3", "1.2.3.", ".1.2.3", "1.2.3.4.", "1.2.3.4.5", "1..2.3", "256.0.0.1",
          "1.2.3.0004", "1.2.3.4 ", " 1.2.3.4", "+1.2.3.4", "1.2.3.-4", "a.b.c.d", "1,2,3,4"})
        EXPECT_EQ(ParseIPv4(text), std::nullopt) << '"' << text << '"';
    // A wide digit that only looks like one is none.
    EXPECT_EQ(ParseIPv4(L"\uFF11.2.3.4"), std::nullopt);
}

TEST(IPv4, Broadcast)
{
    EXPECT_EQ(BroadcastOf(0x02000001, 8), 0x02FFFFFFU);
    EXPECT_EQ(BroadcastOf(0xC0A80A81, 25), 0xC0A80AFFU);
    EXPECT_EQ(BroadcastOf(0x02000001, 0), 0xFFFFFFFFU);
    EXPECT_EQ(BroadcastOf(0x02000001, 32), 0x02000001U);
}

TEST(IPv4, ANetworkIsToldByWholeOctets)
{
    constexpr std::uint32_t two = 0x02FFFFFF;
    for (const char* inside : {"2.0.0.1", "2.255.255.255", "127.0.0.1"})
        EXPECT_TRUE(IsInNetwork(two, inside)) << inside;
    for (const char* outside : {"3.0.0.1", "127.0.0.2", "", "2.0.0", "2.0.0.256", "2.0.0.0.1",
                                "2.0.0.x", "Auto", " 2.0.0.1"})
        EXPECT_FALSE(IsInNetwork(two, outside)) << outside;
    EXPECT_TRUE(IsInNetwork(0xC0A801FF, "192.168.1.7"));
    EXPECT_FALSE(IsInNetwork(0xC0A801FF, "192.168.2.7"));
    EXPECT_TRUE(IsInNetwork(0xC0A8017F, "192.168.1.127")) << "a net of 128 matches itself only";
    EXPECT_FALSE(IsInNetwork(0xC0A8017F, "192.168.1.5"));
    EXPECT_TRUE(IsInNetwork(0, "127.0.0.1"));
    EXPECT_TRUE(IsInNetwork(0xFFFFFFFF, "10.1.2.3"));
}

} // namespace
