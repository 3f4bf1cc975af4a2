// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// How universes leave at the moment. The numbers and texts stand in logs.
enum class OutputState : std::uint32_t
{
    Disabled = 0,
    UsingLocalSocket = 1,
    DetermineSocketType = 2
};

/// "Using local socket state" and the like; another value is logged and gives "Unknown ArtNetOutput
/// state".
[[nodiscard]] const char* OutputStateText(OutputState state);

enum class OutputEvent : std::uint32_t
{
    Initialize = 0, ///< the network or the merger's settings were chosen anew
    Tick = 1        ///< the engine's timer, every 25 ms
};
