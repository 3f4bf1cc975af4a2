// SPDX-License-Identifier: MIT
#include "Platform/Text.h"

#include <gtest/gtest.h>

namespace {

using namespace Platform;

TEST(Text, CharactersOfEveryLengthSurviveEveryRoad)
{
    // One, two, three and four bytes in UTF-8; the last is a pair in UTF-16.
    const std::string utf8 = "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x92\xA1";
    const std::wstring wide = L"A\u00E9\u20AC\U0001F4A1";
    const std::u16string utf16 = {0x0041, 0x00E9, 0x20AC, 0xD83D, 0xDCA1};
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
    EXPECT_EQ(WideToUtf8(L""), "");
    EXPECT_EQ(Utf16ToWide(u""), L"");
}

TEST(Text, LoneSurrogatesAreReplacedOneForOne)
{
    using Units = std::u16string;
    EXPECT_EQ(Utf16ToWide(Units{'a', 0xD83D}), L"a\uFFFD"); // cut at the end
    EXPECT_EQ(Utf16ToWide(Units{0xDCA1, 'a'}), L"\uFFFDa"); // low half first
    EXPECT_EQ(Utf16ToWide(Units{0xD83D, 'a'}), L"\uFFFDa"); // the letter survives
    EXPECT_EQ(Utf16ToWide(Units{0xD83D, 0xD83D, 0xDCA1}), L"\uFFFD\U0001F4A1");
    EXPECT_EQ(Utf16ToUtf8(Units{0xD800}), "\xEF\xBF\xBD");
    EXPECT_EQ(WideToUtf16(std::wstring{0xD800, L'a'}), (Units{0xFFFD, 'a'}));
    EXPECT_EQ(WideToUtf8(std::wstring{0x110000, -1, L'a'}), "\xEF\xBF\xBD\xEF\xBF\xBD"
                                                            "a");
}

TEST(Text, BrokenUtf8GivesReplacementsAndGoesOn)
{
    EXPECT_EQ(Utf8ToWide("\x80"
                         "a"),
              L"\uFFFDa"); // continuation alone
    EXPECT_EQ(Utf8ToWide("\xE2\x82"
                         "a"),
              L"\uFFFDa");                                      // sequence cut by a letter
    EXPECT_EQ(Utf8ToWide("\xF0\x9F\x92"), L"\uFFFD");           // sequence cut by the end
    EXPECT_EQ(Utf8ToWide("\xE2\xE2\x82\xAC"), L"\uFFFD\u20AC"); // sequence cut by a sound one
    EXPECT_EQ(Utf8ToWide("\xF4\x90\x80\x80"
                         "a"),
              L"\uFFFDa"); // beyond U+10FFFF
    EXPECT_EQ(Utf8ToWide("\xED\xA0\x80"
                         "a"),
              L"\uFFFDa"); // a surrogate half
    // Overlong forms must not smuggle a slash or a zero past a check of the bytes.
    EXPECT_EQ(Utf8ToWide("\xC0\xAF").find(L'/'), std::wstring::npos);
    EXPECT_EQ(Utf8ToWide("\xE0\x80\xAF"), L"\uFFFD");
    EXPECT_EQ(Utf8ToWide("\xF0\x80\x80\x80"), L"\uFFFD");
}

TEST(Text, Latin1BytesBecomeTheirCharacters)
{
    EXPECT_EQ(Latin1ToUtf8("a\xE9\xFF"), "a\xC3\xA9\xC3\xBF");
}

} // namespace
