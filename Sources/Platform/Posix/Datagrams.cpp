// SPDX-License-Identifier: MIT
#include "Platform/Datagrams.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <arpa/inet.h>
#include <linux/filter.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/uio.h>

namespace Platform {

namespace {

constexpr std::size_t BatchSize = 32;

std::error_code LastError()
{
    return {errno, std::system_category()};
}

/// Sends up to BatchSize datagrams; how many the system took, or -1 with errno.
int SendSome(int socket, std::span<const Datagram> batch)
{
    std::array<mmsghdr, BatchSize> messages{};
    std::array<iovec, BatchSize> parts{};
    std::array<sockaddr_in, BatchSize> targets{};
    for (std::size_t i = 0; i < batch.size(); ++i) {
        targets[i].sin_family = AF_INET;
        targets[i].sin_addr.s_addr = htonl(batch[i].address);
        targets[i].sin_port = htons(batch[i].port);
        parts[i].iov_base = const_cast<std::byte*>(batch[i].bytes.data());
        parts[i].iov_len = batch[i].bytes.size();
        messages[i].msg_hdr.msg_name = &targets[i];
        messages[i].msg_hdr.msg_namelen = sizeof targets[i];
        messages[i].msg_hdr.msg_iov = &parts[i];
        messages[i].msg_hdr.msg_iovlen = 1;
    }
    int sent = -1;
    do {
        sent = sendmmsg(socket, messages.data(), static_cast<unsigned>(batch.size()),
                        MSG_DONTWAIT | MSG_NOSIGNAL);
    } while (sent < 0 && errno == EINTR);
    return sent;
}

bool IsFull(const std::error_code& error)
{
    return error.value() == EAGAIN || error.value() == EWOULDBLOCK || error.value() == ENOBUFS;
}

} // namespace

SendOutcome SendDatagrams(int socket, std::span<const Datagram> batch) noexcept
{
    SendOutcome outcome;
    while (!batch.empty()) {
        const int sent = SendSome(socket, batch.first(std::min(batch.size(), BatchSize)));
        if (sent > 0) {
            outcome.sent += static_cast<std::size_t>(sent);
            batch = batch.subspan(static_cast<std::size_t>(sent));
            continue;
        }
        outcome.lastError = LastError();
        if (IsFull(outcome.lastError)) {
            outcome.untried = batch.size();
            break;
        }
        batch = batch.subspan(1); // the refused one; those behind it may have another way
    }
    return outcome;
}

DatagramReader::DatagramReader()
    : buffer_(MaxSize * MaxCount)
{
    received_.reserve(MaxCount);
}

std::span<const ReceivedDatagram> DatagramReader::Read(int socket, std::error_code& failure)
{
    std::array<mmsghdr, MaxCount> messages{};
    std::array<iovec, MaxCount> parts{};
    std::array<sockaddr_in, MaxCount> sources{};
    for (std::size_t i = 0; i < MaxCount; ++i) {
        parts[i].iov_base = buffer_.data() + i * MaxSize;
        parts[i].iov_len = MaxSize;
        messages[i].msg_hdr.msg_name = &sources[i];
        messages[i].msg_hdr.msg_namelen = sizeof sources[i];
        messages[i].msg_hdr.msg_iov = &parts[i];
        messages[i].msg_hdr.msg_iovlen = 1;
    }
    received_.clear();
    failure.clear();
    const int count = recvmmsg(socket, messages.data(), MaxCount, MSG_DONTWAIT, nullptr);
    if (count < 0 && errno != EINTR && !IsFull(LastError()))
        failure = LastError();
    for (std::size_t i = 0; static_cast<int>(i) < count; ++i) {
        const auto* bytes = buffer_.data() + i * MaxSize;
        received_.push_back({ntohl(sources[i].sin_addr.s_addr), ntohs(sources[i].sin_port),
                             std::span(bytes, messages[i].msg_len)});
    }
    return received_;
}

std::error_code BindToAdapter(int socket, const std::string& adapterName) noexcept
{
    const auto size = static_cast<socklen_t>(adapterName.size() + 1);
    if (setsockopt(socket, SOL_SOCKET, SO_BINDTODEVICE, adapterName.c_str(), size) != 0)
        return LastError();
    return {};
}

std::error_code IgnoreSender(int socket, std::uint32_t address, std::uint16_t port) noexcept
{
    // The system shows a filter the datagram from its UDP header on, which begins with the sender's
    // port; the IP header stands at an offset of its own, and in it the sender's address at 12.
    constexpr std::uint32_t portAt = 0;
    constexpr std::uint32_t addressAt = static_cast<std::uint32_t>(SKF_NET_OFF) + 12;
    constexpr std::uint32_t keepAll = 0xFFFFFFFF;
    std::array<sock_filter, 6> program{{
        BPF_STMT(BPF_LD | BPF_H | BPF_ABS, portAt),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, port, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, addressAt),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, address, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, 0),
        BPF_STMT(BPF_RET | BPF_K, keepAll),
    }};
    const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    if (setsockopt(socket, SOL_SOCKET, SO_ATTACH_FILTER, &filter, sizeof filter) != 0)
        return LastError();
    return {};
}

} // namespace Platform
