// SPDX-License-Identifier: MIT
#include "LEDEngine/ArtNetTrigger.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "LEDEngine/ArtNetOutput.h"
#include "Log/Log.h"
#include "Platform/Clock.h"
#include "Platform/Text.h"

namespace {

constexpr std::uint32_t Loopback = 0x7F000001;
constexpr std::size_t ReceiveBufferSize = 1584;
constexpr std::int64_t NanosecondsPerMillisecond = 1'000'000;
constexpr std::int64_t LongestSilence = 5000; // milliseconds
/// A whole answer of 64 universes is read in a tenth of this. The rest of a flood waits for the
/// next tick, or is lost.
constexpr std::int64_t LongestDrain = 3 * NanosecondsPerMillisecond;
constexpr int SendTries = 4;
constexpr auto PauseBetweenTries = std::chrono::milliseconds(3);

constexpr std::size_t UsedUniversesCount = 247;
constexpr std::uint16_t FirstEmptyUniverse = 32768;
constexpr std::size_t NodePorts = 128;
constexpr std::size_t PieceSize = 256;
constexpr std::size_t MaxPieces = 128;
constexpr std::size_t UniverseBlock = 480;

/// The offset of each field in the data.
namespace At {
namespace Settings {
constexpr std::size_t enabled = 0, address = 1, universes = 17;
}
namespace Node {
constexpr std::size_t count = 0, request = 4, version = 8, name = 12, address = 76, ports = 92;
}
namespace Piece {
constexpr std::size_t count = 0, index = 2, request = 4, channels = 8;
}
namespace Universe {
constexpr std::size_t channels = 0, portAddress = 480, pair = 482, address = 484;
}
namespace Register {
constexpr std::size_t first = 0, count = 2, interface = 4, broadcast = 20, receive = 36, name = 52;
}
} // namespace At

constexpr std::size_t AddressField = 16;
constexpr std::size_t NameField = 64;
constexpr std::size_t DestinationField = 28;

ControlPacket NodePacket(const ArtNetNodeInfo& node, std::uint32_t total, std::uint32_t request,
                         std::uint32_t version)
{
    ControlPacket packet(ControlMessage::Node);
    packet.Put32(At::Node::count, total);
    packet.Put32(At::Node::request, request);
    packet.Put32(At::Node::version, version);
    packet.PutText(At::Node::name, NameField, node.Name());
    packet.PutText(At::Node::address, AddressField, node.Ip());
    for (std::size_t i = 0; i < std::min(node.universes.size(), NodePorts); ++i)
        packet.Put16(At::Node::ports + 2 * i, static_cast<std::uint16_t>(node.universes[i] + 1));
    return packet;
}

} // namespace

ArtNetTrigger::ArtNetTrigger(ArtNetOutput& artNetOutput)
    : ArtNetTrigger(artNetOutput, &Platform::MonotonicNanoseconds)
{}

ArtNetTrigger::ArtNetTrigger(ArtNetOutput& artNetOutput, Clock clock)
    : output(artNetOutput)
    , clock_(clock)
{
    usedUniverses.reserve(256);
}

ArtNetTrigger::~ArtNetTrigger() = default;

UDPSocket* ArtNetTrigger::TakeSocket()
{
    if (failed_)
        return nullptr;
    if (socket)
        return socket.get();
    auto fresh = std::make_unique<UDPSocket>();
    failed_ = !fresh->Initialize(Loopback) || !fresh->Bind();
    if (failed_)
        return nullptr;
    socket = std::move(fresh);
    return socket.get();
}

// ---- One tick -----------------------------------------------------------------------------------

void ArtNetTrigger::Poll()
{
    failed_ = false;
    HandleWaitingMessages();
    SendMessage("poll", ControlMessage::Poll);
    output.HandleEvent(OutputEvent::Tick);
    if (!serverKnown)
        return;
    RepeatRequests();
    if (IsServerSilent())
        LoseServer();
}

void ArtNetTrigger::HandleWaitingMessages()
{
    if (deaf_) {
        socket.reset();
        deaf_ = false;
    }
    if (!TakeSocket())
        return;
    std::array<std::byte, ReceiveBufferSize> buffer{};
    const std::int64_t end = Platform::MonotonicNanoseconds() + LongestDrain;
    std::size_t length = 0;
    Platform::Endpoint sender;
    // A handler may run into a send error, which can replace or destroy the socket.
    while (socket && socket->Receive(buffer, length, sender)) {
        const ReceivedControlPacket packet(
            {reinterpret_cast<const std::uint8_t*>(buffer.data()), length});
        if (packet.IsControlPacket())
            HandleMessage(packet);
        if (Platform::MonotonicNanoseconds() > end)
            return;
    }
}

