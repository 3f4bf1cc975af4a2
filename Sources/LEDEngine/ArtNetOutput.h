// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <QObject>

#include "ArtNet/ArtNetClient.h"
#include "FixtureModel/UniverseMerging.h"
#include "LEDEngine/ArtNetUniverses.h"
#include "LEDEngine/HostLink.h"
#include "LEDEngine/OutputState.h"

/// Sends universes: through clients of the Art-Net service while the port is ours, or as messages
/// to a host program that owns the port. With a network chosen the output waits 12 ticks for an
/// answer of a host before it takes the port; it gives the port up when a host appears, and takes
/// it back when the host is gone. Which state follows an event is decided in OutputState.h.
/// Everything runs on the main thread, one event after the other.
class ArtNetOutput : public QObject
{
    Q_OBJECT

public:
    /// `hostLink` outlives the output, and is not used before the first event nor on destruction.
    explicit ArtNetOutput(HostLink& hostLink);
    ~ArtNetOutput() override;

    /// Applies a choice of network and of the merging settings. Addresses are dotted text; a
    /// broadcast address that is not an address means that no network is chosen. `receive` is the
    /// address of the adapter on which DMX for merging is received, empty for all adapters. Always
    /// true.
    bool Initialize(const std::wstring& interface, const std::wstring& broadcast,
                    const std::wstring& receive, const UniverseMerging& mergingSettings);

    void HandleEvent(OutputEvent event);

    [[nodiscard]] OutputState GetState() const { return state; }
    /// The broadcast address as a number, 0 while no network is chosen.
    [[nodiscard]] std::uint32_t GetBroadcastValue() const { return broadcastValue; }
    [[nodiscard]] const std::string& GetInterfaceAddress() const { return interfaceAddress; }
    [[nodiscard]] const ArtNetNodeList& GetNodes() const { return nodes; }
    /// Nodes of another network can be known: those from before a change of network, or a host's.
    [[nodiscard]] bool KnowsNodeInNetwork() const;
    /// The generation of the node list.
    [[nodiscard]] std::uint32_t GetNodesVersion() const { return nodesVersion; }

    /// Fetches the known nodes from the service, or asks the host for them. After a changed list
    /// the next frame counts the subscribers of each universe again.
    void RefreshNodes();

    // ---- What comes from a host -----------------------------------------------------------------

    /// Forgets the nodes of an answer that is not complete.
    void ClearRemoteNodes() { remoteNodes.clear(); }
    /// One node of the host's list of `total` nodes; a node without name or address is ignored. The
    /// complete list replaces the known nodes.
    void AddRemoteNode(const ArtNetNodeInfo& node, std::uint32_t total, std::uint32_t version);
    using InputPages = std::vector<std::array<std::uint8_t, DMXUniverse::ChannelCount>>;
    /// All received universes of the merge range, from the first one on.
    void TakeInputUniverses(const InputPages& pages) { inputUniverses = pages; }

    /// Emits dataInOn() when DMX that we take was received since the last call, and
    /// sourceConflictsChanged() within half a second.
    void CheckInput();

    /// What passed while the port is ours; nothing in other states.
    [[nodiscard]] ArtNetTraffic GetInputTraffic() const;
    [[nodiscard]] ArtNetTraffic GetOutputTraffic() const;
    [[nodiscard]] const UniverseMerging& GetMerging() const { return merging; }

    /// The universes that someone sends to the merger now, in order: none while the port is not
    /// ours, since a host doesn't tell.
    [[nodiscard]] std::vector<ArtNetReceived> GetReceived() const;
    /// Who else sends universes on our network, in order: none while the port is not ours. What is
    /// received to be merged is not among them.
    [[nodiscard]] std::vector<ArtNetOtherSender> GetOtherSenders() const;
    /// The received universes of the merge range as the last frame had them, from the first one on.
    [[nodiscard]] const InputPages& GetInputPages() const { return inputUniverses; }

    /// When the last frame was handed over, in nanoseconds of the monotonic clock; 0 while there
    /// was none.
    [[nodiscard]] std::int64_t GetLastFrameTime() const { return lastFrameTime_; }
    /// How many frames were handed over, of which at least one universe was sent.
    [[nodiscard]] std::uint64_t GetFramesSent() const { return framesSent_; }

    // ---- One frame, in this order. A universe that nothing was written to is not sent. ----------

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
    /// With merging on: writes the received universes, at full size, to the universes of the merge
    /// output. Elements are laid on top of them.
    void MergeInputUniverses();

    /// Around the sending of a frame's universes. With `sync` the nodes are told to put them out
    /// together.
    void BeginSending();
    void EndSending(bool sync);

    /// The outcome of sending several universes.
    struct SendResult
    {
        bool allSent = true;
        bool anySent = false; ///< at least the first one was sent

        void Add(bool sent)
        {
            allSent = allSent && sent;
            anySent = anySent || allSent;
        }
    };
    SendResult SendUnicastUniverses();
    SendResult SendBroadcastUniverses();
    /// Each universe to the nodes that announced it, and once by broadcast when 41 or more did.
    SendResult SendAutoUnicastUniverses();
    /// With so many subscribers a universe is broadcast, since many unicasts load the network more.
    static constexpr std::int32_t SubscribersForBroadcast = 41;
    /// Of a frame of which at least one universe was sent.
    void NoteFrameSent();

    [[nodiscard]] const ArtNetUniverses& GetUniverses() const { return universes; }

    /// Set while a host sends the DMX by itself: frames are built and not sent.
    bool outputSuspended = false;

signals:
    void dataInOn();
    void dataOutOn();
    /// The received universes to which two consoles send at the moment are now these, in order.
    void sourceConflictsChanged(const std::vector<ArtNetSourceConflict>& conflicts);

private:
    /// The nodes that take a universe.
    struct Subscribers
    {
        std::int32_t count = 0;
        std::uint64_t turn = 0; ///< of the last of them
        /// False for a further port of the same node. Each node has a turn of its own.
        bool IsFirstPort(std::uint64_t present) { return std::exchange(turn, present) != present; }
    };

    void ChangeState(OutputState next);
    void Perform(const OutputStep& step);
    void Perform(OutputAction action);
    void CreateLocalClients();
    void DestroyLocalClients();
    void RegisterWithHost();

    void NoteNodesVersion(std::uint32_t version);
    void CheckSources();
    void ReadInputUniverses();
    bool SendUniverse(std::string_view address, const DMXUniverse& universe);
    /// Nodes reject ArtDmx of no channels, so an empty universe neither is sent nor fails.
    void SendWritten(std::string_view address, const DMXUniverse& universe, SendResult& result);
    void CountSubscribers();

    HostLink& trigger; ///< the channel to the host
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
    std::uint64_t lastTaken_ = 0; ///< how many packets inputClient had taken at the last look
    std::vector<ArtNetSourceConflict> sourceConflicts_;
    std::int64_t sourcesChecked_ = 0; ///< when, in nanoseconds of the monotonic clock

    std::int64_t lastFrameTime_ = 0;
    std::uint64_t framesSent_ = 0;

    ArtNetUniverses universes;
    boost::container::flat_map<std::uint16_t, Subscribers> subscribers; ///< by Port-Address
    std::uint64_t turn_ = 0;
    bool subscribersDirty = true;
    std::uint32_t nodesVersion = 0;
    ArtNetNodeList nodes;
    ArtNetNodeList remoteNodes; ///< the host's list as far as it was received
    InputPages inputUniverses;
};
