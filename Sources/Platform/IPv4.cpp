// SPDX-License-Identifier: MIT
#include "Platform/IPv4.h"

namespace Platform {

namespace {

template <typename Character>
std::optional<std::uint32_t> Parse(std::basic_string_view<Character> text)
{
    std::uint32_t address = 0;
    std::size_t at = 0;
    for (int octet = 0; octet < 4; ++octet) {
        if (octet > 0 && (at >= text.size() || text[at++] != Character{'.'}))
            return std::nullopt;
        std::uint32_t value = 0;
        const std::size_t begin = at;
        while (at < text.size() && text[at] >= Character{'0'} && text[at] <= Character{'9'} &&
               at - begin < 3)
            value = value * 10 + static_cast<std::uint32_t>(text[at++] - Character{'0'});
        if (at == begin || value > 255)
            return std::nullopt;
        address = address << 8 | value;
    }
    return at == text.size() ? std::optional(address) : std::nullopt;
}

/// 255 in every octet that the broadcast address leaves open.
std::uint32_t HostMask(std::uint32_t broadcast)
{
    std::uint32_t mask = 0;
    for (const int shift : {0, 8, 16, 24}) {
        const std::uint32_t octet = 0xFFU << shift;
        if ((broadcast & octet) == octet)
            mask |= octet;
    }
    return mask;
}

} // namespace

std::optional<std::uint32_t> ParseIPv4(std::string_view text)
{
    return Parse(text);
}

std::optional<std::uint32_t> ParseIPv4(std::wstring_view text)
{
    return Parse(text);
}

std::string FormatIPv4(std::uint32_t address)
{
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        text += std::to_string(address >> shift & 0xFFU);
        if (shift > 0)
            text += '.';
    }
    return text;
}

bool IsInNetwork(std::uint32_t broadcast, std::string_view address)
{
    if (address == "127.0.0.1")
        return true;
    const auto value = ParseIPv4(address);
    return value && (*value | HostMask(broadcast)) == broadcast;
}

} // namespace Platform
