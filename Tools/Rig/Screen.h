// SPDX-License-Identifier: MIT
#pragma once

#include "Socket.h"
#include "Wire.h"

#include <array>
#include <chrono>
#include <map>

namespace Rig {

/// The received universes as rows of coloured cells on a terminal: three channels a cell.
class Screen
{
public:
    Screen();
    /// Restores the terminal's cursor and colours.
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// Keeps a received universe for the next Draw.
    void Take(const Dmx& dmx, const Address& source);
    /// Draws everything again. Call it ten times a second: each call also closes a slot of the
    /// packet rates.
    void Draw();

    static constexpr std::chrono::milliseconds period{100};

private:
    struct Row
    {
        std::array<std::uint8_t, universeSize> channels{};
        Address source{};
        std::size_t length = 0;
        std::array<int, 10> slots{}; ///< packets of the last ten periods
        int silent = 0;              ///< periods since the last packet
    };

    std::map<std::uint16_t, Row> rows_;
    std::size_t slot_ = 0;
};

} // namespace Rig
