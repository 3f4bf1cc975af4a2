// SPDX-License-Identifier: MIT
#include "Model/DocumentNetwork.h"

#include <charconv>
#include <cstring>

#include "Platform/IPv4.h"
#include "Platform/Text.h"
#include "XmlText/XmlText.h"

namespace {

std::string Replaced(std::string text, std::string_view from, std::string_view to)
{
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

/// Files of older versions hold the address as a decimal number in network order: its lowest byte
/// is the first octet. Empty for 0 and for text that is no such number.
std::wstring FromBroadcastAddress(std::string_view text)
{
    std::uint32_t stored = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), stored);
    if (read.ec != std::errc{} || stored == 0)
        return {};
    const std::string dotted = Platform::FormatIPv4(__builtin_bswap32(stored));
    return Platform::Utf8ToWide(Replaced(dotted, "255", "X"));
}

} // namespace

std::wstring DocumentNetwork(const tinyxml2::XMLElement& mapping)
{
    if (const auto text = XmlText::Attribute(mapping, "network")) {
        const std::string range = Replaced(Platform::WideToUtf8(*text), "X", "255");
        return Platform::ParseIPv4(range).value_or(0) != 0 ? *text : std::wstring();
    }
    const char* broadcast = mapping.Attribute("broadcastAddress");
    return broadcast ? FromBroadcastAddress(broadcast) : std::wstring();
}
