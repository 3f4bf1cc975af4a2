// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <span>
#include <vector>

#include "ArtNet/ArtNetPackets.h"

/// Packets between the frame loop, which writes them, and the I/O thread, which sends them: one
/// wake-up for a whole frame, where a send from the frame loop's own thread costs twice as much
/// (measured). Both sides keep their blocks, so a frame like the one before allocates nothing.
class ArtNetOutbox
{
public:
    /// With so many waiting packets the I/O thread has not run for many frames; the waiting ones
    /// are worthless then and make room for the newest.
    static constexpr std::size_t MaxWaiting = 8192;

    // Every packet is written up to its size before it is read.
    struct Packet // NOLINT(cppcoreguidelines-pro-type-member-init)
    {
        std::array<std::byte, ArtNetPackets::MaxDmxSize> bytes;
        std::size_t size = 0;
        std::uint32_t address = 0; ///< of the receiver, first octet in the top byte
        std::uint16_t port = ArtNetPackets::Port;
        std::int64_t expires = 0; ///< nanoseconds of the monotonic clock; worthless from then on

        /// It comes behind all other packets of its frame.
        [[nodiscard]] bool IsSync() const { return size == ArtNetPackets::SyncSize; }
    };

    /// What is added until EndFrame is handed over as one, and expires `lifetime` nanoseconds after
    /// its adding. Outside of a frame each packet is handed over by itself, good for 25 ms.
    void BeginFrame(std::int64_t lifetime);
    /// True when the I/O thread must be called to Flush.
    [[nodiscard]] bool EndFrame();

    /// Writes one ArtDmx packet of at most 512 channels. True when the I/O thread must be called to
    /// Flush.
    [[nodiscard]] bool Add(std::uint32_t address, std::uint16_t portAddress,
                           std::span<const std::uint8_t> channels);
    /// The same for an ArtSync packet.
    [[nodiscard]] bool AddSync(std::uint32_t address);

    /// Hands the waiting packets to `send` (a span of Packet, good for the length of the call)
    /// until none is left. I/O thread only.
    template <typename Send>
    void Flush(Send send)
    {
        while (TakeWaiting())
            send(std::span<const Packet>(sending_).first(sendingCount_));
    }

private:
    static constexpr std::int64_t UsualLifetime = 25'000'000;

    /// Takes over the waiting packets. False when there are none, or a frame is being written; then
    /// the next Add or EndFrame calls again.
    [[nodiscard]] bool TakeWaiting();
    /// Room for one more packet.
    Packet& Append(std::uint32_t address);
    [[nodiscard]] bool MustCall();

    std::mutex mutex_; ///< guards all but sending_ and sendingCount_
    bool inFrame_ = false;
    std::int64_t lifetime_ = UsualLifetime;
    std::vector<Packet> waiting_;
    std::size_t waitingCount_ = 0;
    bool called_ = false;

    std::vector<Packet> sending_;
    std::size_t sendingCount_ = 0;
};
