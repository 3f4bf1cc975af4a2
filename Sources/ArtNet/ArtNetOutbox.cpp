// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetOutbox.h"

#include <algorithm>
#include <utility>

#include "Platform/Clock.h"

void ArtNetOutbox::BeginFrame(std::int64_t lifetime)
{
    const std::lock_guard lock(mutex_);
    inFrame_ = true;
    lifetime_ = lifetime;
}

bool ArtNetOutbox::EndFrame()
{
    const std::lock_guard lock(mutex_);
    inFrame_ = false;
    lifetime_ = UsualLifetime;
    return waitingCount_ > 0 && MustCall();
}

bool ArtNetOutbox::Add(std::uint32_t address, std::uint16_t portAddress,
                       std::span<const std::uint8_t> channels)
{
    const std::lock_guard lock(mutex_);
    Packet& packet = Append(address);
    packet.size = ArtNetPackets::WriteDmx(packet.bytes, portAddress, channels);
    return MustCall();
}

bool ArtNetOutbox::AddSync(std::uint32_t address)
{
    const std::lock_guard lock(mutex_);
    Packet& packet = Append(address);
    std::ranges::copy(ArtNetPackets::Sync(), packet.bytes.begin());
    packet.size = ArtNetPackets::SyncSize;
    return MustCall();
}

ArtNetOutbox::Packet& ArtNetOutbox::Append(std::uint32_t address)
{
    if (waitingCount_ >= MaxWaiting)
        waitingCount_ = 0;
    if (waitingCount_ == waiting_.size())
        waiting_.emplace_back();
    Packet& packet = waiting_[waitingCount_++];
    packet.address = address;
    packet.expires = Platform::MonotonicNanoseconds() + lifetime_;
    return packet;
}

bool ArtNetOutbox::MustCall()
{
    return !inFrame_ && !std::exchange(called_, true);
}

bool ArtNetOutbox::TakeWaiting()
{
    const std::lock_guard lock(mutex_);
    if (waitingCount_ == 0 || inFrame_) {
        called_ = false;
        return false;
    }
    waiting_.swap(sending_);
    sendingCount_ = waitingCount_;
    waitingCount_ = 0;
    return true;
}
