// SPDX-License-Identifier: MIT
#include "Socket.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace Rig {
namespace {

in_addr ToSystem(const Address& address)
{
    in_addr result{};
    std::memcpy(&result.s_addr, address.data(), address.size());
    return result;
}

Address FromSystem(const in_addr& address)
{
    Address result{};
    std::memcpy(result.data(), &address.s_addr, result.size());
    return result;
}

sockaddr_in Endpoint(const Address& address, std::uint16_t port)
{
    sockaddr_in endpoint{};
    endpoint.sin_family = AF_INET;
    endpoint.sin_port = htons(port);
    endpoint.sin_addr = ToSystem(address);
    return endpoint;
}

} // namespace

std::optional<Address> ParseAddress(const std::string& text)
{
    in_addr parsed{};
    if (inet_pton(AF_INET, text.c_str(), &parsed) != 1)
        return std::nullopt;
    return FromSystem(parsed);
}

std::string ToText(const Address& address)
{
    std::string text;
    for (const std::uint8_t octet : address) {
        if (!text.empty())
            text += '.';
        text += std::to_string(octet);
    }
    return text;
}

Socket::~Socket()
{
    if (handle_ >= 0)
        close(handle_);
}

bool Socket::Open(std::uint16_t port)
{
    handle_ = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const int on = 1;
    const int wanted =
        4 * 1024 * 1024; // a burst of some hundred universes; the system may give less
    const auto set = [&](int level, int name, const int& value) {
        return setsockopt(handle_, level, name, &value, sizeof value) == 0;
    };
    const sockaddr_in any = Endpoint({}, port);
    if (handle_ >= 0 && set(SOL_SOCKET, SO_REUSEADDR, on) && set(SOL_SOCKET, SO_BROADCAST, on) &&
        set(IPPROTO_IP, IP_PKTINFO, on) && set(SOL_SOCKET, SO_RCVBUF, wanted) &&
        bind(handle_, reinterpret_cast<const sockaddr*>(&any), sizeof any) == 0)
        return true;
    std::fprintf(stderr, "rig: cannot open UDP port %u: %s\n", port, std::strerror(errno));
    return false;
}

void Socket::Wait(std::chrono::milliseconds longest) const
{
    pollfd entry{handle_, POLLIN, 0};
    poll(&entry, 1, static_cast<int>(longest.count()));
}

std::optional<Datagram> Socket::Receive()
{
    sockaddr_in source{};
    alignas(cmsghdr) std::array<char, 256> control{};
    iovec place{buffer_.data(), buffer_.size()};
    msghdr message{};
    message.msg_name = &source;
    message.msg_namelen = sizeof source;
    message.msg_iov = &place;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t count = recvmsg(handle_, &message, MSG_DONTWAIT);
    if (count < 0)
        return std::nullopt;

    Datagram datagram;
    datagram.bytes = std::span(buffer_).first(static_cast<std::size_t>(count));
    datagram.source = FromSystem(source.sin_addr);
    datagram.sourcePort = ntohs(source.sin_port);
    for (cmsghdr* part = CMSG_FIRSTHDR(&message); part != nullptr;
         part = CMSG_NXTHDR(&message, part)) {
        if (part->cmsg_level == IPPROTO_IP && part->cmsg_type == IP_PKTINFO) {
            in_pktinfo info{};
            std::memcpy(&info, CMSG_DATA(part), sizeof info);
            datagram.destination = FromSystem(info.ipi_addr);
            datagram.broadcast = info.ipi_addr.s_addr != info.ipi_spec_dst.s_addr;
        }
    }
    return datagram;
}

bool Socket::Send(std::span<const std::uint8_t> bytes, const Address& from, const Address& to,
                  std::uint16_t port) const
{
    sockaddr_in target = Endpoint(to, port);
    // The system reads the bytes only; the structure is shared with receiving and so not const.
    iovec place{const_cast<std::uint8_t*>(bytes.data()), bytes.size()};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(in_pktinfo))> control{};
    msghdr message{};
    message.msg_name = &target;
    message.msg_namelen = sizeof target;
    message.msg_iov = &place;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    cmsghdr* part = CMSG_FIRSTHDR(&message);
    part->cmsg_level = IPPROTO_IP;
    part->cmsg_type = IP_PKTINFO;
    part->cmsg_len = CMSG_LEN(sizeof(in_pktinfo));
    in_pktinfo info{};
    info.ipi_spec_dst = ToSystem(from);
    std::memcpy(CMSG_DATA(part), &info, sizeof info);
    return sendmsg(handle_, &message, 0) == static_cast<ssize_t>(bytes.size());
}

} // namespace Rig
