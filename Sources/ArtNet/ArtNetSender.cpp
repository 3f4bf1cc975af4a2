// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetSender.h"

#include <utility>

#include "Platform/Clock.h"

ArtNetSender::ArtNetSender(SendBatch sendBatch)
    : sendBatch_(std::move(sendBatch))
    , reach_(std::make_unique<ArtNetReach>(std::string(), 0))
{}

void ArtNetSender::UseAdapter(const std::string& name, std::uint32_t ownAddress)
{
    reach_ = std::make_unique<ArtNetReach>(name, ownAddress);
}

void ArtNetSender::SendWaiting()
{
    reach_->Update(Platform::MonotonicNanoseconds());
    if (waitingCount_ == 0)
        return;
    full_ = false;
    waiting_.swap(retried_);
    Send(std::span(retried_).first(std::exchange(waitingCount_, 0)));
}

void ArtNetSender::Send(std::span<const ArtNetOutbox::Packet> packets)
{
    if (full_) { // none may overtake an older packet of its universe
        for (const ArtNetOutbox::Packet& packet : packets)
            KeepWaiting(packet);
        return;
    }
    const std::int64_t now = Platform::MonotonicNanoseconds();
    addresses_.clear();
    for (const ArtNetOutbox::Packet& packet : packets) {
        if (addresses_.empty() || addresses_.back() != packet.address)
            addresses_.push_back(packet.address);
    }
    reach_->LookFor(addresses_, now);

    leaving_.clear();
    datagrams_.clear();
    for (const ArtNetOutbox::Packet& packet : packets) {
        const auto verdict = reach_->Judge(packet.address, now);
        if (now > packet.expires) {
            expired_ += verdict == ArtNetReach::Verdict::Send ? 1U : 0U;
            continue;
        }
        if (verdict == ArtNetReach::Verdict::Wait)
            KeepWaiting(packet);
        if (verdict != ArtNetReach::Verdict::Send)
            continue;
        leaving_.push_back(&packet);
        datagrams_.push_back(
            {packet.address, packet.port, std::span(packet.bytes).first(packet.size)});
    }
    const std::size_t untried = sendBatch_(datagrams_).untried;
    full_ = untried > 0;
    for (const ArtNetOutbox::Packet* packet : std::span(leaving_).last(untried))
        KeepWaiting(*packet);
}

void ArtNetSender::KeepWaiting(const ArtNetOutbox::Packet& packet)
{
    if (waitingCount_ >= MaxWaiting)
        return;
    if (waitingCount_ == waiting_.size())
        waiting_.emplace_back();
    waiting_[waitingCount_++] = packet;
}
