// SPDX-License-Identifier: MIT
#pragma once

#include <boost/container/flat_map.hpp>

#include <array>
#include <cstdint>
#include <vector>

#include "ArtNet/ArtNetOtherSenders.h"
#include "ArtNet/ArtNetPackets.h"
#include "ArtNet/ArtNetReceived.h"
#include "ArtNet/ArtNetSourceConflict.h"

/// The universes that a server receives. With one sender the last packet counts; with several the
/// one that was heard first, until it is silent. A sender is an address: a console that starts
/// again has another port, and some take a new one for each packet. Times are nanoseconds of the
/// monotonic clock. No lock of its own.
class ArtNetInputs
{
public:
    using Universe = std::array<std::uint8_t, 512>;

    /// Who sent nothing for so long is silent.
    static constexpr std::int64_t Silence = 2'500'000'000;

    void Clear()
    {
        inputs_.clear();
        others_ = {};
    }
    /// The universe is kept from now on, zero and without a sender until something comes in.
    /// `offered` is whether consoles that ask are told of it; once is enough.
    void Add(std::int32_t portAddress, bool offered);
    /// Null for a universe that is not kept.
    [[nodiscard]] const Universe* Find(std::int32_t portAddress) const;

    enum class Verdict : std::uint8_t
    {
        NotKept, ///< the sender is noted
        Taken,
        Ignored, ///< another sender counts
        Unheard  ///< nothing was done: ask again with `known` when the sender is known not to be us
    };
    /// Takes what came in. `known` is false for a sender that may be ourselves.
    Verdict Take(const ArtNetPackets::Dmx& dmx, std::uint32_t sender, std::int64_t now, bool known);

    /// Up to four offered universes that share Net and Sub-Net.
    struct Page
    {
        std::uint8_t net = 0;
        std::uint8_t subNet = 0;
        std::uint8_t count = 0;
        std::array<std::uint8_t, 4> outputs{}; ///< the last four bits of each Port-Address
        std::uint8_t dataComesIn = 0;          ///< bit n: someone sends output n now

        bool operator==(const Page&) const = default;
    };
    static constexpr std::size_t MaxPages = 32;
    /// All offered universes, as far as they fit.
    [[nodiscard]] std::vector<Page> Offered(std::int64_t now) const;

    /// The offered universes of this run to which two senders send now, in order.
    [[nodiscard]] std::vector<ArtNetSourceConflict>
    Conflicts(std::int64_t now, std::int32_t first = 0, std::int32_t count = 32768) const;

    /// The kept universes of this run that someone sends now, in order.
    [[nodiscard]] std::vector<ArtNetReceived> ComingIn(std::int64_t now, std::int32_t first,
                                                       std::int32_t count) const;

    /// How many these are.
    [[nodiscard]] std::int32_t CountComingIn(std::int64_t now, std::int32_t first,
                                             std::int32_t count) const;

    /// Who sends universes that are not kept now.
    [[nodiscard]] std::vector<ArtNetOtherSender> OtherSenders(std::int64_t now) const
    {
        return others_.Heard(now);
    }

private:
    struct Sender
    {
        std::uint32_t address = 0;
        std::int64_t heard = -Silence;

        [[nodiscard]] bool IsSilent(std::int64_t now) const { return now - heard >= Silence; }
        [[nodiscard]] bool Is(std::uint32_t other, std::int64_t now) const
        {
            return address == other && !IsSilent(now);
        }
    };
    struct Input
    {
        Universe channels{};
        bool offered = false;
        std::uint64_t packets = 0; ///< taken so far
        Sender taken;
        Sender ignored;
    };

    boost::container::flat_map<std::int32_t, Input> inputs_;
    ArtNetOtherSenders others_;
};
