// SPDX-License-Identifier: MIT
#include "LEDEngine/UDPSocket.h"

#include "Log/Log.h"

namespace {

/// The port that Initialize notes; each send replaces it with the port of the host.
constexpr std::uint16_t ArtNetPort = 6454;

/// In bytes. A frame of a large document is sent in one burst of two messages a universe.
constexpr int BufferSize = 100000;

} // namespace

UDPSocket::~UDPSocket()
{
    if (HasSocket() && !Platform::CloseUdp(socket))
        ZEN_LOG_ERROR("Failed to close socket.");
}

bool UDPSocket::Initialize(std::uint32_t address)
{
    remoteAddress = {address, ArtNetPort};
    localAddress = remoteAddress;
    socket = Platform::OpenUdp();
    if (!HasSocket()) {
        ZEN_LOG_ERROR("Creating native socket failed.");
        return false;
    }
    if (!Configure()) {
        ZEN_LOG_ERROR("Unable to initialize socket.");
        return false;
    }
    open = true;
    return true;
}

bool UDPSocket::Reinitialize()
{
    if (HasSocket() && !Platform::CloseUdp(socket)) {
        ZEN_LOG_ERROR("Closing old socket.");
        return false;
    }
    socket = Platform::OpenUdp();
    if (!HasSocket()) {
        ZEN_LOG_ERROR("Failed creating new native socket.");
        return false;
    }
    if (!Configure()) {
        ZEN_LOG_ERROR("Unable to initialize new socket.");
        return false;
    }
    return true;
}

bool UDPSocket::Configure()
{
    if (!SetNonBlocking())
        ZEN_LOG_INFO("Unable to set socket in non-blocking mode. This may cause performance "
                     "problems.");
    if (!SetBroadcast()) {
        ZEN_LOG_ERROR("Unable to enable socket broadcast mode.");
        return false;
    }
    if (!SetReuseAddress())
        ZEN_LOG_ERROR("Unable to make socket reuse address. This might make receiving not "
                      "possible.");
    if (!SetSendBufferSize())
        ZEN_LOG_ERROR("Unable to set socket send buffer size. This may cause performance "
                      "problems.");
    if (!SetReceiveBufferSize())
        ZEN_LOG_ERROR("Unable to set socket receive buffer size. This may cause performance "
                      "problems.");
    return true;
}

bool UDPSocket::Bind()
{
    // A host runs on this machine. On all interfaces any packet of the network would be a message.
    constexpr std::uint32_t loopback = 0x7F000001;
    if (HasSocket() && Platform::BindUdp(socket, {loopback, LocalPort}))
        return true;
    ZEN_LOG_ERROR("Failed to bind socket. Receiving will not be possible");
    return false;
}

bool UDPSocket::Send(std::span<const std::byte> bytes)
{
    if (!HasSocket())
        return false;
    remoteAddress.port = RemotePort;
    lastError_ = Platform::SendUdp(socket, remoteAddress, bytes);
    return !lastError_;
}

bool UDPSocket::Receive(std::span<std::byte> buffer, std::size_t& length,
                        Platform::Endpoint& sender)
{
    if (!HasSocket())
        return false;
    const std::ptrdiff_t received = Platform::ReceiveUdp(socket, buffer, sender);
    length = received > 0 ? static_cast<std::size_t>(received) : 0;
    return received > 0;
}

void UDPSocket::SetRemoteAddress(const Platform::Endpoint& endpoint)
{
    remoteAddress.address = endpoint.address;
}

bool UDPSocket::SetNonBlocking()
{
    return Platform::SetUdpNonBlocking(socket);
}

bool UDPSocket::SetBroadcast()
{
    return Platform::SetUdpBroadcast(socket);
}

bool UDPSocket::SetReuseAddress()
{
    return Platform::SetUdpReuseAddress(socket);
}

bool UDPSocket::SetSendBufferSize()
{
    return Platform::SetUdpSendBuffer(socket, BufferSize);
}

bool UDPSocket::SetReceiveBufferSize()
{
    return Platform::SetUdpReceiveBuffer(socket, BufferSize);
}
