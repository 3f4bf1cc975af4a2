// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <system_error>
#include <vector>

#include "ArtNet/ArtNetNodeInfo.h"
#include "ArtNet/ArtNetOtherSenders.h"
#include "ArtNet/ArtNetReceived.h"
#include "ArtNet/ArtNetSourceConflict.h"
#include "ArtNet/ArtNetTraffic.h"

namespace Zen {

/// The one owner of Art-Net sockets in the process. Clients register with an interface, a poll
/// target and universes; the service keeps as many servers as that needs and carries them over
/// changes. Calls may come from any thread and never wait for the network. An id that is not
/// registered does nothing and gives the empty answer. Use the service through ArtNetClient, which
/// says what the operations for one id do.
class ArtNetService
{
public:
    /// The texts are for our ArtPollReply. `reuseAddress` shares the port with other programs, on
    /// all interfaces.
    ArtNetService(std::string_view shortName, std::string_view nodeReport, bool reuseAddress);
    /// Stops all servers and joins the I/O thread.
    ~ArtNetService();
    ArtNetService(const ArtNetService&) = delete;
    ArtNetService& operator=(const ArtNetService&) = delete;

    /// The process's service, null while there is none.
    [[nodiscard]] static std::shared_ptr<ArtNetService> Global();
    static void SetGlobal(std::shared_ptr<ArtNetService> service);

    /// The id of a new registration, which is never used again. Opens and closes sockets as the
    /// clients now need them.
    std::uint32_t RegisterClient(std::string_view interfaceAddress, std::string_view pollTarget,
                                 std::uint32_t firstUniverse, std::int32_t universeCount,
                                 std::string_view name, bool offered = false);
    void UnregisterClient(std::uint32_t id);

    std::uint32_t GetNodes(std::uint32_t id, ArtNetNodeList& nodes);
    void GetLastSendError(std::uint32_t id, std::error_code& code, std::int64_t& time);
    std::int64_t GetLastReceiveTime(std::uint32_t id);
    ArtNetTraffic GetTraffic(std::uint32_t id);
    std::vector<ArtNetSourceConflict> GetSourceConflicts(std::uint32_t id);
    std::vector<ArtNetReceived> GetReceived(std::uint32_t id);
    std::vector<ArtNetOtherSender> GetOtherSenders(std::uint32_t id);
    void ReadDmx(std::uint32_t id, std::int32_t first, std::span<std::uint8_t> pages);
    void SendDmx(std::uint32_t id, std::string_view address, std::int32_t portAddress,
                 std::span<const std::uint8_t> channels);
    void BeginFrame(std::uint32_t id, std::int64_t lifetime);
    void EndFrame(std::uint32_t id, std::string_view syncAddress);
    void FeedNodes(std::uint32_t id, std::span<const ArtNetNodeInfo> nodes);

    /// What our ArtPollReply says of our own outputs: at most 4 universes.
    void SetNodeIdentity(std::uint8_t net, std::uint8_t subNet,
                         std::span<const std::uint8_t> universes);
    /// Makes all servers again; their nodes are lost.
    void RestartServers();

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
};

} // namespace Zen
