// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// The Art-Net packets that a node on the other end of the cable sends and reads. They are written
/// from the published layout and share no line with the program: the rig judges it, and could not
/// see a mistake that both make.
namespace Rig {

inline constexpr std::uint16_t artNetPort = 6454;
inline constexpr std::size_t universeSize = 512;

using Bytes = std::vector<std::uint8_t>;

/// One ArtDmx: the universe (15-bit Port-Address) and the channels the packet carries, 0 to 512.
struct Dmx
{
    std::uint16_t universe = 0;
    Bytes channels;
};

/// One ArtPollReply: up to four outputs that share the upper eleven bits of their Port-Addresses.
struct Reply
{
    std::array<std::uint8_t, 4> address{};
    std::uint8_t bindIndex = 1;
    std::string shortName;
    std::string longName;
    std::vector<std::uint16_t> universes;
};

enum class Kind
{
    Other,
    Poll,
    PollReply,
    Dmx
};

/// What a datagram is by its ID and OpCode; anything too short for them is Other.
[[nodiscard]] Kind Classify(std::span<const std::uint8_t> datagram);

/// The content of a datagram of that kind, or nothing when it is cut short.
[[nodiscard]] std::optional<Dmx> ReadDmx(std::span<const std::uint8_t> datagram);
[[nodiscard]] std::optional<Reply> ReadReply(std::span<const std::uint8_t> datagram);

/// The ArtPoll of a controller that wants to know of changes.
[[nodiscard]] Bytes WritePoll();
/// The channels are cut at 512 and padded with a zero to an even count.
[[nodiscard]] Bytes WriteDmx(std::uint16_t universe, std::span<const std::uint8_t> channels,
                             std::uint8_t sequence);
[[nodiscard]] Bytes WriteReply(const Reply& reply);

/// All replies of a node that outputs these universes: one for each group of four under one net and
/// sub-net, which differ in their bind index. A node without outputs still gives one reply.
[[nodiscard]] std::vector<Reply> RepliesOf(const std::array<std::uint8_t, 4>& address,
                                           const std::string& name,
                                           const std::vector<std::uint16_t>& universes);

} // namespace Rig
