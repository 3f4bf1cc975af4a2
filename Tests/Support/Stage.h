// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The private network that tests with sockets run on: the test program stands on "desk" with
/// art0 = 2.0.0.1/8 and art1 = 10.0.0.1/8, its peers on "rig" with 2.0.0.10 to .13 and 10.0.0.10 to
/// .13. Addresses are numbers with the first octet in the top byte.
namespace Stage {

using Bytes = std::vector<std::uint8_t>;

inline constexpr std::uint32_t Desk0 = 0x02000001;
inline constexpr std::uint32_t Desk1 = 0x0A000001;
inline constexpr std::uint32_t Rig0 = 0x0200000A;
inline constexpr std::uint32_t Rig1 = 0x0A00000A;
inline constexpr std::uint32_t Broadcast0 = 0x02FFFFFF;
inline constexpr std::uint32_t Broadcast1 = 0x0AFFFFFF;
inline constexpr std::uint32_t Loopback = 0x7F000001;

/// Call it first in main: a program that runs elsewhere is started again on a stage of its own, and
/// ends with 77 where the system refuses one. On a stage the call does nothing.
void Enter(int argc, char** argv);

/// Runs a command on a host of the stage ("desk", "rig", "hub"). False when it fails.
[[nodiscard]] bool Command(const std::string& host, const std::string& command);

struct Heard
{
    Bytes bytes;
    std::uint32_t source = 0;
    std::uint16_t port = 0;
    std::uint32_t destination = 0; ///< as the sender wrote it
    std::int64_t arrived = 0;      ///< as WallClock gives it, noted by the system
};

/// A UDP socket of a peer. It shares no code with the program.
class Socket
{
public:
    /// Address 0 is all addresses of the host, port 0 is any free one. A port can be shared where
    /// both sides allow it.
    explicit Socket(std::uint32_t address = 0, std::uint16_t port = 6454, bool shares = false);
    ~Socket();
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    [[nodiscard]] bool IsBound() const { return bound_; }
    /// The system's number for the socket, which stays with this object.
    [[nodiscard]] int Handle() const { return handle_; }

    void Send(std::uint32_t address, const Bytes& bytes, std::uint16_t port = 6454) const;
    /// The next datagram, within this time.
    [[nodiscard]] std::optional<Heard> Next(std::chrono::milliseconds longest) const;
    /// All that comes in this time.
    [[nodiscard]] std::vector<Heard> All(std::chrono::milliseconds duration) const;

private:
    int handle_ = -1;
    bool bound_ = false;
};

/// A socket on the rig. Throws when its port is taken.
[[nodiscard]] std::unique_ptr<Socket> RigSocket(std::uint32_t address = 0,
                                                std::uint16_t port = 6454);

/// Sends packets to port 6454 of the desk's first address, from the rig under any source address.
class Flooder
{
public:
    Flooder();
    ~Flooder();
    Flooder(const Flooder&) = delete;
    Flooder& operator=(const Flooder&) = delete;

    void Send(std::uint32_t source, const Bytes& payload) const;

private:
    int handle_ = -1;
};

/// Whether the condition becomes true within this time.
[[nodiscard]] bool ComesTrue(const std::function<bool()>& condition,
                             std::chrono::milliseconds longest = std::chrono::seconds(5));

/// Nanoseconds of the system's time of day.
[[nodiscard]] std::int64_t WallClock();

} // namespace Stage
