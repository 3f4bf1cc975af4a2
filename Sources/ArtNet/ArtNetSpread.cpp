// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetSpread.h"

#include <algorithm>

bool ArtNetSpread::Divide(Packets packets, std::int64_t now)
{
    groups_ = 1;
    nextGroup_ = 1;
    if (packets.size() <= Burst)
        return false;
    packetsOf_.clear();
    group_.clear();
    for (const ArtNetOutbox::Packet& packet : packets) {
        group_.push_back(packetsOf_[packet.address]++ / Burst);
        groups_ = std::max(groups_, group_.back() + 1);
    }
    if (groups_ == 1)
        return false;
    if (packets.back().IsSync())
        group_.back() = groups_ - 1;
    if (frame_.size() < packets.size())
        frame_.resize(packets.size());
    std::ranges::copy(packets, frame_.begin());
    nextGroup_ = 0;
    begin_ = now;
    return true;
}
