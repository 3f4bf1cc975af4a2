// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Art-Net packets as a peer sends them, written without the program's own writers.
namespace ArtNetBytes {

using Bytes = std::vector<std::uint8_t>;

[[nodiscard]] Bytes Poll();
/// Exactly these channels, an odd number of them too. The Port-Address is written whole.
[[nodiscard]] Bytes Dmx(std::uint16_t portAddress, const Bytes& channels);
/// ArtPollReply of a node with this long name and up to four outputs, on universes 0 to 3.
[[nodiscard]] Bytes Reply(const std::string& name, std::uint8_t outputs = 1);

} // namespace ArtNetBytes
