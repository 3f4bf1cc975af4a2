// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetOutbox.h"

#include "Platform/Clock.h"

bool ArtNetOutbox::Add(std::uint32_t address, std::uint16_t portAddress,
                       std::span<const std::uint8_t> channels)
{
    const std::lock_guard lock(mutex_);
    if (waitingCount_ >= MaxWaiting)
        waitingCount_ = 0;
    if (waitingCount_ == waiting_.size())
        waiting_.emplace_back();
    Packet& packet = waiting_[waitingCount_++];
    packet.size = ArtNetPackets::WriteDmx(packet.bytes, portAddress, channels);
    packet.address = address;
    packet.written = Platform::MonotonicNanoseconds();
    const bool first = !called_;
    called_ = true;
    return first;
}

bool ArtNetOutbox::TakeWaiting()
{
    const std::lock_guard lock(mutex_);
    if (waitingCount_ == 0) {
        called_ = false;
        return false;
    }
    waiting_.swap(sending_);
    sendingCount_ = waitingCount_;
    waitingCount_ = 0;
    return true;
}
