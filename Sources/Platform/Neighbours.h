// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

namespace Platform {

/// How the system stands to a host on one of our own cables.
enum class NeighbourState : std::uint8_t
{
    Forgotten, ///< it knows nothing of it
    Asked,     ///< it is looking for it; what is sent there waits in the system
    Answers,   ///< it knows the way
    Silent     ///< it has looked for it in vain
};

struct Neighbour
{
    std::uint32_t address = 0; ///< first octet in the top byte
    NeighbourState state = NeighbourState::Forgotten;
};

/// The system's own table of the hosts on a cable, as any user may read it. Only the system knows
/// whether a host that never sends anything is there. Where it won't tell, the table is empty.
class NeighbourTable
{
public:
    /// The hosts of one adapter ("eth0"), or of all of them when the name is empty.
    explicit NeighbourTable(const std::string& adapterName);
    ~NeighbourTable();
    NeighbourTable(const NeighbourTable&) = delete;
    NeighbourTable& operator=(const NeighbourTable&) = delete;

    [[nodiscard]] bool IsOpen() const { return table_ >= 0 && asker_ >= 0; }

    /// What has changed since the last call, oldest first, and the whole table where something was
    /// lost. Never waits. The list lives until the next call.
    [[nodiscard]] const std::vector<Neighbour>& ReadChanges();
    /// What has changed, and the whole table behind it.
    [[nodiscard]] const std::vector<Neighbour>& ReadAll();

    /// Makes the system look for a host, by an empty datagram to its discard port: that one says
    /// nothing wrong when it leaves late. A broadcast address is refused with permission_denied.
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
