// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Platform {

// IPv4 addresses as numbers have the first octet in the top byte: 2.0.0.1 is 0x02000001.

/// Four decimal octets with points between them. Any other text gives nothing.
[[nodiscard]] std::optional<std::uint32_t> ParseIPv4(std::string_view text);
[[nodiscard]] std::optional<std::uint32_t> ParseIPv4(std::wstring_view text);

[[nodiscard]] std::string FormatIPv4(std::uint32_t address);

/// The address with all host bits set. prefixLength is 0 to 32.
[[nodiscard]] constexpr std::uint32_t BroadcastOf(std::uint32_t address, int prefixLength)
{
    return prefixLength >= 32  ? address
           : prefixLength <= 0 ? 0xFFFFFFFFU
                               : address | (0xFFFFFFFFU >> prefixLength);
}

/// Whether an address never leaves this machine.
[[nodiscard]] constexpr bool IsLoopback(std::uint32_t address)
{
    return address >> 24 == 127;
}

/// Whether a dotted address lies in the network of this broadcast address (first octet in the top
/// byte). Works on whole octets: 255 in the broadcast address leaves an octet open. 127.0.0.1 is in
/// every network.
[[nodiscard]] bool IsInNetwork(std::uint32_t broadcast, std::string_view address);

} // namespace Platform
