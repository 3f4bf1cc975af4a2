// SPDX-License-Identifier: MIT
#include "LibTools/W32System.h"
#include "Settings/ApplicationMode.h"
#include "Support/TemporaryFolder.h"
#include "UI/Network/HostSettings.h"
#include "UI/Network/Machine.h"

namespace {

class HostSettingsTest : public Machine
{
protected:
    HostSettingsTest()
    {
        setenv("XDG_DATA_HOME", user.Path().c_str(), 1);
        System::global = std::make_unique<W32System>();
        preferences.mode = ApplicationMode::BesideReelCommand;
        WritePreferences("ArtNet", "2.0.0.5");
        EXPECT_TRUE(preferences.Load());
        QObject::connect(&host, &HostSettings::usedUniversesReceived,
                         [this](const std::vector<int>& universes) { used = universes; });
        QObject::connect(&host, &HostSettings::artNetDMXInputSettingsChanged,
                         [this](bool, const std::wstring& ip) { changed.push_back(ip); });
    }
    ~HostSettingsTest() override { System::global.reset(); }

    void WritePreferences(const std::string& interface, const std::string& address) const
    {
        user.Write("Zentri ReelCommand 5/Zentri ReelCommand_preferences.xml",
                   "<RMS_Preferences><DATA DMXINTERFACE=\"" + interface +
                       "\" ART_NET_IP_ADDRESS=\"" + address +
                       "\" LIBRARYROOTFOLDER=\"/nowhere\"/></RMS_Preferences>");
    }
    void Receive(bool enabled, const std::wstring& ip)
    {
        std::vector<int> universes = {1, 2};
        host.artNetDMXInputSettingsReceived(enabled, ip, universes);
    }
    Support::TemporaryFolder user;
    std::vector<int> used;
    std::vector<std::wstring> changed;
    HostSettings host{preferences, choice};
};

} // namespace

TEST_F(HostSettingsTest, WhatDiffersFromThePreferencesIsLookedUpAndFollowedOnce)
{
    // What the host's preferences say by now, what it reports so often, and how many of its reports
    // were followed so far.
    for (const auto& [interface, address, enabled, reported, times, followed] :
         {std::tuple("ArtNet", "2.0.0.5", true, L"2.0.0.5", 1, 0U),
          {"ArtNet", "ALL", true, L"ALL", 2, 1U},
          {"sACN", "ALL", false, L"ALL", 1, 2U},
          // A host that contradicts its own preferences, forty times a second.
          {"sACN", "ALL", true, L"2.0.0.6", 100, 3U},
          {"sACN", "ALL", false, L"2.0.0.6", 1, 4U}})
    {
        WritePreferences(interface, address);
        for (int repeated = 0; repeated < times; ++repeated)
            Receive(enabled, reported);
        EXPECT_EQ(changed.size(), followed) << reported;
        EXPECT_EQ(static_cast<unsigned>(log.Count("Initialize in Disabled state")), followed)
            << "the output is set up";
        EXPECT_EQ(used, (std::vector<int>{1, 2}));
    }
    EXPECT_EQ(changed.front(), L"ALL");
    EXPECT_EQ(preferences.artNetIPAddress, L"ALL");
    EXPECT_EQ(preferences.dmxInterface, L"sACN");

    preferences.mode = ApplicationMode::BesideLoomTap;
    used.clear();
    Receive(false, L"10.0.0.1");
    EXPECT_TRUE(used.empty());
    EXPECT_EQ(changed.size(), 4U);
}
