// SPDX-License-Identifier: MIT
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "LEDEngine/GetIPRange.h"
#include "LEDEngine/LEDEngine.h"
#include "LibTools/W32System.h"
#include "Model/DeviceManager.h"
#include "Settings/ApplicationMode.h"
#include "Settings/ExternalServerPreferences.h"
#include "Settings/SettingsBlock.h"
#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"
#include "UI/Network/HostSettings.h"
#include "UI/Network/NetworkChoice.h"

namespace {

class HostSettingsTest : public testing::Test
{
protected:
    HostSettingsTest()
    {
        manager.Initialize();
        setenv("XDG_DATA_HOME", user.Path().c_str(), 1);
        System::global = std::make_unique<W32System>();
        preferences.mode = ApplicationMode::BesideReelCommand;
        WritePreferences("ArtNet", "2.0.0.5");
        EXPECT_TRUE(preferences.Load());
        QObject::connect(&settings, &HostSettings::usedUniversesReceived,
                         [this](const std::vector<int>& universes) { used = universes; });
        QObject::connect(&settings, &HostSettings::artNetDMXInputSettingsChanged,
                         [this](bool, const std::wstring& ip) { changed.push_back(ip); });
    }
    ~HostSettingsTest() override { System::global.reset(); }

    void WritePreferences(const std::string& interface, const std::string& address) const
    {
        const auto folder = user.Path() / "Zentri ReelCommand 5";
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "Zentri ReelCommand_preferences.xml")
            << "<RMS_Preferences><DATA DMXINTERFACE=\"" << interface << "\" ART_NET_IP_ADDRESS=\""
            << address << "\" LIBRARYROOTFOLDER=\"/nowhere\"/></RMS_Preferences>";
    }

    void Tell(bool enabled, const std::wstring& ip)
    {
        std::vector<int> universes = {1, 2};
        settings.artNetDMXInputSettingsReceived(enabled, ip, universes);
    }

    Support::TemporaryFolder user;
    Support::LogCapture log;
    std::vector<int> used;
    std::vector<std::wstring> changed;
    GetIPRange networks{[] {
        return std::vector<NetworkInterface>();
    }};
    SettingsBlock block{SettingsBlock::WithoutStore{}};
    DeviceManager manager{QString()};
    LEDEngine engine{manager};
    NetworkChoice network{networks, block, manager, engine, [](const QString&) {
                          }};
    ExternalServerPreferences preferences;
    HostSettings settings{preferences, network};
};

TEST_F(HostSettingsTest, WhatThePreferencesSayIsNoNews)
{
    Tell(true, L"2.0.0.5");
    EXPECT_EQ(used, (std::vector<int>{1, 2}));
    EXPECT_TRUE(changed.empty());
    EXPECT_FALSE(log.Has("Initialize in Disabled state"));
}

TEST_F(HostSettingsTest, NewsAreLookedUpAndFollowed)
{
    WritePreferences("ArtNet", "ALL");
    Tell(true, L"ALL");
    EXPECT_EQ(preferences.artNetIPAddress, L"ALL");
    EXPECT_EQ(changed, (std::vector<std::wstring>{L"ALL"}));
    EXPECT_EQ(log.Count("Initialize in Disabled state"), 1);
    Tell(true, L"ALL");
    EXPECT_EQ(changed.size(), 1U);
    WritePreferences("sACN", "ALL");
    Tell(false, L"ALL");
    EXPECT_EQ(changed.size(), 2U);
    EXPECT_EQ(preferences.dmxInterface, L"sACN");
}

TEST_F(HostSettingsTest, AHostThatContradictsItsOwnPreferencesIsFollowedOnce)
{
    for (int i = 0; i < 100; ++i)
        Tell(true, L"2.0.0.6");
    EXPECT_EQ(changed.size(), 1U);
    EXPECT_EQ(log.Count("Initialize in Disabled state"), 1);
    Tell(false, L"2.0.0.6");
    EXPECT_EQ(changed.size(), 2U) << "something else is told";
}

TEST_F(HostSettingsTest, BesideAnotherHostNothingHappens)
{
    preferences.mode = ApplicationMode::BesideLoomTap;
    Tell(false, L"10.0.0.1");
    EXPECT_TRUE(used.empty());
    EXPECT_TRUE(changed.empty());
}

} // namespace
