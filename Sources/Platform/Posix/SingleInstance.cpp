// SPDX-License-Identifier: MIT
#include "Platform/SingleInstance.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr std::size_t MaxName = sizeof(sockaddr_un::sun_path) - 1;

/// In the abstract namespace: no file that could stay behind. Anybody may send to it, so the kernel
/// says of each message who did.
socklen_t AddressOf(std::string_view name, sockaddr_un& address)
{
    address.sun_family = AF_UNIX;
    std::copy(name.begin(), name.end(), address.sun_path + 1);
    return static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
}

bool IsOfThisUser(msghdr& head)
{
    for (cmsghdr* part = CMSG_FIRSTHDR(&head); part; part = CMSG_NXTHDR(&head, part)) {
        if (part->cmsg_level != SOL_SOCKET || part->cmsg_type != SCM_CREDENTIALS)
            continue;
        ucred sender{};
        std::memcpy(&sender, CMSG_DATA(part), sizeof sender);
        return sender.uid == getuid();
    }
    return false;
}

} // namespace

namespace Platform {

SingleInstance::SingleInstance(std::string_view name)
    : name_(name.substr(0, MaxName))
    , socket_(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
{
    if (socket_ < 0)
        return;
    // Before the name is there: a message may come at once.
    const int on = 1;
    setsockopt(socket_, SOL_SOCKET, SO_PASSCRED, &on, sizeof on);
    sockaddr_un address{};
    const socklen_t size = AddressOf(name_, address);
    isFirst_ = bind(socket_, reinterpret_cast<const sockaddr*>(&address), size) == 0 ||
               errno != EADDRINUSE;
}

SingleInstance::~SingleInstance()
{
    if (socket_ >= 0)
        close(socket_);
}

bool SingleInstance::LeaveMessage(std::string_view message) const
{
    sockaddr_un address{};
    const socklen_t size = AddressOf(name_, address);
    return message.size() <= MaxMessage &&
           sendto(socket_, message.data(), message.size(), MSG_DONTWAIT | MSG_NOSIGNAL,
                  reinterpret_cast<const sockaddr*>(&address),
                  size) == static_cast<ssize_t>(message.size());
}

std::optional<SingleInstance::Message> SingleInstance::TakeMessage() const
{
    Message message;
    message.bytes.resize(MaxMessage);
    iovec part{message.bytes.data(), message.bytes.size()};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control{};
    msghdr head{};
    head.msg_iov = &part;
    head.msg_iovlen = 1;
    head.msg_control = control.data();
    head.msg_controllen = control.size();
    const ssize_t size = recvmsg(socket_, &head, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
    if (size < 0)
        return {};
    message.bytes.resize(static_cast<std::size_t>(size));
    message.isWhole = (head.msg_flags & MSG_TRUNC) == 0;
    message.isOfThisUser = IsOfThisUser(head);
    return message;
}

} // namespace Platform
