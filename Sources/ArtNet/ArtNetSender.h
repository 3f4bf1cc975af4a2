// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "ArtNet/ArtNetOutbox.h"
#include "ArtNet/ArtNetReach.h"
#include "Platform/Datagrams.h"

/// The last step of an ArtDmx packet, and of a long answer to a poll: it is sent at once, or waits
/// a moment for its destination or for room in the socket's buffer, or is dropped. A packet that
/// has expired is never sent: a newer frame is due by then. I/O thread only.
class ArtNetSender
{
public:
    using SendBatch =
        std::function<Platform::SendOutcome(std::span<const Platform::Datagram> batch)>;
    /// `sendBatch` hands a batch to the socket; it is called in Send and SendWaiting alone.
    explicit ArtNetSender(SendBatch sendBatch);

    /// From now on the packets leave by this adapter, or by any when the name is empty, from this
    /// address of ours, or from any when that is 0.
    void UseAdapter(const std::string& name, std::uint32_t ownAddress);

    /// Tries the waiting packets again. Call it before the first packets of a wake-up, so that none
    /// overtakes an older one.
    void SendWaiting();
    /// Sends these packets, or keeps or drops them. They need not outlive the call.
    void Send(std::span<const ArtNetOutbox::Packet> packets);

    /// Whether SendWaiting should be called again in a moment.
    [[nodiscard]] bool HasWaiting() const { return waitingCount_ > 0; }

    /// How many packets for hosts that are there have expired, since the beginning.
    [[nodiscard]] std::uint64_t Expired() const { return expired_; }

private:
    static constexpr std::size_t MaxWaiting = 4096;

    void KeepWaiting(const ArtNetOutbox::Packet& packet);

    SendBatch sendBatch_;
    std::unique_ptr<ArtNetReach> reach_;

    std::vector<ArtNetOutbox::Packet> waiting_;
    std::size_t waitingCount_ = 0;
    std::uint64_t expired_ = 0;
    bool full_ = false; ///< whether the socket's buffer was full when it was last tried
    std::vector<ArtNetOutbox::Packet> retried_;

    // Of the present call; members, so that their memory is used again.
    std::vector<std::uint32_t> addresses_;
    std::vector<const ArtNetOutbox::Packet*> leaving_;
    std::vector<Platform::Datagram> datagrams_;
};
