// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

/// From the host's own preferences: the path of the shared document, and the host's Art-Net.
class ExternalServerPreferences
{
public:
    /// Keeps the mode that ApplicationMode has now.
    ExternalServerPreferences();

    /// Reads the host's preferences, or composes what needs no file. True when `mappingPath` holds
    /// a usable path. May be called again: the host can change its preferences at any time. Fields
    /// that a failed reading did not reach stay as they were.
    [[nodiscard]] bool Load();

    /// Whether the host's DMX interface is Art-Net.
    [[nodiscard]] bool IsArtNet() const { return dmxInterface == L"ArtNet"; }

    std::wstring mappingPath;     ///< the mapping document, with `/` between its parts
    std::wstring dmxInterface;    ///< the host's own name for its DMX interface
    std::wstring artNetIPAddress; ///< dotted, as the host has it
    std::int32_t mode;

private:
    bool LoadReelCommand();
    bool ComposeLoomTap();
};
