// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

namespace Platform {

/// What the system knows of a host on one of our own cables.
enum class NeighbourState : std::uint8_t
{
    Forgotten, ///< nothing
    Asked,     ///< it looks for the host; packets to it wait in the system
    Answers,   ///< the host's hardware address
    Silent     ///< it has looked for the host in vain
};

struct Neighbour
{
    std::uint32_t address = 0; ///< first octet in the top byte
    NeighbourState state = NeighbourState::Forgotten;
};

/// The system's own table of the hosts on a cable, as any user may read it. Only the system knows
/// whether a host that never sends anything is present. Where the system refuses, the table is
/// empty.
class NeighbourTable
{
public:
    /// The hosts of one adapter ("eth0"), or of all when the name is empty, asked from this address
    /// of ours, or from any when that is 0.
    NeighbourTable(const std::string& adapterName, std::uint32_t ownAddress);
    ~NeighbourTable();
    NeighbourTable(const NeighbourTable&) = delete;
    NeighbourTable& operator=(const NeighbourTable&) = delete;

    [[nodiscard]] bool IsOpen() const { return table_ >= 0 && asker_ >= 0; }

    /// What has changed since the last call, oldest first, and after it the whole table where a
    /// change was lost. Never waits. The list is valid until the next call.
    [[nodiscard]] const std::vector<Neighbour>& ReadChanges();
    /// The same, always with the whole table after it.
    [[nodiscard]] const std::vector<Neighbour>& ReadAll();

    /// Makes the system look for a host, by an empty datagram to its discard port, which does no
    /// harm when it is sent late. A broadcast address is refused with permission_denied.
    [[nodiscard]] std::error_code Ask(std::uint32_t address) noexcept;

private:
    [[nodiscard]] bool RequestAll() noexcept;
    void Receive();
    void Take(const std::uint8_t* bytes, std::size_t size);

    int table_ = -1;
    int asker_ = -1;
    int adapterIndex_ = 0;
    bool lost_ = false;
    std::vector<Neighbour> changes_;
    std::vector<std::uint8_t> buffer_;
};

} // namespace Platform
