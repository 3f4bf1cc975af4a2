// SPDX-License-Identifier: MIT
#pragma once

#include "Socket.h"
#include "Wire.h"

#include <optional>
#include <string>
#include <vector>

namespace Rig {

enum class Mode
{
    Answer,
    Watch,
    Print,
    Send,
    Poll
};

struct Options
{
    Mode mode = Mode::Answer;
    std::vector<Address> nodes;
    std::vector<std::uint16_t> universes;
    int stride = 0; ///< each further node's universes lie this much higher
    std::string name = "Rig node";
    bool broadcastReplies = false;
    bool changesOnly = false;
    double seconds = 0; ///< more than 0 after parsing, so that the rig always ends
    int count = 0;      ///< packets after which print ends; 0: the time alone ends it
    std::optional<Address> target;
    Bytes values;
    double rate = 40;
};

extern const char* const usage;

/// Nothing when the words make no sense; the reason is then written to standard error.
[[nodiscard]] std::optional<Options> ParseOptions(const std::vector<std::string>& words);

} // namespace Rig
