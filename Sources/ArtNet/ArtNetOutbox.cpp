// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetOutbox.h"

bool ArtNetOutbox::Add(std::uint32_t address, std::uint16_t portAddress,
                       std::span<const std::uint8_t> channels)
{
    const std::lock_guard lock(mutex_);
    if (waitingCount_ >= MaxWaiting)
        waitingCount_ = 0;
    if (waitingCount_ == waiting_.size())
        waiting_.emplace_back();
    Block& block = waiting_[waitingCount_++];
    block.size = ArtNetPackets::WriteDmx(block.bytes, portAddress, channels);
    block.address = address;
    const bool first = !called_;
    called_ = true;
    return first;
}

bool ArtNetOutbox::TakeWaiting()
{
    std::size_t count = 0;
    {
        const std::lock_guard lock(mutex_);
        if (waitingCount_ == 0) {
            called_ = false;
            return false;
        }
        waiting_.swap(sending_);
        count = waitingCount_;
        waitingCount_ = 0;
    }
    datagrams_.clear();
    for (const Block& block : std::span(sending_).first(count))
        datagrams_.push_back(
            {block.address, ArtNetPackets::Port, std::span(block.bytes).first(block.size)});
    return true;
}
