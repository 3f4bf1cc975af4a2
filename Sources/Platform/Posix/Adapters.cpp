// SPDX-License-Identifier: MIT
#include "Platform/Adapters.h"

#include <bit>
#include <memory>

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include "Platform/IPv4.h"
#include "Platform/UdpSockets.h"

namespace Platform {

namespace {

using AddressList = std::unique_ptr<ifaddrs, decltype(&freeifaddrs)>;

AddressList ReadAddresses()
{
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0)
        list = nullptr;
    return {list, &freeifaddrs};
}

std::uint32_t ValueOf(const sockaddr* address)
{
    return ntohl(reinterpret_cast<const sockaddr_in*>(address)->sin_addr.s_addr);
}

bool IsIPv4(const ifaddrs& entry)
{
    return entry.ifa_addr && entry.ifa_addr->sa_family == AF_INET;
}

NetworkInterface RecordOf(const ifaddrs& entry)
{
    NetworkInterface record;
    record.ipValue = ValueOf(entry.ifa_addr);
    record.ip = FormatIPv4(record.ipValue);
    const int prefix = entry.ifa_netmask ? std::popcount(ValueOf(entry.ifa_netmask)) : 32;
    record.broadcastValue = BroadcastOf(record.ipValue, prefix);
    record.broadcast = FormatIPv4(record.broadcastValue);
    // "Running" means that the cable is plugged in; "up" alone that the adapter is switched on.
    record.up = (entry.ifa_flags & IFF_UP) != 0 && (entry.ifa_flags & IFF_RUNNING) != 0;
    // A second address can have a label such as eth0:1; the adapter's name ends at the colon.
    const std::string name = entry.ifa_name;
    record.adapter = name.substr(0, name.find(':'));
    record.adapterIndex = if_nametoindex(record.adapter.c_str());
    return record;
}

} // namespace

std::optional<std::vector<NetworkInterface>> GetNetworkInterfaces()
{
    std::vector<NetworkInterface> interfaces;
    const AddressList list = ReadAddresses();
    if (!list)
        return std::nullopt;
    for (const ifaddrs* entry = list.get(); entry; entry = entry->ifa_next) {
        if (IsIPv4(*entry) && (entry->ifa_flags & IFF_LOOPBACK) == 0)
            interfaces.push_back(RecordOf(*entry));
    }
    return interfaces;
}

std::uint32_t AddressTowards(std::uint32_t peer)
{
    const int socket = OpenUdp();
    if (socket <= 0)
        return 0;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(peer);
    address.sin_port = htons(1); // any: nothing is sent
    socklen_t size = sizeof address;
    auto* record = reinterpret_cast<sockaddr*>(&address);
    const bool found = SetUdpBroadcast(socket) && connect(socket, record, size) == 0 &&
                       getsockname(socket, record, &size) == 0;
    CloseUdp(socket);
    return found ? ntohl(address.sin_addr.s_addr) : 0;
}

} // namespace Platform
