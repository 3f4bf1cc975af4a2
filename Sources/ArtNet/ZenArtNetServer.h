// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "ArtNet/ArtNetInputs.h"
#include "ArtNet/ArtNetLimits.h"
#include "ArtNet/ArtNetNodeTable.h"
#include "ArtNet/ArtNetOutbox.h"
#include "ArtNet/ArtNetPackets.h"
#include "ArtNet/ArtNetSender.h"
#include "ArtNet/ArtNetSocket.h"
#include "ArtNet/ArtNetSpread.h"
#include "ArtNet/ArtNetTraffic.h"
#include "ArtNet/FlushHandler.h"

namespace Zen {

/// The Art-Net port of one interface or of all of them, with its receive loop, its universes, its
/// nodes and its sends. Pending operations own the server: a stopped one lives until
/// the last of them has run. All public operations are called with the service's mutex held.
class ArtNetServer : public std::enable_shared_from_this<ArtNetServer>
{
public:
    struct Settings
    {
        std::string interfaceAddress; ///< dotted, empty for all interfaces
        std::string shortName;
        std::string nodeReport;
        bool reuseAddress = false;
    };

    /// Opens nothing yet. `serviceMutex` outlives the server.
    ArtNetServer(boost::asio::io_service& ioService, std::mutex& serviceMutex, Settings settings);
    ~ArtNetServer();

    /// Opens and binds; where that fails, clients get no data and it is tried again every half
    /// second.
    void Start();
    /// For good. The port is free when it returns.
    void Stop();
    /// Opens what could not be opened before, and closes what belongs to an adapter that is gone.
    void MendSocket();
    /// Dotted addresses that are polled every 2.5 s from now on; any other text is logged and left
    /// out.
    void SetPollTargets(const std::vector<std::string>& targets);
    void SetNodeIdentity(std::uint8_t netValue, std::uint8_t subNetValue,
                         std::span<const std::uint8_t> universes);
    void TakeNodesFrom(const ArtNetServer& other) { nodes.TakeFrom(other.nodes); }
    void SendDmx(std::uint32_t address, std::uint16_t portAddress,
                 std::span<const std::uint8_t> channels);
    /// What is sent until EndFrame leaves together and is worthless `lifetime` nanoseconds later.
    void BeginFrame(std::int64_t lifetime) { outbox_.BeginFrame(lifetime); }
    /// Behind the frame an ArtSync goes to `syncAddress`, unless that is 0.
    void EndFrame(std::uint32_t syncAddress);
    void FeedNodes(std::span<const ArtNetNodeInfo> fed);

    [[nodiscard]] ArtNetInputs& Inputs() { return dmxIn; }

    [[nodiscard]] const std::string& GetInterface() const { return settings_.interfaceAddress; }
    [[nodiscard]] const ArtNetNodeTable& GetNodes() const { return nodes; }
    [[nodiscard]] std::int64_t GetLastReceiveTime() const { return lastReceiveTime; }
    [[nodiscard]] std::int64_t GetLastSendErrorTime() const { return lastSendErrorTime; }
    [[nodiscard]] std::error_code GetLastSendError() const { return lastSendError; }
    /// All but the universes of a client.
    [[nodiscard]] ArtNetTraffic GetTraffic() const;

private:
    void Mend();
    void ScheduleWatch();
    void Watch();
    void LogConflicts();

    void WaitForDatagrams(const ArtNetSocket::Listener& listener);
    /// Reads and handles what has come in; the number of datagrams.
    std::size_t Drain(boost::asio::ip::udp::socket& listener);
    void HandlePacket(const Platform::ReceivedDatagram& datagram);
    void HandleDmx(const Platform::ReceivedDatagram& datagram);
    void ReadOwnAddresses();
    void HandlePoll(std::uint32_t poller, std::uint16_t port);
    void SendReplies(std::uint32_t address, std::uint16_t port);
    void WriteReplies(std::uint32_t ownAddress);
    void SendFurtherPages();
    /// Tells everyone when the offered universes have changed.
    void Announce();
    [[nodiscard]] std::uint32_t AddressTowards(std::uint32_t peer);
    [[nodiscard]] bool IsOwn(const Platform::ReceivedDatagram& datagram) const;

    void SchedulePoll();
    void PollTick(std::uint64_t serial);

    void CallFlush();
    void FlushOutbox();
    void SendWaiting();
    void SendNextGroup();
    Platform::SendOutcome SendAndCount(std::span<const Platform::Datagram> batch);
    void TellExpired();
    void RetrySoon();
    Platform::SendOutcome SendNow(std::span<const Platform::Datagram> batch);
    void KeepError(const std::error_code& error);
    void LogError(const std::error_code& error);

    Settings settings_;
    /// The service's: guards dmxIn, nodes, the node's identity, the number of taken packets and the
    /// three fields of times and error.
    std::mutex& mutex;
    ArtNetInputs dmxIn;
    ArtNetNodeTable nodes;
    std::int64_t lastReceiveTime = 0;
    std::int64_t lastSendErrorTime = 0;
    std::error_code lastSendError;
    std::uint64_t taken_ = 0;
    std::vector<std::uint8_t> outputUniverses;
    std::uint8_t net = 0;
    std::uint8_t subNet = 0;

    /// Guards the socket, the poll targets and the timers between the I/O thread and the callers.
    /// May be taken while the service's mutex is held, never the other way round.
    std::mutex socketMutex_;
    ArtNetSocket socket;
    bool started_ = false;
    boost::asio::steady_timer watchTimer_;
    boost::asio::steady_timer pollTimer;
    std::uint64_t pollSerial_ = 0; ///< of the present arming of pollTimer; an older one is void
    std::vector<std::uint32_t> pollTargets;

    std::atomic<bool> stopped{false};

    // Counted without a lock by the I/O thread, for whoever asks.
    std::atomic<std::uint64_t> sent_{0};
    std::atomic<std::uint64_t> failed_{0};
    std::atomic<std::uint64_t> late_{0};
    std::atomic<int> portError_{0}; ///< the system's number for it

    ArtNetOutbox outbox_;
    FlushStorage flushStorage_;
    boost::asio::io_service& ioService_;

    // I/O thread only.
    Platform::DatagramReader reader_;
    std::vector<std::uint32_t> ownAddresses_;
    std::int64_t ownAddressesRead_ = 0;
    ArtNetReplyLimit replyLimit_;
    std::vector<std::array<std::byte, ArtNetPackets::PollReplySize>> replies_;
    std::vector<ArtNetOutbox::Packet> furtherPages_; ///< of the polls of this wake-up
    std::vector<ArtNetInputs::Page> announced_;      ///< the offer that everyone was told of
    std::int64_t announcedTime_ = 0;
    ArtNetErrorLimit errorLimit_;
    ArtNetConflictLog conflictLog_;
    ArtNetFloodGauge flood_;
    std::uint64_t senderSerial_ = 0; ///< the socket's, when sender_ was given its adapter
    ArtNetSender sender_;
    ArtNetSpread spread_;
    boost::asio::steady_timer spreadTimer_;
    std::uint64_t expiredTold_ = 0;
    std::int64_t expiredTime_ = 0;
    boost::asio::steady_timer retryTimer_;
};

} // namespace Zen
