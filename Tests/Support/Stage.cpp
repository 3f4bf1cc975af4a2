// SPDX-License-Identifier: MIT
#include "Support/Stage.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <stdexcept>
#include <system_error>
#include <thread>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sched.h>
#include <sys/socket.h>
#include <unistd.h>

namespace Stage {

namespace {

sockaddr_in Endpoint(std::uint32_t address, std::uint16_t port)
{
    sockaddr_in endpoint{};
    endpoint.sin_family = AF_INET;
    endpoint.sin_addr.s_addr = htonl(address);
    endpoint.sin_port = htons(port);
    return endpoint;
}

std::optional<Heard> Receive(int handle)
{
    std::array<std::uint8_t, 2048> buffer{};
    alignas(cmsghdr) std::array<char, 256> control{};
    sockaddr_in source{};
    iovec place{buffer.data(), buffer.size()};
    msghdr message{};
    message.msg_name = &source;
    message.msg_namelen = sizeof source;
    message.msg_iov = &place;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t size = recvmsg(handle, &message, 0);
    if (size < 0)
        return std::nullopt;
    Heard heard;
    heard.bytes.assign(buffer.begin(), buffer.begin() + size);
    heard.source = ntohl(source.sin_addr.s_addr);
    heard.port = ntohs(source.sin_port);
    for (cmsghdr* part = CMSG_FIRSTHDR(&message); part; part = CMSG_NXTHDR(&message, part)) {
        if (part->cmsg_level == IPPROTO_IP && part->cmsg_type == IP_PKTINFO) {
            in_pktinfo info{};
            std::memcpy(&info, CMSG_DATA(part), sizeof info);
            heard.destination = ntohl(info.ipi_addr.s_addr);
        } else if (part->cmsg_level == SOL_SOCKET && part->cmsg_type == SCM_TIMESTAMPNS) {
            timespec time{};
            std::memcpy(&time, CMSG_DATA(part), sizeof time);
            heard.arrived = std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
        }
    }
    return heard;
}

/// Runs `work` with this thread on the rig; sockets that are made there stay there.
void OnRig(const std::function<void()>& work)
{
    const int desk = open("/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC);
    const std::string path = std::string("/proc/") + std::getenv("STAGE_PID_rig") + "/ns/net";
    const int rig = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (setns(rig, CLONE_NEWNET) != 0)
        throw std::system_error(errno, std::system_category(), "to the rig");
    work();
    if (setns(desk, CLONE_NEWNET) != 0)
        throw std::system_error(errno, std::system_category(), "back to the desk");
    close(rig);
    close(desk);
}

} // namespace

Socket::Socket(std::uint32_t address, std::uint16_t port, bool shares)
    : handle_(socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
{
    const int on = 1;
    const int size = 4 * 1024 * 1024;
    setsockopt(handle_, SOL_SOCKET, SO_BROADCAST, &on, sizeof on);
    setsockopt(handle_, SOL_SOCKET, SO_RCVBUF, &size, sizeof size);
    setsockopt(handle_, SOL_SOCKET, SO_TIMESTAMPNS, &on, sizeof on);
    setsockopt(handle_, IPPROTO_IP, IP_PKTINFO, &on, sizeof on);
    const int reuse = shares ? 1 : 0;
    setsockopt(handle_, SOL_SOCKET, SO_REUSEADDR, &reuse, sizeof reuse);
    const sockaddr_in endpoint = Endpoint(address, port);
    bound_ = bind(handle_, reinterpret_cast<const sockaddr*>(&endpoint), sizeof endpoint) == 0;
}

Socket::~Socket()
{
    close(handle_);
}

void Socket::Send(std::uint32_t address, const Bytes& bytes, std::uint16_t port) const
{
    const sockaddr_in endpoint = Endpoint(address, port);
    sendto(handle_, bytes.data(), bytes.size(), 0, reinterpret_cast<const sockaddr*>(&endpoint),
           sizeof endpoint);
}

std::optional<Heard> Socket::Next(std::chrono::milliseconds longest) const
{
    pollfd waiting{handle_, POLLIN, 0};
    poll(&waiting, 1, static_cast<int>(longest.count()));
    return Receive(handle_);
}

std::vector<Heard> Socket::All(std::chrono::milliseconds duration) const
{
    std::vector<Heard> all;
    const auto end = std::chrono::steady_clock::now() + duration;
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            end - std::chrono::steady_clock::now());
        auto heard = Next(std::max(left, std::chrono::milliseconds(0)));
        if (heard)
            all.push_back(std::move(*heard));
        else if (left <= std::chrono::milliseconds(0))
            return all;
    }
}

Flooder::Flooder()
{
    OnRig([this] { handle_ = socket(AF_INET, SOCK_RAW | SOCK_CLOEXEC, IPPROTO_RAW); });
}

Flooder::~Flooder()
{
    close(handle_);
}

void Flooder::Send(std::uint32_t source, const Bytes& payload) const
{
    Bytes packet(28, 0);
    const auto putAddress = [&packet](std::size_t at, std::uint32_t address) {
        for (std::size_t i = 0; i < 4; ++i)
            packet[at + i] = static_cast<std::uint8_t>(address >> (24 - 8 * i));
    };
    packet[0] = 0x45;
    packet[8] = 64;
    packet[9] = IPPROTO_UDP;
    putAddress(12, source);
    putAddress(16, Desk0);
    packet[20] = packet[22] = 0x19; // port 6454 on both sides
    packet[21] = packet[23] = 0x36;
    const std::size_t udpSize = payload.size() + 8;
    packet[24] = static_cast<std::uint8_t>(udpSize >> 8);
    packet[25] = static_cast<std::uint8_t>(udpSize);
    packet.insert(packet.end(), payload.begin(), payload.end());
    const sockaddr_in target = Endpoint(Desk0, 0);
    sendto(handle_, packet.data(), packet.size(), MSG_DONTWAIT,
           reinterpret_cast<const sockaddr*>(&target), sizeof target);
}

std::unique_ptr<Socket> RigSocket(std::uint32_t address, std::uint16_t port)
{
    std::unique_ptr<Socket> socket;
    OnRig([&] { socket = std::make_unique<Socket>(address, port); });
    if (!socket->IsBound())
        throw std::runtime_error("the rig's port is taken");
    return socket;
}

bool Command(const std::string& host, const std::string& command)
{
    return std::system(("\"$STAGE_NET\" " + host + ' ' + command).c_str()) == 0;
}

void Enter(int argc, char** argv)
{
    if (std::getenv("STAGE_NET"))
        return;
    std::vector<const char*> words{PIXELWEFT_STAGE_NET, "-2", "desk"};
    words.insert(words.end(), argv, argv + argc);
    words.push_back(nullptr);
    execv(words.front(), const_cast<char**>(words.data()));
    std::perror(words.front());
    std::exit(EXIT_FAILURE);
}

bool ComesTrue(const std::function<bool()>& condition, std::chrono::milliseconds longest)
{
    const auto end = std::chrono::steady_clock::now() + longest;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

std::int64_t WallClock()
{
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

} // namespace Stage
