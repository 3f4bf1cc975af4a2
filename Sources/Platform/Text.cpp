// SPDX-License-Identifier: MIT
#include "Platform/Text.h"

#include <algorithm>
#include <cstdint>

namespace Platform {

namespace {

constexpr char32_t Replacement = 0xFFFD;

bool IsSurrogate(char32_t c)
{
    return c >= 0xD800 && c <= 0xDFFF;
}

char32_t Sound(char32_t c)
{
    return IsSurrogate(c) || c > 0x10FFFF ? Replacement : c;
}

/// Takes one character from the front of UTF-8 text; a broken sequence gives U+FFFD and takes its
/// first byte with the continuation bytes that fit it.
char32_t TakeUtf8(std::string_view& text)
{
    const auto lead = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    if (lead < 0x80)
        return lead;
    const int more = lead >= 0xF0 && lead < 0xF5   ? 3
                     : lead >= 0xE0 && lead < 0xF0 ? 2
                     : lead >= 0xC2 && lead < 0xE0 ? 1
                                                   : 0;
    if (more == 0)
        return Replacement;
    char32_t value = lead & (0x3FU >> more);
    for (int i = 0; i < more; ++i) {
        if (text.empty() || (static_cast<unsigned char>(text.front()) & 0xC0U) != 0x80)
            return Replacement;
        value = value << 6 | (static_cast<unsigned char>(text.front()) & 0x3FU);
        text.remove_prefix(1);
    }
    const bool overlong = (more == 2 && value < 0x800) || (more == 3 && value < 0x10000);
    return overlong ? Replacement : Sound(value);
}

/// The characters up to the first one of several bytes. Files of many megabytes are of these.
std::string_view PlainBegin(std::string_view text)
{
    const auto isPlain = [](char c) {
        return static_cast<unsigned char>(c) < 0x80;
    };
    return text.substr(
        0, static_cast<std::size_t>(std::ranges::find_if_not(text, isPlain) - text.begin()));
}

char32_t TakeUtf16(std::u16string_view& text)
{
    const char32_t unit = text.front();
    text.remove_prefix(1);
    if (!IsSurrogate(unit))
        return unit;
    const bool pair =
        unit < 0xDC00 && !text.empty() && text.front() >= 0xDC00 && text.front() <= 0xDFFF;
    if (!pair)
        return Replacement;
    const char32_t low = text.front();
    text.remove_prefix(1);
    return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
}

void AppendUtf8(std::string& out, char32_t c)
{
    const auto byte = [&out](char32_t value) {
        out += static_cast<char>(value);
    };
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0 | c >> 6);
        byte(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        byte(0xE0 | c >> 12);
        byte(0x80 | (c >> 6 & 0x3F));
        byte(0x80 | (c & 0x3F));
    } else {
        byte(0xF0 | c >> 18);
        byte(0x80 | (c >> 12 & 0x3F));
        byte(0x80 | (c >> 6 & 0x3F));
        byte(0x80 | (c & 0x3F));
    }
}

void AppendUtf16(std::u16string& out, char32_t c)
{
    if (c < 0x10000) {
        out += static_cast<char16_t>(c);
        return;
    }
    out += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
    out += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
}

} // namespace

std::wstring Utf8ToWide(std::string_view text)
{
    std::wstring wide;
    wide.reserve(text.size());
    while (!text.empty())
        wide += static_cast<wchar_t>(TakeUtf8(text));
    return wide;
}

std::string WideToUtf8(std::wstring_view text)
{
    std::string utf8;
    utf8.reserve(text.size());
    for (const wchar_t c : text)
        AppendUtf8(utf8, Sound(static_cast<char32_t>(c)));
    return utf8;
}

std::wstring Utf16ToWide(std::u16string_view text)
{
    std::wstring wide;
    wide.reserve(text.size());
    while (!text.empty())
        wide += static_cast<wchar_t>(TakeUtf16(text));
    return wide;
}

std::u16string WideToUtf16(std::wstring_view text)
{
    std::u16string utf16;
    utf16.reserve(text.size());
    for (const wchar_t c : text)
        AppendUtf16(utf16, Sound(static_cast<char32_t>(c)));
    return utf16;
}

std::string Utf16ToUtf8(std::u16string_view text)
{
    std::string utf8;
    utf8.reserve(text.size());
    while (!text.empty())
        AppendUtf8(utf8, TakeUtf16(text));
    return utf8;
}

std::u16string Utf8ToUtf16(std::string_view text)
{
    std::u16string utf16;
    utf16.reserve(text.size());
    while (!text.empty()) {
        const auto plain = PlainBegin(text);
        utf16.append(plain.begin(), plain.end());
        text.remove_prefix(plain.size());
        if (!text.empty())
            AppendUtf16(utf16, TakeUtf8(text));
    }
    return utf16;
}

std::string Latin1ToUtf8(std::string_view bytes)
{
    std::string utf8;
    utf8.reserve(bytes.size());
    for (const char byte : bytes)
        AppendUtf8(utf8, static_cast<unsigned char>(byte));
    return utf8;
}

} // namespace Platform
