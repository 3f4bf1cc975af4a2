// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Someone who sends a universe now that we don't keep.
struct ArtNetOtherSender
{
    std::uint16_t portAddress = 0;
    std::uint32_t sender = 0; ///< first octet in the top byte

    auto operator<=>(const ArtNetOtherSender&) const = default;
};

/// Who sends universes that nobody here asked for: on a universe of ours, another program or desk
/// that nodes hear beside us. The memory is fixed, so that a flood costs none: universes share 256
/// rows, which have room for four senders each, and the one that was heard longest ago makes room.
/// Times are nanoseconds of the monotonic clock. No lock of its own.
class ArtNetOtherSenders
{
public:
    /// Who sent nothing for so long is silent.
    static constexpr std::int64_t Silence = 2'500'000'000;
    static constexpr std::size_t Most = 1024;

    /// Notes a packet. `known` is false for a sender that may be ourselves: then only one that has
    /// been noted already counts, and false says that nothing was done.
    bool Hear(std::uint16_t portAddress, std::uint32_t sender, std::int64_t now, bool known);

    /// Those that are not silent, in order.
    [[nodiscard]] std::vector<ArtNetOtherSender> Heard(std::int64_t now) const;

private:
    struct Entry
    {
        ArtNetOtherSender who;
        std::int64_t heard = -Silence;

        [[nodiscard]] bool IsSilent(std::int64_t now) const { return now - heard >= Silence; }
    };
    static constexpr std::size_t Ways = 4;

    std::array<std::array<Entry, Ways>, Most / Ways> rows_{};
};
