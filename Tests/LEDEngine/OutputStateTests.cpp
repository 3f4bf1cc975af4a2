// SPDX-License-Identifier: MIT
// The state machine row by row, judged by what stands in the log, on the channel and on the port.
#include "HostChannel.h"

#include <array>
#include <chrono>
#include <thread>

#include "ArtNet/ZenArtNetService.h"
#include "DebugVariables/DebugVariables.h"

namespace {

using S = OutputState;
using E = OutputEvent;

constexpr int Ignored = -1;

/// Where an event leads, state by state. `Initialize` stands for two columns: with a network,
/// without.
struct Row
{
    S state;
    const char* text;
    int network;
    int noNetwork;
    int serverDetected;
    int serverStopped;
    int socketRebound;
    int clientRegistered;
    int devicesSent;
};

constexpr std::array<Row, 7> table = {{
    {S::Disabled, "Disabled state", 2, 0, Ignored, Ignored, Ignored, Ignored, Ignored},
    {S::UsingLocalSocket, "Using local socket state", 1, 0, 3, Ignored, Ignored, Ignored, Ignored},
    {S::DetermineSocketType, "Determine socket type state", 2, 0, 4, 1, Ignored, Ignored, Ignored},
    {S::RebindRemoteSocket, "Rebind remote socket state", 3, 0, Ignored, 1, 4, Ignored, Ignored},
    {S::RegisteringToRemoteSocket, "Registering to remote socket state", 4, 0, Ignored, 1, Ignored,
     5, Ignored},
    {S::SynchronizingRemoteDeviceList, "Synchronizing remote device list state", 4, 0, Ignored, 1,
     Ignored, Ignored, 6},
    {S::UsingRemoteSocket, "Using remote socket state", 4, 0, Ignored, 1, Ignored, Ignored,
     Ignored},
}};

/// Whether the port is ours or free, as it should be. A system that looks at the socket for the I/O
/// thread at the moment when it is closed lets go of the port a moment later.
bool PortIs(bool free)
{
    bool is = !free;
    for (int i = 0; i < 200 && is != free; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(i > 0 ? 5 : 0));
        const int probe = Platform::OpenUdp();
        is = Platform::BindUdp(probe, {0, 6454});
        Platform::CloseUdp(probe);
    }
    return is == free;
}

class OutputStates : public HostChannel
{
protected:
    OutputStates()
    {
        Zen::ArtNetService::SetGlobal(
            std::make_shared<Zen::ArtNetService>("Test", "#0001 [0001] Ready", false));
    }
    ~OutputStates() override
    {
        ChooseNoNetwork(); // gives up the clients before the service goes
        Zen::ArtNetService::SetGlobal(nullptr);
    }

    void Events(E event, int times = 1)
    {
        for (int i = 0; i < times; ++i)
            output.HandleEvent(event);
    }

    /// From anywhere, by events alone.
    void GoTo(S state)
    {
        ChooseNoNetwork();
        output.Initialize(L"", L"", L"", {});
        if (state == S::Disabled)
            return;
        ChooseNetwork();
        if (state == S::UsingLocalSocket || state == S::RebindRemoteSocket)
            Events(E::Tick, 12);
        if (state == S::RebindRemoteSocket || state >= S::RegisteringToRemoteSocket)
            Events(E::ServerDetected);
        if (state >= S::SynchronizingRemoteDeviceList)
            Events(E::ClientRegistered);
        if (state == S::UsingRemoteSocket)
            Events(E::DevicesSent);
    }

    /// Checks one cell: where it leads, what it says and whether the port follows.
    void Check(const Row& row, const std::string& says, int leadsTo,
               const std::function<void()>& event)
    {
        GoTo(row.state);
        ASSERT_EQ(output.GetState(), row.state);
        ASSERT_TRUE(PortIs(row.state != S::UsingLocalSocket)) << row.text;
        log.Clear();
        (void)Said();
        event();
        const auto messages = log.Messages();
        const std::string where = std::string(row.text) + ", " + says;
        if (leadsTo == Ignored) {
            EXPECT_EQ(output.GetState(), row.state) << where;
            EXPECT_TRUE(messages.empty()) << where << ": " << messages.front();
            EXPECT_TRUE(Said().empty()) << where;
            return;
        }
        EXPECT_EQ(static_cast<int>(output.GetState()), leadsTo) << where;
        const auto next = output.GetState();
        EXPECT_TRUE(PortIs(next != S::UsingLocalSocket)) << where;
        if (!says.empty()) {
            ASSERT_FALSE(messages.empty()) << where;
            EXPECT_EQ(messages.front(), says + " in " + row.text);
        }
        const bool moved = next != row.state;
        EXPECT_EQ(log.Count(std::string("Exiting ") + row.text) > 0, moved || reEnters) << where;
        EXPECT_EQ(log.Has(std::string("Entering ") + table[static_cast<std::size_t>(next)].text),
                  moved || reEnters)
            << where;
    }

    bool reEnters = false;
};

TEST_F(OutputStates, EachEventInEachState)
{
    ASSERT_TRUE(host.Start());
    for (const Row& row : table) {
        reEnters = row.state == S::RegisteringToRemoteSocket;
        Check(row, "Initialize", row.network, [&] { ChooseNetwork(); });
        reEnters = false;
        Check(row, "Initialize", row.noNetwork, [&] { ChooseNoNetwork(); });
        Check(row, "Server detected", row.serverDetected, [&] { Events(E::ServerDetected); });
        Check(row, "Server stopped", row.serverStopped, [&] { Events(E::ServerStopped); });
        Check(row, "", row.socketRebound, [&] { Events(E::SocketRebound); });
        Check(row, "", row.clientRegistered, [&] { Events(E::ClientRegistered); });
        Check(row, "", row.devicesSent, [&] { Events(E::DevicesSent); });
        if (row.state < S::DetermineSocketType || row.state == S::UsingRemoteSocket)
            Check(row, "", Ignored, [&] { Events(E::Tick, 50); });
    }
}

