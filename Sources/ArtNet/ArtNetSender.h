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

/// The last step of an ArtDmx packet: it leaves at once, or waits a moment for its destination or
/// for room in the socket's buffer, or is dropped. Nothing leaves that is older than a tick: a
/// newer frame has the light by then. I/O thread only.
class ArtNetSender
{
public:
    /// The engine's tick, in nanoseconds.
    static constexpr std::int64_t OldestAge = 25'000'000;

    using SendBatch =
        std::function<Platform::SendOutcome(std::span<const Platform::Datagram> batch)>;
    explicit ArtNetSender(SendBatch sendBatch);

    /// From now on the packets leave by this adapter, or by any when the name is empty.
    void UseAdapter(const std::string& name);

    /// Call it before the first packets of a wake-up: those that wait go first.
    void SendWaiting();
    void Send(std::span<const ArtNetOutbox::Packet> packets);

    /// Whether SendWaiting should be called again in a moment.
    [[nodiscard]] bool HasWaiting() const { return waitingCount_ > 0; }

private:
    static constexpr std::size_t MaxWaiting = 4096;

    void KeepWaiting(const ArtNetOutbox::Packet& packet);

    SendBatch sendBatch_;
    std::unique_ptr<ArtNetReach> reach_;

    std::vector<ArtNetOutbox::Packet> waiting_;
    std::size_t waitingCount_ = 0;
    bool full_ = false; ///< the socket's buffer, when it was last tried
    std::vector<ArtNetOutbox::Packet> retried_;

    // Of the present call, kept for their memory.
    std::vector<std::uint32_t> addresses_;
    std::vector<const ArtNetOutbox::Packet*> leaving_;
    std::vector<Platform::Datagram> datagrams_;
};