void ArtNetTrigger::RepeatRequests()
{
    if (hostSendsDMX != 0)
        SendMessage("start", ControlMessage::Start);
    else
        SendMessage("stop", ControlMessage::Stop);
    if (reloadPending)
        SendMessage("reload", ControlMessage::Reload);
}

bool ArtNetTrigger::IsServerSilent() const
{
    return (clock_() - serverTimer) / NanosecondsPerMillisecond > LongestSilence;
}

void ArtNetTrigger::LoseServer()
{
    output.outputSuspended = false;
    serverKnown = false;
    output.HandleEvent(OutputEvent::ServerStopped);
    socket.reset();
}

// ---- Received messages
// ---------------------------------------------------------------------------

void ArtNetTrigger::HandleMessage(const ReceivedControlPacket& packet)
{
    switch (packet.Message()) {
    case ControlMessage::Poll:
        SendMessage("Pixel Weft", ControlMessage::PollAnswer);
        break;
    case ControlMessage::PollAnswer:
        HandlePollAnswer();
        break;
    case ControlMessage::StopDone:
        output.outputSuspended = false;
        break;
    case ControlMessage::StartDone:
        // A late message of a host that is gone must not stop the output: nothing would start it
        // again.
        output.outputSuspended = output.outputSuspended || serverKnown;
        break;
    case ControlMessage::ReloadDone:
        reloadPending = false;
        break;
    case ControlMessage::InputSettings:
        HandleInputSettings(packet);
        break;
    case ControlMessage::NodesWanted:
        HandleNodesWanted(packet);
        break;
    case ControlMessage::Node:
        HandleNode(packet);
        break;
    case ControlMessage::InputPiece:
        HandleInputPiece(packet);
        break;
    case ControlMessage::RebindDone:
        output.HandleEvent(OutputEvent::SocketRebound);
        break;
    case ControlMessage::RegisterDone:
        output.HandleEvent(OutputEvent::ClientRegistered);
        break;
    default:
        break;
    }
}

void ArtNetTrigger::HandlePollAnswer()
{
    SendMessage("universes", ControlMessage::Universes);
    serverKnown = true;
    serverTimer = clock_();
    output.HandleEvent(OutputEvent::ServerDetected);
}

void ArtNetTrigger::HandleInputSettings(const ReceivedControlPacket& packet)
{
    dmxInputEnabled = packet.Byte(At::Settings::enabled) != 0;
    dmxInputAddress = Platform::Utf8ToWide(packet.Text(At::Settings::address, AddressField));
    usedUniverses.clear();
    for (std::size_t i = 0; i < UsedUniversesCount; ++i) {
        const std::uint16_t universe = packet.Get16(At::Settings::universes + 2 * i);
        if (universe < FirstEmptyUniverse)
            usedUniverses.push_back(universe);
    }
    emit artNetDMXInputSettingsReceived(dmxInputEnabled, dmxInputAddress, usedUniverses);
}

void ArtNetTrigger::HandleNodesWanted(const ReceivedControlPacket& packet)
{
    const std::uint32_t request = packet.Get32(0);
    const ArtNetNodeList nodes = output.GetNodes();
    const auto total = static_cast<std::uint32_t>(nodes.size());
    for (const ArtNetNodeInfo& node : nodes)
        SendPacket(NodePacket(node, total, request, output.GetNodesVersion()));
    if (nodes.empty())
        SendPacket(NodePacket({}, 0, request, 0));
    output.HandleEvent(OutputEvent::DevicesSent);
}

void ArtNetTrigger::HandleNode(const ReceivedControlPacket& packet)
{
    if (packet.Get32(At::Node::request) != devicesRequestNumber)
        return;
    ArtNetNodeInfo node;
    node.SetName(packet.Text(At::Node::name, NameField));
    node.SetIp(packet.Text(At::Node::address, AddressField));
    for (std::size_t i = 0; i < NodePorts; ++i) {
        const std::uint16_t port = packet.Get16(At::Node::ports + 2 * i);
        if (port != 0)
            node.universes.push_back(static_cast<std::uint16_t>(port - 1));
    }
    output.AddRemoteNode(node, packet.Get32(At::Node::count), packet.Get32(At::Node::version));
}

