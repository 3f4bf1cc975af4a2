// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetSpread.h"

#include <algorithm>

namespace {

std::size_t GroupSize(std::size_t packets)
{
    constexpr std::size_t most = ArtNetSpread::MostGroups;
    return std::max(ArtNetSpread::Burst, (packets + most - 1) / most);
}

} // namespace

bool ArtNetSpread::Divide(Packets packets, std::int64_t now)
{
    groups_ = 1;
    nextGroup_ = 1;
    if (packets.size() <= Burst)
        return false;
    destinations_.clear();
    for (const ArtNetOutbox::Packet& packet : packets)
        ++destinations_[packet.address].packets;
    group_.clear();
    for (const ArtNetOutbox::Packet& packet : packets) {
        Destination& destination = destinations_[packet.address];
        group_.push_back(destination.grouped++ / GroupSize(destination.packets));
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
