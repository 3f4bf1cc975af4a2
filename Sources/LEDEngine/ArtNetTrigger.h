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
#include "LEDEngine/UDPSocket.h"

class ArtNetOutput;

/// The channel to a host program on this machine, which can own the Art-Net port, feed received DMX
/// and play the mapping by itself. It has no thread and no timer: the frame loop polls it once a
/// tick, on the main thread, and that moves the output's state machine too. A message to the host
/// is sent once a tick for as long as it isn't acknowledged; no other retry exists.
class ArtNetTrigger : public QObject
{
    Q_OBJECT

public:
    /// Nanoseconds of a clock that never jumps.
    using Clock = std::int64_t (*)();

    /// `artNetOutput` outlives the trigger. The socket is made at the first use.
    explicit ArtNetTrigger(ArtNetOutput& artNetOutput);
    ArtNetTrigger(ArtNetOutput& artNetOutput, Clock clock);
    ~ArtNetTrigger() override;

    /// One tick: handles what has come, asks for a host, and ticks the state machine. What is
    /// waiting counts before the tick does; a flood is cut short so that the tick stays one.
    void Poll();

    // Each is one try to tell the host something; false when it could not leave.
    bool SendMessage(std::string_view text, ControlMessage message);
    /// At most 512 bytes are taken.
    bool SendData(std::span<const std::uint8_t> data, ControlMessage message);
    bool SendRebind();
    bool RegisterClient(std::string_view interfaceAddress, std::string_view broadcastAddress,
                        std::string_view receiveAddress, std::uint16_t firstPortAddress,
                        std::uint16_t universeCount, std::string_view name);
    /// Asks for the host's nodes; they come to the output in a later tick.
    bool RequestDevices();
    /// Asks for received DMX from this Port-Address on; it comes to the output in a later tick.
    bool RequestDMXInput(std::uint16_t firstPortAddress);
    /// Hands one universe to the host, in two messages when it has more than 480 channels.
    bool SendDmx(std::uint16_t portAddress, std::string_view address,
                 std::span<const std::uint8_t> channels);

    [[nodiscard]] bool IsServerKnown() const { return serverKnown; }
    [[nodiscard]] bool IsReloadPending() const { return reloadPending; }

    /// Who sends the DMX: 0 is this program, anything else the host.
    std::int32_t hostSendsDMX = 0;

public slots:
    /// The mapping file was saved: the host is told until it says that it has read it.
    void reloadMappingFile() { reloadPending = true; }
    void disableReelCommandOrLoomTapDMX(int sender) { hostSendsDMX = sender; }

signals:
    /// `usedUniverses` are the Port-Addresses that the host takes for itself.
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
    std::vector<Page> inputBuffer; ///< where the pieces of received DMX collect
    std::uint32_t inputPieces = 0; ///< pieces received for the present request
    std::int64_t serverTimer = 0;  ///< when the host answered last
    bool serverKnown = false;
    ArtNetOutput& output;
    Clock clock_;
    bool deaf_ = false;   ///< the socket was made anew after a send error and is not bound
    bool failed_ = false; ///< in this tick; what fails once need not hold the tick up again
};
