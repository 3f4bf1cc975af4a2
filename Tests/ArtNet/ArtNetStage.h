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

    ArtNetStage()
    {
        Zen::ArtNetService::SetGlobal(
            std::make_shared<Zen::ArtNetService>("Zentri PixelWeft", "#0001 [0001] Ready", false));
    }
    ~ArtNetStage() override { Zen::ArtNetService::SetGlobal(nullptr); }

    [[nodiscard]] static Page Read(const ArtNetClient& client, std::int32_t universe)
    {
        Page page;
        page.fill(0xEE);
        client.ReadDmx(universe, page);
        return page;
    }
    /// Whether this comes in as the universe's first channel, with zeros behind it.
    [[nodiscard]] static bool ComesIn(const ArtNetClient& client, std::int32_t universe,
                                      std::uint8_t value,
                                      std::chrono::milliseconds longest = std::chrono::seconds(5))
    {
        return Stage::ComesTrue([&] { return Read(client, universe) == Page{value}; }, longest);
    }
    [[nodiscard]] static List IpsOf(const ArtNetClient& client)
    {
        ArtNetNodeList nodes;
        client.GetNodes(nodes);
        List ips;
        for (const ArtNetNodeInfo& node : nodes)
            ips.emplace_back(node.Ip());
        return ips;
    }
    static void FeedNode(ArtNetClient& client, const std::string& ip)
    {
        ArtNetNodeInfo node;
        node.SetIp(ip);
        client.FeedNodes({&node, 1});
    }

    Support::LogCapture log_;
};
