// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetReach.h"

#include <algorithm>

#include "Platform/IPv4.h"

namespace {

/// A packet for a host that was just looked for may wait for the answer, a tick at most.
constexpr std::int64_t Patience = 25'000'000;
/// The system gives up after three seconds and says so; later than this we have missed that.
constexpr std::int64_t AskAgainAfter = 4'000'000'000;

} // namespace

ArtNetReach::ArtNetReach(const std::string& adapterName, std::uint32_t ownAddress)
    : neighbours_(adapterName, ownAddress)
{}

void ArtNetReach::Update(std::int64_t now)
{
    if (!destinations_.empty())
        Apply(neighbours_.ReadChanges(), now);
}

void ArtNetReach::Apply(const std::vector<Platform::Neighbour>& changes, std::int64_t now)
{
    using Platform::NeighbourState;
    for (const Platform::Neighbour& neighbour : changes) {
        const auto found = destinations_.find(neighbour.address);
        if (found == destinations_.end())
            continue;
        Destination& destination = found->second;
        switch (neighbour.state) {
        case NeighbourState::Answers:
            destination.state = State::Answers;
            break;
        case NeighbourState::Asked:
            if (destination.state != State::Asked)
                destination = {State::Asked, now};
            break;
        case NeighbourState::Silent:
            destination.state = State::Silent;
            break;
        case NeighbourState::Forgotten:
            destination.state = State::New;
            break;
        }
    }
}

void ArtNetReach::LookFor(std::span<const std::uint32_t> addresses, std::int64_t now)
{
    if (!neighbours_.IsOpen())
        return;
    if (destinations_.size() + addresses.size() > MaxDestinations)
        destinations_.clear();
    doubtful_.clear();
    bool anyNew = false;
    for (const std::uint32_t address : addresses) {
        if (Platform::IsLoopback(address)) // by no adapter
            continue;
        Destination& destination = destinations_[address];
        if (destination.state == State::Asked && now - destination.asked > AskAgainAfter)
            destination.state = State::New;
        anyNew = anyNew || destination.state == State::New;
        if (destination.state == State::New || destination.state == State::Silent)
            doubtful_.push_back(address);
    }
    if (anyNew)
        Apply(neighbours_.ReadAll(), now);
    anyNew = false;
    for (const std::uint32_t address : doubtful_) {
        const State state = destinations_[address].state;
        anyNew = anyNew || state == State::New;
        if (state == State::New || state == State::Silent)
            Ask(address, now);
    }
    if (!anyNew)
        return;
    Apply(neighbours_.ReadAll(), now);
    for (const std::uint32_t address : doubtful_) {
        Destination& destination = destinations_[address];
        // The system took the question and keeps no entry: no host has to answer for this address.
        if (destination.state == State::New && destination.asked == now)
            destination.state = State::Direct;
    }
}

void ArtNetReach::Ask(std::uint32_t address, std::int64_t now)
{
    Destination& destination = destinations_[address];
    const std::error_code refused = neighbours_.Ask(address);
    if (refused == std::errc::permission_denied)
        destination.state = State::Direct;
    // Where even a question can't be sent, a packet may try: its error is the one to show.
    if (refused)
        return;
    destination.asked = now;
    if (destination.state == State::Silent)
        destination.state = State::Asked;
}

ArtNetReach::Verdict ArtNetReach::Judge(std::uint32_t address, std::int64_t now) const
{
    const auto found = destinations_.find(address);
    if (found == destinations_.end())
        return Verdict::Send;
    const Destination& destination = found->second;
    switch (destination.state) {
    case State::Asked:
        return now - destination.asked < Patience ? Verdict::Wait : Verdict::Drop;
    case State::Silent:
        return Verdict::Drop;
    case State::New:
    case State::Direct:
    case State::Answers:
        break;
    }
    return Verdict::Send;
}
