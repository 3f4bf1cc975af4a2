// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The private network that these tests run on: this program is on "desk" with art0 = 2.0.0.1/8 and
/// art1 = 10.0.0.1/8, its peers are on "rig" with 2.0.0.10 to .13 and 10.0.0.10 to .13.
namespace Stage {

using Bytes = std::vector<std::uint8_t>;

inline constexpr std::uint32_t Desk0 = 0x02000001;
inline constexpr std::uint32_t Desk1 = 0x0A000001;
inline constexpr std::uint32_t Rig0 = 0x0200000A;
inline constexpr std::uint32_t Rig1 = 0x0A00000A;
inline constexpr std::uint32_t Broadcast0 = 0x02FFFFFF;
inline constexpr std::uint32_t Broadcast1 = 0x0AFFFFFF;

struct Heard
{
    Bytes bytes;
    std::uint32_t source = 0;
    std::uint16_t port = 0;
    std::uint32_t destination = 0;
    std::int64_t arrived = 0; ///< nanoseconds of the wall clock, as the system noted them
};

class Socket
{
public:
    /// On port 0 the system chooses.
    explicit Socket(std::uint32_t address = 0, std::uint16_t port = 6454);
    ~Socket();
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    [[nodiscard]] bool IsBound() const { return bound_; }
    void Send(std::uint32_t address, const Bytes& bytes, std::uint16_t port = 6454) const;
    /// The next datagram, waiting for it no longer than told.
    [[nodiscard]] std::optional<Heard> Next(std::chrono::milliseconds longest) const;
    /// Everything that comes in this time.
    [[nodiscard]] std::vector<Heard> All(std::chrono::milliseconds duration) const;

private:
    int handle_ = -1;
    bool bound_ = false;
};

/// Sends packets to port 6454 of the desk from any source address.
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

/// Runs `work` with this thread on the rig; sockets that are made there stay there.
void OnRig(const std::function<void()>& work);
/// A socket on the rig.
[[nodiscard]] std::unique_ptr<Socket> RigSocket(std::uint32_t address = 0,
                                                std::uint16_t port = 6454);
/// Runs a command on a host of the stage. False when it fails.
[[nodiscard]] bool Command(const std::string& host, const std::string& command);

/// Started outside a stage, a program starts itself anew on one with this call; there it does
/// nothing.
void Enter(int argc, char** argv);

[[nodiscard]] bool ComesTrue(const std::function<bool()>& condition,
                             std::chrono::milliseconds longest = std::chrono::seconds(5));

[[nodiscard]] std::int64_t WallClock();

/// ArtDmx and ArtPollReply as a peer sends them, written without the program's own writers.
[[nodiscard]] Bytes Dmx(std::uint16_t universe, const Bytes& channels);
[[nodiscard]] Bytes Reply(const std::string& name, std::uint8_t outputs = 1);

extern const Bytes PollPacket;

} // namespace Stage
