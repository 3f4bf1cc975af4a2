// SPDX-License-Identifier: MIT
#include "Platform/AdapterEvents.h"

#include <array>
#include <cerrno>

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

namespace Platform {

AdapterEvents::AdapterEvents()
    : handle_(socket(AF_NETLINK, SOCK_RAW | SOCK_NONBLOCK | SOCK_CLOEXEC, NETLINK_ROUTE))
{
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = RTMGRP_LINK | RTMGRP_IPV4_IFADDR;
    if (handle_ < 0 ||
        bind(handle_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return;
    close(handle_);
    handle_ = -1;
}

AdapterEvents::~AdapterEvents()
{
    if (handle_ >= 0)
        close(handle_);
}

void AdapterEvents::Clear()
{
    std::array<char, 8192> ignored{};
    ssize_t size = 0;
    do // a read may fail because more was said than the system could keep
        size = recv(handle_, ignored.data(), ignored.size(), 0);
    while (size > 0 || (size < 0 && (errno == ENOBUFS || errno == EINTR)));
}

} // namespace Platform
