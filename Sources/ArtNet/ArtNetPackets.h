// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "ArtNet/ArtNetNodeInfo.h"

/// The packets of Art-Net (protocol version 14) that we build and read.
namespace ArtNetPackets {

inline constexpr std::uint16_t Port = 6454;
inline constexpr std::size_t DmxHeaderSize = 18;
inline constexpr std::size_t MaxDmxSize = DmxHeaderSize + 512;
inline constexpr std::size_t PollReplySize = 239;
inline constexpr std::size_t SyncSize = 14;

enum class Kind : std::uint8_t
{
    Other,
    Poll,
    PollReply,
    Dmx
};

/// Anything that is too short, of another protocol or of another kind is Other.
[[nodiscard]] Kind Classify(std::span<const std::byte> datagram);

/// The one ArtPoll that we send.
[[nodiscard]] std::span<const std::byte, 14> Poll();

/// The one ArtSync: nodes that know it put out together what they received since the last one.
[[nodiscard]] std::span<const std::byte, SyncSize> Sync();

/// Writes an ArtDmx packet and gives its size: the channels, at most 512 of them, are padded to an
/// even number. The Port-Address is cut to 15 bits. Sequence is 0: receivers take packets as they
/// come.
std::size_t WriteDmx(std::span<std::byte, MaxDmxSize> packet, std::uint16_t portAddress,
                     std::span<const std::uint8_t> channels);

/// What an ArtDmx packet carries.
struct Dmx
{
    std::uint16_t portAddress = 0;       ///< 15 bits
    std::span<const std::byte> channels; ///< at most 512, part of the datagram
};
/// Nothing for a packet that is shorter than its header. A length beyond the packet counts as far
/// as the packet goes.
[[nodiscard]] std::optional<Dmx> ReadDmx(std::span<const std::byte> datagram);

/// What our own replies say about us.
struct Identity
{
    std::string_view shortName;  ///< cut to 17 characters
    std::string_view nodeReport; ///< cut to 63 characters
    std::uint8_t net = 0;
    std::uint8_t subNet = 0;
    std::span<const std::uint8_t> outputs; ///< at most 4 count
    std::uint32_t address = 0;             ///< ours, first octet in the top byte
    /// Of a page, whose outputs are universes that we receive. 0 for the only reply of a program
    /// that receives none: it shows one port, however many outputs it has.
    std::uint8_t bindIndex = 0;
    std::uint8_t dataComesIn = 0; ///< bit n for output n of a page
};
void WritePollReply(std::span<std::byte, PollReplySize> packet, const Identity& identity);

/// A reply of a node. Nothing for a short packet, and for a program of our own family,
/// which takes no output. `source` is the address that the datagram came from.
[[nodiscard]] std::optional<ArtNetReply> ReadPollReply(std::span<const std::byte> datagram,
                                                       std::uint32_t source);

} // namespace ArtNetPackets
