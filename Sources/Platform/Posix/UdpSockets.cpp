// SPDX-License-Identifier: MIT
#include "Platform/UdpSockets.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace Platform {

namespace {

/// More than the receive buffers that we ask for can hold.
constexpr int MostEmptyDatagrams = 1024;

bool SetOption(int socket, int option, int value)
{
    return setsockopt(socket, SOL_SOCKET, option, &value, sizeof value) == 0;
}

sockaddr_in RecordOf(const Endpoint& endpoint)
{
    sockaddr_in record{};
    record.sin_family = AF_INET;
    record.sin_addr.s_addr = htonl(endpoint.address);
    record.sin_port = htons(endpoint.port);
    return record;
}

} // namespace

int OpenUdp() noexcept
{
    const int handle = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (handle != 0)
        return std::max(handle, 0);
    // A process whose standard input is closed is given 0, which means "no socket" to our callers.
    const int above = fcntl(handle, F_DUPFD_CLOEXEC, 3);
    close(handle);
    return std::max(above, 0);
}

bool CloseUdp(int socket) noexcept
{
    return close(socket) == 0;
}

bool SetUdpNonBlocking(int socket) noexcept
{
    const int flags = fcntl(socket, F_GETFL);
    return flags >= 0 && fcntl(socket, F_SETFL, flags | O_NONBLOCK) == 0;
}

bool SetUdpBroadcast(int socket) noexcept
{
    return SetOption(socket, SO_BROADCAST, 1);
}

bool SetUdpReuseAddress(int socket) noexcept
{
    return SetOption(socket, SO_REUSEADDR, 1);
}

bool SetUdpSendBuffer(int socket, int bytes) noexcept
{
    return SetOption(socket, SO_SNDBUF, bytes);
}

bool SetUdpReceiveBuffer(int socket, int bytes) noexcept
{
    return SetOption(socket, SO_RCVBUF, bytes);
}

bool BindUdp(int socket, const Endpoint& endpoint) noexcept
{
    const sockaddr_in record = RecordOf(endpoint);
    return bind(socket, reinterpret_cast<const sockaddr*>(&record), sizeof record) == 0;
}

std::error_code SendUdp(int socket, const Endpoint& to, std::span<const std::byte> bytes) noexcept
{
    const sockaddr_in record = RecordOf(to);
    ssize_t sent = -1;
    do {
        sent = sendto(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL,
                      reinterpret_cast<const sockaddr*>(&record), sizeof record);
    } while (sent < 0 && errno == EINTR);
    return sent < 0 ? std::error_code(errno, std::system_category()) : std::error_code();
}

std::ptrdiff_t ReceiveUdp(int socket, std::span<std::byte> buffer, Endpoint& from) noexcept
{
    sockaddr_in record{};
    socklen_t size = sizeof record;
    ssize_t received = -1;
    // Empty datagrams carry nothing and must not hide those that wait behind them.
    for (int skipped = 0; skipped < MostEmptyDatagrams; ++skipped) {
        received = recvfrom(socket, buffer.data(), buffer.size(), 0,
                            reinterpret_cast<sockaddr*>(&record), &size);
        if (received > 0 || (received < 0 && errno != EINTR))
            break;
    }
    from = {ntohl(record.sin_addr.s_addr), ntohs(record.sin_port)};
    return received;
}

bool IsRecoverable(const std::error_code& error) noexcept
{
    return error.value() == EAGAIN || error.value() == EWOULDBLOCK ||
           error.value() == EINPROGRESS || error.value() == EALREADY;
}

} // namespace Platform
