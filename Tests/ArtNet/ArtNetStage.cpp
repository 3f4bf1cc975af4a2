// SPDX-License-Identifier: MIT
#include "ArtNetStage.h"

ArtNetStage::ArtNetStage()
{
    Zen::ArtNetService::SetGlobal(
        std::make_shared<Zen::ArtNetService>("Zentri PixelWeft", "#0001 [0001] Ready", false));
}

ArtNetStage::~ArtNetStage()
{
    Zen::ArtNetService::SetGlobal(nullptr);
}

ArtNetStage::Page ArtNetStage::Read(const ArtNetClient& client, std::int32_t universe)
{
    Page page;
    page.fill(0xEE);
    client.ReadDmx(universe, page);
    return page;
}

bool ArtNetStage::ComesIn(const ArtNetClient& client, std::int32_t universe, std::uint8_t value)
{
    return Stage::ComesTrue([&] { return Read(client, universe) == Page{value}; });
}

ArtNetStage::List ArtNetStage::IpsOf(const ArtNetClient& client)
{
    ArtNetNodeList nodes;
    client.GetNodes(nodes);
    List ips;
    for (const ArtNetNodeInfo& node : nodes)
        ips.emplace_back(node.Ip());
    return ips;
}

void ArtNetStage::FeedNode(ArtNetClient& client, const std::string& ip)
{
    ArtNetNodeInfo node;
    node.SetIp(ip);
    client.FeedNodes({&node, 1});
}
