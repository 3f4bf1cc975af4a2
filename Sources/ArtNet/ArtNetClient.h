// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <system_error>
#include <vector>

#include "ArtNet/ArtNetNodeInfo.h"
#include "ArtNet/ArtNetOtherSenders.h"
#include "ArtNet/ArtNetReceived.h"
#include "ArtNet/ArtNetSourceConflict.h"
#include "ArtNet/ArtNetTraffic.h"

/// One registration with the process's Art-Net service, for as long as the object lives. It must
/// not outlive the service. No call waits for the network; results are asked for, never called
/// back. With no service every call does nothing and gives the empty answer.
class ArtNetClient
{
public:
    /// A sender: works on the interface with this dotted address (empty: on all of them) and has
    /// ArtPoll sent to `pollTarget` (empty: nowhere).
    ArtNetClient(std::string_view interfaceAddress, std::string_view pollTarget,
                 std::string_view name);

    /// A receiver: the same, and `universeCount` Port-Addresses from `firstUniverse` on are kept.
    /// When they are `offered`, consoles that ask are told that we take them.
    ArtNetClient(std::string_view interfaceAddress, std::string_view pollTarget,
                 std::uint32_t firstUniverse, std::int32_t universeCount, std::string_view name,
                 bool offered = false);

    ~ArtNetClient();
    ArtNetClient(const ArtNetClient&) = delete;
    ArtNetClient& operator=(const ArtNetClient&) = delete;

    /// The nodes known now, in order of first arrival, and the generation of that list: it grows
    /// with each change.
    std::uint32_t GetNodes(ArtNetNodeList& nodes) const;

    /// Makes nodes that are known from elsewhere visible at once. Counts as one poll for all nodes.
    void FeedNodes(std::span<const ArtNetNodeInfo> nodes);

    /// The last failed send. It stays after later successes.
    struct SendError
    {
        std::error_code code;
        std::int64_t time = 0; ///< nanoseconds of the monotonic clock, 0 while there was none
    };
    [[nodiscard]] SendError GetLastSendError() const;

    /// When a packet was last received that counts (a poll, a reply, a registered universe), in
    /// nanoseconds of the monotonic clock; 0 while there was none.
    [[nodiscard]] std::int64_t GetLastReceiveTime() const;

    [[nodiscard]] ArtNetTraffic GetTraffic() const;

    /// The offered universes of this client to which two senders send now, in order.
    [[nodiscard]] std::vector<ArtNetSourceConflict> GetSourceConflicts() const;

    /// The universes of this client that someone sends now, in order.
    [[nodiscard]] std::vector<ArtNetReceived> GetReceived() const;

    /// Who else sends on the port that this client works on: universes that no client keeps, in
    /// order. Not ourselves.
    [[nodiscard]] std::vector<ArtNetOtherSender> GetOtherSenders() const;

    /// Fills `pages`, a whole number of 512-byte pages, with the universes from `firstPortAddress`
    /// on. A universe that is not registered or was not received reads as zeros.
    void ReadDmx(std::int32_t firstPortAddress, std::span<std::uint8_t> pages) const;

    /// Queues one ArtDmx packet to port 6454 of `address`. Raises std::invalid_argument when the
    /// text is no IPv4 address, and gsl::narrowing_error when the Port-Address doesn't fit 16 bits.
    /// At most 512 bytes are sent.
    void SendDmx(std::string_view address, std::int32_t portAddress,
                 std::span<const std::uint8_t> channels);

    /// What is sent until EndFrame is one frame: it leaves together, spread where a node would get
    /// more than it can take at once, and what could not leave within `lifetime` nanoseconds is
    /// dropped, for the next frame is due by then.
    void BeginFrame(std::int64_t lifetime);
    /// With an address, an ArtSync to it follows the frame.
    void EndFrame(std::string_view syncAddress);

private:
    std::uint32_t id_ = 0;
};
