// SPDX-License-Identifier: MIT
#include <filesystem>

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
        const std::string folder = "Zentri ReelCommand 5";
        std::filesystem::create_directories(user.Path() / folder);
        user.Write(folder + "/Zentri ReelCommand_preferences.xml",
                   "<RMS_Preferences><DATA DMXINTERFACE=\"" + interface +
                       "\" ART_NET_IP_ADDRESS=\"" + address +
                       "\" LIBRARYROOTFOLDER=\"/nowhere\"/></RMS_Preferences>");
    }
    void Receive(bool enabled, const std::wstring& ip)
    {
        std::vector<int> universes = {1, 2};
        host.artNetDMXInputSettingsReceived(enabled, ip, universes);
    }
    /// How often the output was set up again.
    [[nodiscard]] int SetUps() const { return log.Count("Initialize in Disabled state"); }

    Support::TemporaryFolder user;
    std::vector<int> used;
    std::vector<std::wstring> changed;
    HostSettings host{preferences, choice};
};

} // namespace

TEST_F(HostSettingsTest, WhatDiffersFromThePreferencesIsLookedUpAndFollowedOnce)
{
    using Changes = std::vector<std::wstring>;
    Receive(true, L"2.0.0.5");
    EXPECT_EQ(used, (std::vector<int>{1, 2}));
    EXPECT_EQ(changed, Changes());
    EXPECT_EQ(SetUps(), 0);
    WritePreferences("ArtNet", "ALL");
    for (int repeated = 0; repeated < 2; ++repeated)
        Receive(true, L"ALL");
    EXPECT_EQ(preferences.artNetIPAddress, L"ALL");
    EXPECT_EQ(changed, Changes({L"ALL"}));
    EXPECT_EQ(SetUps(), 1);
    WritePreferences("sACN", "ALL");
    Receive(false, L"ALL");
    EXPECT_EQ(changed.size(), 2U);
    EXPECT_EQ(preferences.dmxInterface, L"sACN");

    // A host that contradicts its own preferences, forty times a second.
    for (int repeated = 0; repeated < 100; ++repeated)
        Receive(true, L"2.0.0.6");
    EXPECT_EQ(changed.size(), 3U);
    EXPECT_EQ(SetUps(), 3);
    Receive(false, L"2.0.0.6");
    EXPECT_EQ(changed.size(), 4U) << "something else";

    preferences.mode = ApplicationMode::BesideLoomTap;
    used.clear();
    Receive(false, L"10.0.0.1");
    EXPECT_TRUE(used.empty());
    EXPECT_EQ(changed.size(), 4U);
}
