// SPDX-License-Identifier: MIT
#include "Platform/Text.h"

#include <gtest/gtest.h>

namespace {

using namespace Platform;
using Units = std::u16string;

TEST(Text, CharactersOfEveryLengthAreKeptByEveryConversion)
{
    // One, two, three and four bytes in UTF-8; the last is a pair in UTF-16.
    const std::string utf8 = "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x92\xA1";
    const std::wstring wide = L"A\u00E9\u20AC\U0001F4A1";
    const Units utf16 = {0x0041, 0x00E9, 0x20AC, 0xD83D, 0xDCA1};
    EXPECT_EQ(Utf8ToWide(utf8), wide);
    EXPECT_EQ(WideToUtf8(wide), utf8);
    EXPECT_EQ(Utf16ToWide(utf16), wide);
    EXPECT_EQ(WideToUtf16(wide), utf16);
    EXPECT_EQ(Utf16ToUtf8(utf16), utf8);
    EXPECT_EQ(Utf8ToUtf16(utf8), utf16);
    // The borders of the lengths, a zero among them.
    const std::wstring borders{0, 0x7F, 0x80, 0x7FF, 0x800, 0xFFFF, 0x10000, 0x10FFFF};
    EXPECT_EQ(Utf8ToWide(WideToUtf8(borders)), borders);
    EXPECT_EQ(Utf16ToWide(WideToUtf16(borders)), borders);
    EXPECT_EQ(Latin1ToUtf8("a\xE9\xFF"), "a\xC3\xA9\xC3\xBF");
}

TEST(Text, LoneSurrogatesAreReplacedOneForOne)
{
    EXPECT_EQ(Utf16ToWide(Units{'a', 0xD83D}), L"a\uFFFD"); // cut at the end
    EXPECT_EQ(Utf16ToWide(Units{0xDCA1, 'a'}), L"\uFFFDa"); // low half first
    EXPECT_EQ(Utf16ToWide(Units{0xD83D, 'a'}), L"\uFFFDa"); // the letter is kept
    EXPECT_EQ(Utf16ToWide(Units{0xD83D, 0xD83D, 0xDCA1}), L"\uFFFD\U0001F4A1");
    EXPECT_EQ(WideToUtf16(std::wstring{0xD800, L'a'}), (Units{0xFFFD, 'a'}));
    EXPECT_EQ(WideToUtf8(std::wstring{0x110000, -1}), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Text, BrokenUtf8GivesReplacementsAndGoesOn)
{
    for (const auto& [utf8, wide] : {
             std::pair("\x80z", L"\uFFFDz"),        // continuation alone
             {"\xE2\x82z", L"\uFFFDz"},             // sequence cut by a letter
             {"\xF0\x9F\x92", L"\uFFFD"},           // sequence cut by the end
             {"\xE2\xE2\x82\xAC", L"\uFFFD\u20AC"}, // sequence cut by a sound one
             {"\xF4\x90\x80\x80z", L"\uFFFDz"},     // beyond U+10FFFF
             {"\xF5\x80\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},
             {"\xED\xA0\x80z", L"\uFFFDz"}, // half of a surrogate pair
             // Overlong forms must not get a slash or a zero past a check of the bytes.
             {"\xC0\xAF", L"\uFFFD\uFFFD"},
             {"\xE0\x80\xAF", L"\uFFFD"},
             {"\xF0\x80\x80\x80", L"\uFFFD"},
         })
        EXPECT_EQ(Utf8ToWide(utf8), wide) << utf8;
}

} // namespace
