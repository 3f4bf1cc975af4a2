// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "LEDEngine/GetIPRange.h"
#include "Platform/IPv4.h"
#include "Support/LogCapture.h"

namespace {

NetworkInterface Adapter(const std::string& ip, const std::string& broadcast, bool up = true)
{
    return {ip, Platform::ParseIPv4(ip).value_or(0), broadcast,
            Platform::ParseIPv4(broadcast).value_or(0), up};
}

/// A machine whose adapters the test plugs and pulls.
class GetIPRangeTest : public testing::Test
{
protected:
    std::vector<NetworkInterface> adapters;
    GetIPRange networks{[this] {
        return adapters;
    }};
    Support::LogCapture log;

    std::vector<std::wstring> Matching(const std::wstring& text)
    {
        std::vector<std::wstring> found;
        for (const auto& match : networks.FindMatching(text))
            found.push_back(match.ip);
        return found;
    }

    std::vector<std::wstring> Listed()
    {
        std::vector<std::wstring> texts;
        for (const auto& entry : networks.GetNetworks())
            texts.push_back(entry.text + (entry.connected ? L" on" : L" off"));
        return texts;
    }
};

using Texts = std::vector<std::wstring>;

TEST_F(GetIPRangeTest, NetworksAreNewOnceInTheOrderOfTheirTexts)
{
    adapters = {Adapter("192.168.1.10", "192.168.1.255"), Adapter("2.0.0.1", "2.255.255.255"),
                Adapter("10.0.0.2", "10.255.255.255", false)};
    EXPECT_EQ(networks.DetectChanges().size(), 3U);
    EXPECT_EQ(log.Messages(),
              (std::vector<std::string>{"New network detected 10.0.0.2/10.255.255.255",
                                        "New network detected 192.168.1.10/192.168.1.255",
                                        "New network detected 2.0.0.1/2.255.255.255"}));
    log.Clear();
    EXPECT_TRUE(networks.DetectChanges().empty());
    EXPECT_TRUE(log.Messages().empty());
    EXPECT_EQ(Listed(), (Texts{L"10.0.0.2 off", L"192.168.1.10 on", L"2.0.0.1 on"}));
}

TEST_F(GetIPRangeTest, LoopbackAndSelfGivenAddressesAreNeverListed)
{
    adapters = {Adapter("169.254.3.4", "169.254.255.255"), Adapter("127.0.0.1", "127.255.255.255"),
                Adapter("", ""), Adapter("nonsense", "")};
    EXPECT_TRUE(networks.DetectChanges().empty());
    EXPECT_TRUE(networks.GetNetworks().empty());
    adapters = {Adapter("16.9.0.1", "16.255.255.255"), Adapter("1.27.0.1", "1.255.255.255")};
    EXPECT_EQ(networks.DetectChanges().size(), 2U);
}

TEST_F(GetIPRangeTest, ACableAMaskAndAnAdapterThatIsGone)
{
    adapters = {Adapter("2.0.0.1", "2.255.255.255")};
    networks.DetectChanges();
    log.Clear();
    for (const NetworkInterface& now :
         {Adapter("2.0.0.1", "2.255.255.255", false), Adapter("2.0.0.1", "2.255.255.255"),
          Adapter("2.0.0.1", "2.0.0.255")})
    {
        adapters = {now};
        const auto changes = networks.DetectChanges();
        ASSERT_EQ(changes.size(), 1U);
        EXPECT_EQ(changes[0].up, now.up);
        EXPECT_EQ(changes[0].broadcastValue, now.broadcastValue);
    }
    EXPECT_EQ(log.Messages(),
              (std::vector<std::string>{"Network changed 2.0.0.1/2.255.255.255, state 0",
                                        "Network changed 2.0.0.1/2.255.255.255, state 1",
                                        "Network changed 2.0.0.1/2.0.0.255, state 1"}));
    adapters.clear();
    EXPECT_TRUE(networks.DetectChanges().empty());
    EXPECT_EQ(Listed(), (Texts{L"2.0.0.1 on"})) << "as it was last seen";
    // An address that changed is a network of its own, behind the old one.
    adapters = {Adapter("2.0.0.0", "2.255.255.255")};
    EXPECT_EQ(Matching(L"2.X.X.X"), (Texts{L"2.0.0.1", L"2.0.0.0"}));
}

TEST_F(GetIPRangeTest, TwoAdaptersWithOneAddressAreOneNetworkAsTheLastOneSays)
{
    // The one that is up is looked at first, whatever order the system lists them in.
    adapters = {Adapter("2.0.0.1", "2.0.255.255", false), Adapter("2.0.0.1", "2.255.255.255")};
    networks.DetectChanges();
    const auto matches = networks.FindMatching(L"2.0.0.1");
    ASSERT_EQ(matches.size(), 1U);
    EXPECT_EQ(matches[0].network.broadcast, L"2.0.255.255");
    EXPECT_FALSE(matches[0].network.up);
    EXPECT_TRUE(networks.DetectChanges().empty()) << "no change from the one to the other";
}

TEST_F(GetIPRangeTest, PatternsMatchPartByPart)
{
    adapters = {Adapter("2.0.0.1", "2.255.255.255"), Adapter("2.11.0.1", "2.255.255.255"),
                Adapter("10.0.0.1", "10.255.255.255")};
    EXPECT_EQ(Matching(L"X.X.X.X"), (Texts{L"10.0.0.1", L"2.0.0.1", L"2.11.0.1"}));
    EXPECT_EQ(Matching(L"2.X.X.X"), (Texts{L"2.0.0.1", L"2.11.0.1"}));
    EXPECT_EQ(Matching(L"X.X.0.1"), (Texts{L"10.0.0.1", L"2.0.0.1", L"2.11.0.1"}));
    EXPECT_EQ(Matching(L"2.0.0.1"), (Texts{L"2.0.0.1"}));
    for (const wchar_t* none : {L"", L"2", L"2.X.X", L"2.X.X.X.X", L"2.x.x.x", L"2.1X.0.1",
                                L"02.0.0.1", L"2.0.0.2", L"...", L"X"})
        EXPECT_TRUE(Matching(none).empty()) << std::string(none, none + std::wcslen(none));
}

TEST_F(GetIPRangeTest, ManualRangesAreUniqueAndKeepTheirOrder)
{
    adapters = {Adapter("10.0.0.1", "10.255.255.255", false)};
    for (const wchar_t* range : {L"2.X.X.X", L"10.X.X.X", L"2.X.X.X", L"192.168.X.X"})
        networks.AddManualRange(range);
    EXPECT_EQ(Listed(),
              (Texts{L"10.0.0.1 off", L"2.X.X.X off", L"10.X.X.X off", L"192.168.X.X off"}));
    adapters[0].up = true;
    networks.RemoveManualRange(L"2.X.X.X");
    networks.RemoveManualRange(L"not there");
    EXPECT_EQ(Listed(), (Texts{L"10.0.0.1 on", L"10.X.X.X on", L"192.168.X.X off"}));
    EXPECT_TRUE(networks.HasManualRange(L"10.X.X.X"));
    EXPECT_FALSE(networks.HasManualRange(L"2.X.X.X"));
}

TEST_F(GetIPRangeTest, KnownAreRangesNetworksAndThisMachineItself)
{
    networks.AddManualRange(L"9.X.X.X");
    adapters = {Adapter("2.0.0.1", "2.255.255.255")};
    for (const wchar_t* known : {L"9.X.X.X", L"2.0.0.1", L"127.0.0.1"})
        EXPECT_TRUE(networks.IsKnownNetwork(known));
    for (const wchar_t* unknown : {L"2.X.X.X", L"127.0.0.2", L""})
        EXPECT_FALSE(networks.IsKnownNetwork(unknown));
}

TEST(NetworkRange, IsValidWhenItsBroadcastAddressIsOne)
{
    EXPECT_EQ(GetIPRange::RangeToBroadcast(L"2.X.X.X"), L"2.255.255.255");
    EXPECT_EQ(GetIPRange::RangeToBroadcast(L"2.1X.0.1"), L"2.1255.0.1");
    EXPECT_TRUE(GetIPRange::IsValidRange(L"2.X.X.X"));
    EXPECT_TRUE(GetIPRange::IsValidRange(L"10.0.0.1"));
    for (const wchar_t* none : {L"", L"0.0.0.0", L"2.x.x.x", L"2.X.X", L"300.X.X.X", L"2.1X.0.1"})
        EXPECT_FALSE(GetIPRange::IsValidRange(none));
}

} // namespace