void ArtNetTrigger::HandleInputPiece(const ReceivedControlPacket& packet)
{
    if (packet.Get32(At::Piece::request) != inputRequestNumber)
        return;
    const std::size_t pieces = packet.Get16(At::Piece::count);
    if (pieces > MaxPieces)
        return;
    inputBuffer.resize((pieces + 1) / 2);
    const std::size_t index = packet.Get16(At::Piece::index);
    if (index < pieces) {
        Page& page = inputBuffer[index / 2];
        for (std::size_t i = 0; i < PieceSize; ++i)
            page[index % 2 * PieceSize + i] = packet.Byte(At::Piece::channels + i);
    }
    if (++inputPieces == pieces)
        output.TakeInputUniverses(inputBuffer);
}

// ---- Messages to the host
// ------------------------------------------------------------------------

bool ArtNetTrigger::SendMessage(std::string_view text, ControlMessage message)
{
    ControlPacket packet(message);
    packet.PutText(0, ControlPacket::DataSize, text);
    return SendPacket(packet);
}

bool ArtNetTrigger::SendData(std::span<const std::uint8_t> data, ControlMessage message)
{
    ControlPacket packet(message);
    packet.PutBytes(0, data);
    return SendPacket(packet);
}

bool ArtNetTrigger::SendRebind()
{
    return SendMessage("rebindDMXSocket", ControlMessage::Rebind);
}

bool ArtNetTrigger::RegisterClient(std::string_view interfaceAddress,
                                   std::string_view broadcastAddress,
                                   std::string_view receiveAddress, std::uint16_t firstPortAddress,
                                   std::uint16_t universeCount, std::string_view name)
{
    ControlPacket packet(ControlMessage::Register);
    packet.Put16(At::Register::first, firstPortAddress);
    packet.Put16(At::Register::count, universeCount);
    packet.PutText(At::Register::interface, AddressField, interfaceAddress);
    packet.PutText(At::Register::broadcast, AddressField, broadcastAddress);
    packet.PutText(At::Register::receive, AddressField, receiveAddress);
    packet.PutText(At::Register::name, NameField, name);
    return SendPacket(packet);
}

bool ArtNetTrigger::RequestDevices()
{
    output.ClearRemoteNodes();
    ControlPacket packet(ControlMessage::NodesWanted);
    packet.Put32(0, ++devicesRequestNumber);
    packet.PutText(4, NameField, output.GetInterfaceAddress());
    return SendPacket(packet);
}

bool ArtNetTrigger::RequestDMXInput(std::uint16_t firstPortAddress)
{
    inputPieces = 0;
    ControlPacket packet(ControlMessage::InputWanted);
    packet.Put16(0, firstPortAddress);
    packet.Put32(2, ++inputRequestNumber);
    return SendPacket(packet);
}

bool ArtNetTrigger::SendDmx(std::uint16_t portAddress, std::string_view address,
                            std::span<const std::uint8_t> channels)
{
    const bool single = channels.size() <= UniverseBlock;
    ControlPacket packet(single ? ControlMessage::Universe : ControlMessage::UniverseBegin);
    packet.PutBytes(At::Universe::channels,
                    channels.first(std::min(channels.size(), UniverseBlock)));
    packet.Put16(At::Universe::portAddress, portAddress);
    packet.PutText(At::Universe::address, DestinationField - 1, address);
    if (single)
        return SendPacket(packet);
    packet.Put16(At::Universe::pair, dmxPairNumber++);
    const bool begun = SendPacket(packet);
    // The second part overwrites the block from its start; the rest of the block stays.
    packet.SetMessage(ControlMessage::UniverseEnd);
    packet.PutBytes(At::Universe::channels, channels.subspan(UniverseBlock));
    return SendPacket(packet) && begun;
}

bool ArtNetTrigger::SendPacket(const ControlPacket& packet)
{
    UDPSocket* channel = TakeSocket();
    if (!channel)
        return false;
    for (int tries = 1; !channel->Send(packet.Bytes()); ++tries) {
        if (tries == SendTries) {
            failed_ = true;
            return false;
        }
        const std::error_code error = channel->GetLastError();
        ZEN_LOG_ERROR("Error ocurred while sending UDP packet: %d.", error.value());
        if (!Platform::IsRecoverable(error)) {
            deaf_ = true;
            failed_ = !channel->Reinitialize();
            if (failed_)
                return false;
        }
        std::this_thread::sleep_for(PauseBetweenTries);
    }
    return true;
}
