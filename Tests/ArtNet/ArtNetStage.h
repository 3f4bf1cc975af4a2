// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ArtNet/ArtNetClient.h"
#include "ArtNet/ZenArtNetService.h"
#include "Support/ArtNetBytes.h"
#include "Support/LogCapture.h"
#include "Support/Stage.h"

using ArtNetBytes::Dmx;
using ArtNetBytes::Reply;

/// A service of its own for each case, and a log to read.
class ArtNetStage : public testing::Test
{
protected:
    using Page = std::array<std::uint8_t, 512>;
    using List = std::vector<std::string>;

    ArtNetStage();
    ~ArtNetStage() override;

    [[nodiscard]] static Page Read(const ArtNetClient& client, std::int32_t universe);
    /// Whether this comes in as the universe's first channel, with zeros behind it.
    [[nodiscard]] static bool ComesIn(const ArtNetClient& client, std::int32_t universe,
                                      std::uint8_t value);
    [[nodiscard]] static List IpsOf(const ArtNetClient& client);
    static void FeedNode(ArtNetClient& client, const std::string& ip);

    Support::LogCapture log_;
};
