// SPDX-License-Identifier: MIT
#include "Platform/Neighbours.h"

#include <cerrno>
#include <cstring>

#include <linux/neighbour.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "Platform/Datagrams.h"

namespace Platform {

namespace {

constexpr std::size_t BufferSize = 32768;
constexpr std::uint16_t DiscardPort = 9;

int OpenTable()
{
    const int socket = ::socket(AF_NETLINK, SOCK_RAW | SOCK_NONBLOCK | SOCK_CLOEXEC, NETLINK_ROUTE);
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = RTMGRP_NEIGH;
    if (socket < 0 ||
        bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return socket;
    close(socket);
    return -1;
}

int OpenAsker(const std::string& adapterName, std::uint32_t ownAddress)
{
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    // Nothing that comes back is read.
    const int smallest = 0;
    if (socket >= 0)
        setsockopt(socket, SOL_SOCKET, SO_RCVBUF, &smallest, sizeof smallest);
    sockaddr_in own{};
    own.sin_family = AF_INET;
    own.sin_addr.s_addr = htonl(ownAddress);
    // Without such an address not even a question may leave by another way.
    if (socket < 0 || ((adapterName.empty() || !BindToAdapter(socket, adapterName)) &&
                       bind(socket, reinterpret_cast<const sockaddr*>(&own), sizeof own) == 0))
        return socket;
    close(socket);
    return -1;
}

NeighbourState StateOf(const nlmsghdr& message, const ndmsg& entry)
{
    if (message.nlmsg_type == RTM_DELNEIGH)
        return NeighbourState::Forgotten;
    constexpr int reachable =
        NUD_REACHABLE | NUD_STALE | NUD_DELAY | NUD_PROBE | NUD_PERMANENT | NUD_NOARP;
    if ((entry.ndm_state & reachable) != 0)
        return NeighbourState::Answers;
    if ((entry.ndm_state & NUD_INCOMPLETE) != 0)
        return NeighbourState::Asked;
    return entry.ndm_state == NUD_NONE ? NeighbourState::Forgotten : NeighbourState::Silent;
}

} // namespace

NeighbourTable::NeighbourTable(const std::string& adapterName, std::uint32_t ownAddress)
    : table_(OpenTable())
    , asker_(OpenAsker(adapterName, ownAddress))
    , adapterIndex_(static_cast<int>(if_nametoindex(adapterName.c_str())))
    , buffer_(BufferSize)
{}

NeighbourTable::~NeighbourTable()
{
    if (table_ >= 0)
        close(table_);
    if (asker_ >= 0)
        close(asker_);
}

const std::vector<Neighbour>& NeighbourTable::ReadChanges()
{
    changes_.clear();
    Receive();
    if (lost_ && RequestAll())
        Receive();
    return changes_;
}

const std::vector<Neighbour>& NeighbourTable::ReadAll()
{
    changes_.clear();
    Receive();
    if (RequestAll())
        Receive();
    return changes_;
}

std::error_code NeighbourTable::Ask(std::uint32_t address) noexcept
{
    sockaddr_in target{};
    target.sin_family = AF_INET;
    target.sin_addr.s_addr = htonl(address);
    target.sin_port = htons(DiscardPort);
    if (sendto(asker_, nullptr, 0, MSG_DONTWAIT | MSG_NOSIGNAL,
               reinterpret_cast<const sockaddr*>(&target), sizeof target) == 0)
        return {};
    return {errno, std::system_category()};
}

bool NeighbourTable::RequestAll() noexcept
{
    struct
    {
        nlmsghdr head;
        ndmsg entry;
    } request{};
    request.head.nlmsg_len = sizeof request;
    request.head.nlmsg_type = RTM_GETNEIGH;
    request.head.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.entry.ndm_family = AF_INET;
    lost_ = false;
    return send(table_, &request, sizeof request, 0) == static_cast<ssize_t>(sizeof request);
}

// The answer to a request is written while we read it: nothing more to read means that it is whole.
void NeighbourTable::Receive()
{
    for (;;) {
        const ssize_t size = recv(table_, buffer_.data(), buffer_.size(), 0);
        if (size > 0) {
            Take(buffer_.data(), static_cast<std::size_t>(size));
            continue;
        }
        if (size < 0 && errno == ENOBUFS)
            lost_ = true;
        else if (size == 0 || errno != EINTR)
            return;
    }
}

void NeighbourTable::Take(const std::uint8_t* bytes, std::size_t size)
{
    const auto* message = reinterpret_cast<const nlmsghdr*>(bytes);
    for (; NLMSG_OK(message, size); message = NLMSG_NEXT(message, size)) {
        if (message->nlmsg_type != RTM_NEWNEIGH && message->nlmsg_type != RTM_DELNEIGH)
            continue;
        const auto* entry = static_cast<const ndmsg*>(NLMSG_DATA(message));
        const bool ours = adapterIndex_ == 0 || entry->ndm_ifindex == adapterIndex_;
        if (entry->ndm_family != AF_INET || !ours)
            continue;
        auto left = static_cast<int>(message->nlmsg_len - NLMSG_LENGTH(sizeof *entry));
        const auto* part = reinterpret_cast<const rtattr*>(reinterpret_cast<const char*>(entry) +
                                                           NLMSG_ALIGN(sizeof *entry));
        for (; RTA_OK(part, left); part = RTA_NEXT(part, left)) {
            in_addr address{};
            if (part->rta_type != NDA_DST || RTA_PAYLOAD(part) != sizeof address)
                continue;
            std::memcpy(&address, RTA_DATA(part), sizeof address);
            changes_.push_back({ntohl(address.s_addr), StateOf(*message, *entry)});
        }
    }
}

} // namespace Platform
