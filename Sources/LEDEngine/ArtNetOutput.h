// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <QObject>

#include "ArtNet/ArtNetClient.h"
#include "FixtureModel/UniverseMerging.h"
#include "LEDEngine/ArtNetUniverses.h"
#include "LEDEngine/OutputState.h"

class ArtNetTrigger;

/// Decides how universes leave, and sends them: through clients of the Art-Net service while the
/// port is ours, or as messages to a host program that owns it. With a network chosen it gives a
/// host 12 ticks to answer before it takes the port; it gives the port up when a host turns up, and
/// takes it back when the host dies. Events are handled on the main thread, one after the other.
class ArtNetOutput : public QObject
{
    Q_OBJECT

public:
    ArtNetOutput();
    ~ArtNetOutput() override;

    /// A new choice of network or of the merger's settings. Addresses are dotted text; a broadcast
    /// address that is none means that no network is chosen. `receive` is the interface on which
    /// merged DMX comes in, empty for all of them. Always true.
    bool Initialize(const std::wstring& interface, const std::wstring& broadcast,
                    const std::wstring& receive, const UniverseMerging& mergingSettings);

    void HandleEvent(OutputEvent event);

    [[nodiscard]] OutputState GetState() const { return state; }
    /// The broadcast address as a number, 0 while no network is chosen.
    [[nodiscard]] std::uint32_t GetBroadcastValue() const { return broadcastValue; }
    [[nodiscard]] const std::string& GetInterfaceAddress() const { return interfaceAddress; }
    [[nodiscard]] const ArtNetNodeList& GetNodes() const { return nodes; }
    /// The generation of the node list.
    [[nodiscard]] std::uint32_t GetNodesVersion() const { return nodesVersion; }

    /// Fetches the known nodes from the service, or asks the host for them; a new list makes the
    /// next frame count anew who takes which universe.
    void RefreshNodes();

    // ---- What comes from a host -----------------------------------------------------------------

    /// A new answer begins.
    void ClearRemoteNodes() { remoteNodes.clear(); }
    /// One node of the host's list of `total`; one without name or address doesn't count. The whole
    /// list takes the place of the known nodes.
    void AddRemoteNode(const ArtNetNodeInfo& node, std::uint32_t total, std::uint32_t version);
    using InputPages = std::vector<std::array<std::uint8_t, DMXUniverse::ChannelCount>>;
    /// All received universes of the merge range, from its first one on.
    void TakeInputUniverses(const InputPages& pages) { inputUniverses = pages; }

    /// Announces received DMX by dataInOn() when some has come in since the last call.
    void CheckInput();

    // ---- One frame, in this order ---------------------------------------------------------------

    void ClearUniverses() { universes.Clear(); }
    [[nodiscard]] DMXUniverse& GetUniverse(std::uint16_t portAddress, const std::wstring& address)
    {
        return universes.Get(portAddress, address);
    }
    /// A plain copy: as CopyChannels, into the universe that GetUniverse gives.
    void CopyToUniverse(std::uint16_t portAddress, const std::wstring& address, std::int32_t first,
                        std::span<const std::uint8_t> values)
    {
        CopyChannels(GetUniverse(portAddress, address), first, values);
    }
    /// With merging on: the received universes, whole, as the ground of the output's run.
    void MergeInputUniverses();

    /// What became of a sending step.
    struct SendResult
    {
        bool allSent = true;
        bool anySent = false;

        void Add(bool sent)
        {
            allSent = allSent && sent;
            anySent = anySent || allSent;
        }
    };
    SendResult SendUnicastUniverses();
    SendResult SendBroadcastUniverses();
    /// Each universe to the nodes that announced it, and by broadcast from 41 of them on.
    SendResult SendAutoUnicastUniverses();

    [[nodiscard]] const ArtNetUniverses& GetUniverses() const { return universes; }

    /// Set while a host sends the DMX by itself: frames are built and not sent.
    bool outputSuspended = false;
    /// The channel to the host, set by who owns both; may be null.
    ArtNetTrigger* trigger = nullptr;

signals:
    void dataInOn();
    void dataOutOn();

private:
    using Subscribers = boost::container::flat_map<std::uint16_t, std::int32_t>;

    using Handler = void (ArtNetOutput::*)();
    using HandlerTable = std::array<std::array<Handler, OutputEventCount>, OutputStateCount>;
    static const HandlerTable handlers;

    void ChangeState(OutputState next);
    void Enter();
    void Exit();
    void CreateLocalClients();
    void RegisterWithHost();

    // The cells of the table of states and events.
    template <OutputState Next>
    void GoTo()
    {
        ChangeState(Next);
    }
    void BeginWhenChosen();
    void RebuildClientsOrDisable();
    void StayOrDisable();
    void RegisterAnewOrDisable();
    void WaitForServer();
    void WaitForRebind();
    void WaitForRegistration();
    void Rebound();
    void Registered();
    void DevicesSent();
    [[nodiscard]] bool CountTick();

    void NoteNodesVersion(std::uint32_t version);
    void ReadInputUniverses();
    bool SendUniverse(std::string_view address, const DMXUniverse& universe);
    void CountSubscriber(std::uint16_t portAddress, std::string_view ip);
    /// False when the table of subscribers is out of date: the rest of the frame waits for a count.
    bool SendToSubscriber(const DMXUniverse& universe, std::string_view ip, SendResult& result);

    OutputState state = OutputState::Disabled;
    std::uint32_t retryCounter = 0; ///< ticks since the present wait began

    std::string interfaceAddress;
    std::string broadcastAddress;
    std::uint32_t broadcastValue = 0;
    std::string receiveAddress;
    UniverseMerging merging;

    std::unique_ptr<ArtNetClient> outputClient;
    std::unique_ptr<ArtNetClient> inputClient;
    std::int64_t lastSendErrorTime = 0;
    std::int64_t lastReceiveTime = 0;

    ArtNetUniverses universes;
    Subscribers subscribers; ///< how many known nodes take each Port-Address
    bool subscribersDirty = true;
    std::uint32_t nodesVersion = 0;
    ArtNetNodeList nodes;
    ArtNetNodeList remoteNodes; ///< the host's list as far as it has come
    InputPages inputUniverses;
};
