// SPDX-License-Identifier: MIT
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "LEDEngine/GetIPRange.h"
#include "LEDEngine/LEDEngine.h"
#include "Model/DeviceManager.h"
#include "Platform/IPv4.h"
#include "Settings/SettingsBlock.h"
#include "Support/LogCapture.h"
#include "UI/Network/NetworkChoice.h"
#include "UI/Main/OperatorNotices.h"

namespace {

NetworkInterface Adapter(const std::string& ip, const std::string& broadcast, bool up = true)
{
    return {ip, Platform::ParseIPv4(ip).value_or(0), broadcast,
            Platform::ParseIPv4(broadcast).value_or(0), up};
}

/// A machine whose adapters the test plugs and pulls, and an operator who reads every notice.
class NetworkChoiceTest : public testing::Test
{
protected:
    using Lines = std::vector<std::string>;

    NetworkChoiceTest()
    {
        manager.Initialize();
        QObject::connect(&choice, &NetworkChoice::networkChanged, [this] { ++changes; });
    }

    void Choose(const QString& text)
    {
        choice.Choose(text);
        choice.updateArtNetOutput();
        log.Clear();
        changes = 0;
    }

    /// What the 3-second look said, without the list's own lines.
    Lines Look()
    {
        log.Clear();
        choice.CheckNetworkUpdates();
        Lines lines = log.Messages();
        std::erase_if(lines, [](const std::string& line) {
            return line.starts_with("New network") || line.starts_with("Network changed") ||
                   line.starts_with("Exiting") || line.starts_with("Entering");
        });
        return lines;
    }

    std::uint32_t Broadcast() { return engine.GetOutput().GetBroadcastValue(); }

    std::vector<NetworkInterface> adapters;
    std::vector<QString> notices;
    int changes = 0;
    Support::LogCapture log;
    GetIPRange networks{[this] {
        return adapters;
    }};
    SettingsBlock settings{SettingsBlock::WithoutStore{}};
    DeviceManager manager{QString()};
    LEDEngine engine{manager};
    NetworkChoice choice{networks, settings, manager, engine, [this](const QString& text) {
                             notices.push_back(text);
                         }};
};

TEST_F(NetworkChoiceTest, ATextIsMatchedAgainstTheAdapters)
{
    adapters = {Adapter("2.0.0.1", "2.255.255.255"), Adapter("2.0.0.2", "2.255.255.255"),
                Adapter("10.0.0.1", "10.255.255.255")};
    Choose(QStringLiteral("10.X.X.X"));
    EXPECT_EQ(choice.GetNetworkIP(), L"10.0.0.1");
    EXPECT_EQ(Broadcast(), 0x0AFFFFFFU);
    EXPECT_TRUE(notices.empty());
    Choose(QStringLiteral("2.X.X.X"));
    EXPECT_EQ(choice.GetNetworkIP(), L"2.0.0.1");
    Choose(QStringLiteral("7.X.X.X"));
    EXPECT_EQ(Broadcast(), 0U);
    EXPECT_EQ(settings.networkText, QStringLiteral("7.X.X.X")) << "it is still wanted";
    EXPECT_EQ(notices, (std::vector<QString>{
                           QStringLiteral("More than one network adapter matches network 2.X.X.X"),
                           QStringLiteral("No network interfaces match network 7.X.X.X")}));
    Choose(QString());
    EXPECT_EQ(notices.size(), 2U) << "none is a choice";
    EXPECT_TRUE(choice.GetNetworkBroadcast().empty());
}

TEST_F(NetworkChoiceTest, ACableOutChangesNothingAndBackBeginsAnew)
{
    adapters = {Adapter("2.0.0.1", "2.255.255.255"), Adapter("10.0.0.1", "10.255.255.255")};
    Choose(QStringLiteral("2.X.X.X"));
    EXPECT_TRUE(Look().empty());
    EXPECT_EQ(changes, 0);
    adapters[0].up = false;
    EXPECT_EQ(Look(), (Lines{"Current network disconnected"}));
    EXPECT_EQ(Broadcast(), 0x02FFFFFFU);
    EXPECT_EQ(changes, 1) << "the list is filled again";
    adapters[0].up = true;
    EXPECT_EQ(Look(),
              (Lines{"Current network connected", "Initialize in Determine socket type state"}));
    adapters[1].up = false;
    EXPECT_TRUE(Look().empty()) << "another network is none of ours";
    EXPECT_TRUE(notices.empty());
}

TEST_F(NetworkChoiceTest, AnAbsentNetworkIsTakenWhenItComes)
{
    adapters = {Adapter("10.0.0.1", "10.255.255.255")};
    Choose(QStringLiteral("2.X.X.X"));
    adapters.push_back(Adapter("192.168.1.10", "192.168.1.255"));
    EXPECT_EQ(Look(), (Lines{"Checking if new matching network is detected"}));
    adapters.push_back(Adapter("2.0.0.7", "2.255.255.255", false));
    EXPECT_EQ(Look(), (Lines{"Checking if new matching network is detected",
                             "Found matching network", "Initialize in Disabled state"}));
    EXPECT_EQ(choice.GetNetworkIP(), L"2.0.0.7");
    EXPECT_EQ(Broadcast(), 0x02FFFFFFU);
    EXPECT_EQ(notices.size(), 1U) << "only at the choice";
}

TEST_F(NetworkChoiceTest, NoNetworkStaysNone)
{
    adapters = {Adapter("10.0.0.1", "10.255.255.255")};
    Choose(QString());
    adapters.push_back(Adapter("2.0.0.1", "2.255.255.255"));
    EXPECT_EQ(Look(), (Lines{"Checking if new matching network is detected"}));
    EXPECT_EQ(Broadcast(), 0U);
}

TEST_F(NetworkChoiceTest, AnotherAddressOfTheChosenNetworkIsFollowed)
{
    adapters = {Adapter("2.0.0.9", "2.255.255.255")};
    Choose(QStringLiteral("2.X.X.X"));
    adapters = {Adapter("2.0.0.1", "2.255.255.255")};
    const Lines said = Look();
    ASSERT_FALSE(said.empty());
    EXPECT_EQ(said.front(), "Current network connected");
    EXPECT_EQ(Broadcast(), 0x02FFFFFFU);
    EXPECT_EQ(choice.GetNetworkIP(), L"2.0.0.9") << "the first one seen, until the next choice";
}

TEST(OperatorNoticesTest, WaitForNobodyAndNeverPileUp)
{
    const QString first = QStringLiteral("first");
    const QString second = QStringLiteral("second");
    QStringList read;
    std::function<void()> behind;
    OperatorNotices notices([&](const OperatorNotices::Notice& notice) {
        read.append(notice.text);
        behind(); // nobody closes the box before
    });
    behind = [&] {
        if (read.last() == second)
            return;
        notices.Tell({nullptr, {}, first}); // the same network came and went again
        notices.Tell({nullptr, {}, second});
        QCoreApplication::processEvents();
    };
    notices.Tell({nullptr, {}, first});
    EXPECT_TRUE(read.isEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(read, QStringList({first, second}));
    notices.Tell({nullptr, {}, first});
    notices.Show();
    EXPECT_EQ(read.mid(2), QStringList({first, second})) << "read, and true again";
    QCoreApplication::processEvents();
    EXPECT_EQ(read.size(), 4);
}

} // namespace
