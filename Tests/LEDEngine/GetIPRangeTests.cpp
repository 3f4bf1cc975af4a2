// SPDX-License-Identifier: MIT
// Patterns, and what the program makes of a change, are judged where it chooses its network.
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "LEDEngine/GetIPRange.h"
#include "Platform/IPv4.h"

namespace {

using Texts = std::vector<std::wstring>;

NetworkInterface Adapter(const std::string& ip, const std::string& broadcast, bool up = true)
{
    return {ip,        Platform::ParseIPv4(ip).value_or(0),
            broadcast, Platform::ParseIPv4(broadcast).value_or(0),
            up,        {},
            0};
}

class GetIPRangeTest : public testing::Test
{
protected:
    Texts Listed()
    {
        Texts texts;
        networks.DetectChanges();
        for (const auto& entry : networks.GetNetworks())
            texts.push_back(entry.text + (entry.connected ? L" on" : L" off"));
        return texts;
    }

    std::vector<NetworkInterface> adapters;
    bool answers = true;
    GetIPRange networks{[this] {
        return answers ? std::optional(adapters) : std::nullopt;
    }};
};

TEST_F(GetIPRangeTest, NetworksAreNewOnceAndThenChange)
{
    adapters = {Adapter("192.168.1.10", "192.168.1.255"),
                Adapter("2.0.0.1", "2.255.255.255"),
                Adapter("10.0.0.2", "10.255.255.255", false),
                Adapter("169.254.3.4", "169.254.255.255"), // given by the machine itself
                Adapter("127.0.0.1", "127.255.255.255"),
                Adapter("", ""),
                Adapter("nonsense", "")};
    EXPECT_EQ(networks.DetectChanges().size(), 3U);
    const auto all = adapters;
    adapters = {Adapter("2.0.0.1", "2.0.0.255")};
    EXPECT_EQ(networks.DetectChanges().size(), 3U) << "the other two are gone";
    EXPECT_TRUE(networks.DetectChanges().empty()) << "each change once";
    EXPECT_TRUE(networks.FindMatching(L"192.X.X.X").empty());
    EXPECT_TRUE(networks.IsKnownNetwork(L"192.168.1.10"));
    answers = false;
    EXPECT_TRUE(networks.DetectChanges().empty()) << "no answer is no change";
    answers = true;
    adapters = all;
    EXPECT_EQ(networks.DetectChanges().size(), 3U);
    // Of two adapters with one address the last counts; one that is up comes first, whatever order
    // the system lists them in.
    adapters = {Adapter("16.9.0.1", "16.0.255.255", false), Adapter("16.9.0.1", "16.255.255.255"),
                Adapter("1.27.0.1", "1.255.255.255")};
    EXPECT_EQ(Listed(), (Texts{L"10.0.0.2 off", L"192.168.1.10 off", L"2.0.0.1 off", L"1.27.0.1 on",
                               L"16.9.0.1 off"}))
        << "those that are gone stay, new ones behind them";
    EXPECT_EQ(networks.FindMatching(L"16.9.0.1")[0].network.broadcast, L"16.0.255.255");
    EXPECT_TRUE(networks.DetectChanges().empty()) << "no change from the one to the other";
    EXPECT_EQ(networks.FindMatching(L"X.X.0.1").size(), 2U);
    for (const wchar_t* none : {L"", L"16", L"16.X.X", L"16.X.X.X.X", L"16.x.x.x", L"1X.9.0.1",
                                L"016.9.0.1", L"16.9.0.2", L"...", L"X"})
        EXPECT_TRUE(networks.FindMatching(none).empty()) << std::wstring(none).size();
}

} // namespace