TEST_F(OutputStates, TheTwelfthTickEndsAWait)
{
    struct Wait
    {
        S state;
        S next;
        const char* says;
    };
    for (const Wait& wait :
         {Wait{S::DetermineSocketType, S::UsingLocalSocket, "Server was not detected"},
          Wait{S::RebindRemoteSocket, S::RebindRemoteSocket,
               "Rebind socked did not succed, retrying"},
          Wait{S::RegisteringToRemoteSocket, S::RegisteringToRemoteSocket,
               "Registering remote client did not succed, retrying"},
          Wait{S::SynchronizingRemoteDeviceList, S::RegisteringToRemoteSocket,
               "Registering remote client did not succed, retrying"}})
    {
        GoTo(wait.state);
        Events(E::Tick, 11);
        EXPECT_EQ(output.GetState(), wait.state);
        EXPECT_FALSE(log.Has(wait.says));
        Events(E::Tick);
        EXPECT_EQ(output.GetState(), wait.next);
        EXPECT_EQ(log.Count(wait.says), 1);
        log.Clear();
    }
}

TEST_F(OutputStates, RegistrationAndSynchronisationShareOneWait)
{
    GoTo(S::RegisteringToRemoteSocket);
    Events(E::Tick, 8);
    Events(E::ClientRegistered);
    Events(E::Tick, 3);
    EXPECT_EQ(output.GetState(), S::SynchronizingRemoteDeviceList);
    Events(E::Tick);
    EXPECT_EQ(output.GetState(), S::RegisteringToRemoteSocket);
    Events(E::Tick, 11);
    EXPECT_EQ(output.GetState(), S::RegisteringToRemoteSocket) << "the wait began anew";
}

TEST_F(OutputStates, ANetworkThatIsChosenAgainDoesNotLengthenTheWaits)
{
    for (const S state : {S::DetermineSocketType, S::RebindRemoteSocket}) {
        GoTo(state);
        Events(E::Tick, 11);
        ChooseNetwork();
        log.Clear();
        Events(E::Tick);
        EXPECT_FALSE(log.Messages().empty());
    }
}

TEST_F(OutputStates, TheWholeWayIsWrittenDown)
{
    GoTo(S::Disabled);
    log.Clear();
    ChooseNetwork();
    Events(E::Tick, 12);
    Events(E::ServerDetected);
    Events(E::SocketRebound);
    Events(E::ClientRegistered);
    Events(E::DevicesSent);
    Events(E::ServerStopped);
    Lines lines = log.Messages();
    // The service's own words are not ours to judge, and where each event leads is shown above.
    std::erase_if(lines, [](const std::string& line) {
        return line.starts_with("Creating new") || line.starts_with("Recycling") ||
               line.starts_with("Exiting") || line.starts_with("Entering");
    });
    EXPECT_EQ(
        lines,
        (Lines{"Initialize in Disabled state", "Server was not detected",
               "Registering local ArtNet client", "Server detected in Using local socket state",
               "Destroying local ArtNet client", "Sending rebind DMX socket", "Dmx socket rebound",
               "Registering remote ArtNet client", "Remote client registered",
               "Sent device list to server", "Server stopped in Using remote socket state",
               "Registering local ArtNet client"}));
}

TEST_F(OutputStates, ARegistrationAgainHasTheNewAddresses)
{
    ASSERT_TRUE(host.Start());
    GoTo(S::UsingRemoteSocket);
    (void)Said();
    output.Initialize(L"10.0.0.1", L"10.255.255.255", L"", {});
    EXPECT_EQ(Said(), (Lines{"register first=0 count=1 interface=10.0.0.1 "
                             "broadcast=10.255.255.255 receive= name=PixelWeft"}));
}

TEST_F(OutputStates, NodesOfTheHostStayKnownOnOurOwnPort)
{
    GoTo(S::UsingRemoteSocket);
    ArtNetNodeInfo node;
    node.SetName("Lamp");
    node.SetIp("2.0.0.10");
    output.AddRemoteNode(node, 1, 1);
    Events(E::ServerStopped);
    output.RefreshNodes();
    ASSERT_EQ(output.GetNodes().size(), 1U);
    EXPECT_EQ(output.GetNodes()[0], node);
}

TEST_F(OutputStates, WithoutATransportNothingIsSent)
{
    for (const Row& row : table) {
        GoTo(row.state);
        EXPECT_TRUE(output.SendBroadcastUniverses().allSent) << "nothing to send, nothing failed";
        output.CopyToUniverse(1, L"Auto", 1, Bytes{1});
        const auto result = output.SendBroadcastUniverses();
        const bool sends = row.state == S::UsingLocalSocket || row.state == S::UsingRemoteSocket;
        EXPECT_EQ(result.allSent, sends) << row.text;
        EXPECT_EQ(result.anySent, sends) << row.text;
    }
    log.Clear();
    EXPECT_STREQ(OutputStateText(static_cast<S>(7)), "Unknown ArtNetOutput state");
    EXPECT_TRUE(log.Has("Unknown ArtNetOutput state"));
}

} // namespace
