// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include <boost/asio.hpp>
#include <boost/container/flat_map.hpp>

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "ArtNet/ArtNetLimits.h"
#include "ArtNet/ArtNetNodeTable.h"
#include "ArtNet/ArtNetOutbox.h"
#include "ArtNet/ArtNetPackets.h"
#include "ArtNet/ArtNetSender.h"
#include "ArtNet/FlushHandler.h"
#include "ArtNet/ZenArtNetService.h"

namespace Zen {

/// One socket on the Art-Net port, on one interface or on all of them, with its receive loop, its
/// universes, its nodes and its sends. Pending operations hold the server; a stopped one lives
/// until the last of them has run. The operations are called with the service's mutex held.
class ArtNetServer : public std::enable_shared_from_this<ArtNetServer>
{
public:
    using Universe = std::array<std::uint8_t, 512>;

    struct Settings
    {
        std::string interfaceAddress; ///< dotted, empty for all interfaces
        std::string shortName;
        std::string nodeReport;
        bool reuseAddress = false;
    };

    /// Opens and binds; the status tells the outcome. `serviceMutex` outlives the server.
    ArtNetServer(boost::asio::io_service& ioService, std::mutex& serviceMutex, Settings settings);
    ~ArtNetServer();

    void Start();
    /// For good. The port is free when it returns.
    void Stop();
    /// Opens the socket anew where it does not stand as it should, or not as well as it might.
    void MendSocket();
    /// Dotted addresses that are polled every 2.5 s from now on; a text that is none is logged and
    /// left out.
    void SetPollTargets(const std::vector<std::string>& targets);
    void SetNodeIdentity(std::uint8_t netValue, std::uint8_t subNetValue,
                         std::span<const std::uint8_t> universes);
    void TakeNodesFrom(const ArtNetServer& other) { nodes.TakeFrom(other.nodes); }
    void SendDmx(std::uint32_t address, std::uint16_t portAddress,
                 std::span<const std::uint8_t> channels);
    void FeedNodes(std::span<const ArtNetNodeInfo> fed);

    void ClearUniverses() { dmxIn.clear(); }
    /// The universe is kept from now on, and zero until something comes in.
    void AddUniverse(std::int32_t portAddress) { dmxIn[portAddress].fill(0); }
    [[nodiscard]] const Universe* FindUniverse(std::int32_t portAddress) const;

    [[nodiscard]] const std::string& GetInterface() const { return settings_.interfaceAddress; }
    [[nodiscard]] ArtNetServerStatus GetStatus() const { return status; }
    [[nodiscard]] const ArtNetNodeTable& GetNodes() const { return nodes; }
    [[nodiscard]] std::int64_t GetLastReceiveTime() const { return lastReceiveTime; }
    [[nodiscard]] std::int64_t GetLastSendErrorTime() const { return lastSendErrorTime; }
    [[nodiscard]] std::error_code GetLastSendError() const { return lastSendError; }

private:
    using Udp = boost::asio::ip::udp;

    bool Open();
    [[nodiscard]] std::error_code Bind();
    [[nodiscard]] std::error_code BindTo(const std::string& address);
    void OpenAndBind();
    void Reopen();
    [[nodiscard]] bool Stands() const;
    void ScheduleWatch();
    void Watch();

    void WaitForDatagrams();
    /// How many datagrams it took.
    std::size_t Drain();
    void HandlePacket(const Platform::ReceivedDatagram& datagram);
    void HandleDmx(std::span<const std::byte> datagram);
    void HandlePoll(std::uint32_t poller, std::uint16_t port);
    [[nodiscard]] bool IsOwn(const Platform::ReceivedDatagram& datagram) const;

    void SchedulePoll();
    void PollTick(std::uint64_t serial);

    void FlushOutbox();
    void RetrySoon();
    Platform::SendOutcome SendNow(std::span<const Platform::Datagram> batch);
    void KeepError(const std::error_code& error);
    void LogError(const std::error_code& error);

    Settings settings_;
    std::uint32_t interfaceValue_ = 0;
    std::mutex&
        mutex; ///< the service's: guards dmxIn, nodes and the three fields of times and error
    boost::container::flat_map<std::int32_t, Universe> dmxIn;
    ArtNetNodeTable nodes;
    std::int64_t lastReceiveTime = 0;
    std::int64_t lastSendErrorTime = 0;
    std::error_code lastSendError;
    std::vector<std::uint8_t> outputUniverses;
    std::uint8_t net = 0;
    std::uint8_t subNet = 0;

    /// Guards the socket, what is known of how it stands, and the timers between the I/O thread and
    /// the callers. May be taken while the service's mutex is held, never the other way round.
    std::mutex socketMutex_;
    Udp::socket socket;
    std::uint64_t socketSerial_ =
        0;                ///< tells the receive loop of the present socket from older ones
    std::string adapter_; ///< to which the socket is tied, empty for none
    unsigned adapterIndex_ = 0;
    std::error_code bindError_;
    std::error_code adapterError_; ///< why the socket is not tied to its adapter
    bool started_ = false;
    boost::asio::steady_timer watchTimer_;
    boost::asio::steady_timer pollTimer;
    std::uint64_t pollSerial_ = 0; ///< tells a timer's completion of the present arming from older
    std::vector<std::uint32_t> pollTargets;

    std::atomic<bool> stopped{false};
    std::atomic<ArtNetServerStatus> status{ArtNetServerStatus::OpenFailed};

    ArtNetOutbox outbox_;
    FlushStorage flushStorage_;
    boost::asio::io_service& ioService_;

    // I/O thread only.
    Platform::DatagramReader reader_;
    std::vector<std::uint32_t> ownAddresses_;
    ArtNetReplyLimit replyLimit_;
    ArtNetErrorLimit errorLimit_;
    ArtNetFloodGauge flood_;
    std::uint64_t senderSerial_ = 0; ///< of the socket that sender_ knows the adapter of
    ArtNetSender sender_;
    boost::asio::steady_timer retryTimer_;
};

} // namespace Zen
