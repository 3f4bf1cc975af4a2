// SPDX-License-Identifier: MIT
// What comes in one after the other: which sender counts, what we offer, and which nodes there are
// with all their pages. Each record of the input is a sender, the time since the one before, a
// length of two bytes and that much of a datagram.
#include "ArtNet/ArtNetInputs.h"
#include "ArtNet/ArtNetLimits.h"
#include "ArtNet/ArtNetNodeTable.h"
#include "ArtNet/ArtNetPackets.h"
#include "Fuzz/Fuzz.h"

#include <algorithm>

namespace {

class Traffic
{
public:
    Traffic()
    {
        for (std::int32_t universe = 14; universe < 24; ++universe)
            inputs_.Add(universe, universe % 8 != 0);
    }

    void Take(std::uint32_t sender, std::span<const std::byte> datagram, std::int64_t passed)
    {
        now_ += passed;
        const auto kind = ArtNetPackets::Classify(datagram);
        if (kind == ArtNetPackets::Kind::Dmx)
            TakeDmx(sender, datagram);
        if (kind == ArtNetPackets::Kind::Poll)
            CheckOffer();
        const auto reply = ArtNetPackets::ReadPollReply(datagram, sender);
        if (kind == ArtNetPackets::Kind::PollReply && reply)
            nodes_.Hear(*reply);
        if (passed > 0)
            CheckNodes();
    }

private:
    void TakeDmx(std::uint32_t sender, std::span<const std::byte> datagram)
    {
        using Verdict = ArtNetInputs::Verdict;
        const auto dmx = ArtNetPackets::ReadDmx(datagram);
        if (!dmx)
            return;
        auto verdict = inputs_.Take(*dmx, sender, now_, false);
        if (verdict == Verdict::Unheard)
            verdict = inputs_.Take(*dmx, sender, now_, true);
        const auto* universe = inputs_.Find(dmx->portAddress);
        Require((verdict == Verdict::NotKept) == !universe && verdict != Verdict::Unheard);
        const auto others = inputs_.OtherSenders(now_);
        Require(others.size() <= ArtNetOtherSenders::Most && std::ranges::is_sorted(others));
        Require(universe ||
                std::ranges::count(others, ArtNetOtherSender{dmx->portAddress, sender}) == 1);
        if (verdict == Verdict::Taken && !dmx->channels.empty())
            Require((*universe)[0] == std::to_integer<std::uint8_t>(dmx->channels[0]));
        const auto conflicts = inputs_.Conflicts(now_);
        for (const auto& [portAddress, taken, ignored] : conflicts)
            Require(taken != ignored && inputs_.Find(portAddress));
        Require(log_.Take(conflicts).size() <= 2);
    }

    /// What we write of our universes is read as these.
    void CheckOffer() const
    {
        const auto pages = inputs_.Offered(now_);
        std::size_t offered = 0;
        for (std::size_t i = 0; i < pages.size(); ++i) {
            std::array<std::byte, ArtNetPackets::PollReplySize> packet{};
            const auto bindIndex = static_cast<std::uint8_t>(i + 1);
            ArtNetPackets::WritePollReply(
                packet, {.shortName = "fuzz",
                         .nodeReport = "fuzz",
                         .net = pages[i].net,
                         .subNet = pages[i].subNet,
                         .outputs = std::span(pages[i].outputs).first(pages[i].count),
                         .address = 1,
                         .bindIndex = bindIndex,
                         .dataComesIn = pages[i].dataComesIn});
            const auto reply = ArtNetPackets::ReadPollReply(packet, 1);
            Require(reply && reply->bindIndex == bindIndex);
            Require(reply->node.universes.size() == pages[i].count && pages[i].count > 0);
            for (const std::uint16_t universe : reply->node.universes)
                Require(inputs_.Find(universe));
            offered += pages[i].count;
        }
        Require(offered == 9);
    }

    void CheckNodes()
    {
        const auto before = nodes_.Published();
        nodes_.Age();
        const ArtNetNodeList& nodes = *nodes_.Published();
        Require(nodes.size() <= 256 && (before == nodes_.Published() || *before != nodes));
        for (const ArtNetNodeInfo& node : nodes) {
            Require(node.universes.size() <= 4 * ArtNetNodeTable::MaxPagesOfNode);
            Require(std::ranges::all_of(node.universes,
                                        [](int universe) { return universe < 0x8000; }));
        }
    }

    std::int64_t now_ = 0;
    ArtNetInputs inputs_;
    ArtNetConflictLog log_;
    ArtNetNodeTable nodes_;
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t head = 4;
    Traffic traffic;
    auto rest = std::as_bytes(std::span(data, size));
    while (rest.size() >= head) {
        const auto at = [rest](std::size_t i) {
            return std::to_integer<std::uint8_t>(rest[i]);
        };
        const std::size_t length =
            std::min(std::size_t{at(2)} + std::size_t{at(3)} * 256, rest.size() - head);
        traffic.Take(0x02000000U + at(0), rest.subspan(head, length), at(1) * 100'000'000LL);
        rest = rest.subspan(head + length);
    }
    return 0;
}
