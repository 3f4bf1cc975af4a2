// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <QObject>

#include "LEDEngine/ControlPacket.h"
#include "LEDEngine/HostLink.h"
#include "LEDEngine/UDPSocket.h"

class ArtNetOutput;

/// The control channel to a host program on this machine, which can own the Art-Net port, pass on
/// received DMX and play the document by itself. The trigger has no thread and no timer: the frame
/// loop polls it once a tick, on the main thread, and the output's state machine with it. A message
/// to the host is sent once a tick until the host acknowledges it; there is no other retry.
class ArtNetTrigger : public QObject, public HostLink
{
    Q_OBJECT

public:
    /// Nanoseconds of a clock that never jumps.
    using Clock = std::int64_t (*)();

    /// `artNetOutput` is used from the first call on, and not on destruction. The socket is made
    /// at the first use.
    explicit ArtNetTrigger(ArtNetOutput& artNetOutput);
    ArtNetTrigger(ArtNetOutput& artNetOutput, Clock clock);
    ~ArtNetTrigger() override;

    /// One tick: handles the received messages, asks for a host, and passes the tick to the state
    /// machine. Messages that wait are handled before the tick counts, but only for 3 ms, so that
    /// a flood doesn't hold up the program.
    void Poll();

    // Each is one attempt to send; false when the message could not be sent.
    bool SendMessage(std::string_view text, ControlMessage message);
    /// At most 512 bytes are taken.
    bool SendData(std::span<const std::uint8_t> data, ControlMessage message);
    bool SendRebind() override;
    bool RegisterClient(std::string_view interfaceAddress, std::string_view broadcastAddress,
                        std::string_view receiveAddress, std::uint16_t firstPortAddress,
                        std::uint16_t universeCount, std::string_view name) override;
    bool RequestDevices() override;
    bool RequestDMXInput(std::uint16_t firstPortAddress) override;
    /// In two messages when there are more than 480 channels.
    bool SendDmx(std::uint16_t portAddress, std::string_view address,
                 std::span<const std::uint8_t> channels) override;

    /// Which program sends the DMX: 0 is this one, anything else the host.
    std::int32_t hostSendsDMX = 0;

public slots:
    /// The document's file was saved: the host is asked to read it, until it acknowledges.
    void reloadMappingFile() { reloadPending = true; }
    void disableReelCommandOrLoomTapDMX(int sender) { hostSendsDMX = sender; }

signals:
    /// `usedUniverses` are the Port-Addresses that the host uses for itself.
    void artNetDMXInputSettingsReceived(bool enabled, const std::wstring& IP,
                                        std::vector<int>& usedUniverses);

private:
    UDPSocket* TakeSocket();
    void HandleWaitingMessages();
    void HandleMessage(const ReceivedControlPacket& packet);
    void HandlePollAnswer();
    void HandleInputSettings(const ReceivedControlPacket& packet);
    void HandleNodesWanted(const ReceivedControlPacket& packet);
    void HandleNode(const ReceivedControlPacket& packet);
    void HandleInputPiece(const ReceivedControlPacket& packet);
    void RepeatRequests();
    void LoseServer();
    [[nodiscard]] bool IsServerSilent() const;
    bool SendPacket(const ControlPacket& packet);

    using Page = std::array<std::uint8_t, 512>;

    bool dmxInputEnabled = false;
    std::wstring dmxInputAddress;
    std::vector<int> usedUniverses;
    std::uint16_t dmxPairNumber = 0;
    std::uint16_t inputRequestNumber = 0;
    std::uint16_t devicesRequestNumber = 0;
    bool reloadPending = false;
    std::unique_ptr<UDPSocket> socket;
    std::vector<Page> inputBuffer; ///< where the pieces of received DMX are put together
    std::uint32_t inputPieces = 0; ///< pieces received for the present request
    std::int64_t serverTimer = 0;  ///< when the host answered last
    bool serverKnown = false;
    ArtNetOutput& output;
    Clock clock_;
    bool deaf_ = false;   ///< the socket was replaced after a send error and is not bound
    bool failed_ = false; ///< in this tick: further sends are not tried, so that it stays short
};
