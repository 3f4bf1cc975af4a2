// SPDX-License-Identifier: MIT
#pragma once

#include <boost/container/flat_map.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "ArtNet/ArtNetOutbox.h"

/// Takes a frame apart where one destination gets more packets than a small node holds in its
/// buffer: it gets them in groups of 16, or in eight larger ones, and the whole frame leaves within
/// 5 ms, its ArtSync last. A frame of smaller bursts leaves at once. Times are nanoseconds of the
/// monotonic clock. I/O thread only.
///
/// Eight, because 16 packets of 512 channels take 0.76 ms on a cable of 100 Mbit/s: with more
/// groups in 5 ms such a cable would be busy all the time, so that its node wouldn't notice them,
/// and each is a wake-up that costs as much as two packets (measured).
class ArtNetSpread
{
public:
    static constexpr std::size_t Burst = 16;
    static constexpr std::size_t MostGroups = 8;
    static constexpr std::int64_t Longest = 5'000'000;

    using Packets = std::span<const ArtNetOutbox::Packet>;

    /// Hands `send` (called with Packets) what leaves now, and keeps the rest. What is left of an
    /// earlier frame leaves first.
    template <typename Send>
    void Add(Packets packets, std::int64_t now, const Send& send)
    {
        while (HasMore())
            SendGroup(send);
        if (!Divide(packets, now))
            return send(packets);
        SendGroup(send);
    }

    [[nodiscard]] bool HasMore() const { return nextGroup_ < groups_; }
    /// When the next group is due. There is one.
    [[nodiscard]] std::int64_t NextDue() const
    {
        return begin_ +
               Longest / static_cast<std::int64_t>(groups_) * static_cast<std::int64_t>(nextGroup_);
    }
    /// Hands `send` the next group, if there is one. Packets of a group keep their order.
    template <typename Send>
    void SendGroup(const Send& send)
    {
        if (!HasMore())
            return;
        for (std::size_t first = 0; first < group_.size();) {
            std::size_t end = first;
            while (end < group_.size() && group_[end] == nextGroup_)
                ++end;
            if (end > first)
                send(Packets(frame_).subspan(first, end - first));
            first = std::max(end, first + 1);
        }
        ++nextGroup_;
    }

private:
    /// Copies the packets and gives each its group. False, with nothing copied, when all are in the
    /// first one.
    bool Divide(Packets packets, std::int64_t now);

    struct Destination
    {
        std::size_t packets = 0; ///< of the frame
        std::size_t grouped = 0; ///< those that have a group already
    };

    std::vector<ArtNetOutbox::Packet> frame_; ///< never gets smaller, so that memory is used again
    std::vector<std::size_t> group_;          ///< by packet
    boost::container::flat_map<std::uint32_t, Destination> destinations_;
    std::size_t groups_ = 0;
    std::size_t nextGroup_ = 0;
    std::int64_t begin_ = 0;
};
