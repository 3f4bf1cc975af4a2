// SPDX-License-Identifier: MIT
#include "Platform/SingleInstance.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace Platform {

bool ClaimSingleInstance(std::string_view name)
{
    // A socket in the abstract namespace: no file that could stay behind.
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::size_t count = std::min(name.size(), sizeof address.sun_path - 1);
    std::copy_n(name.begin(), count, address.sun_path + 1);
    const int claim = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (claim < 0)
        return true;
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + count);
    if (bind(claim, reinterpret_cast<const sockaddr*>(&address), size) == 0)
        return true; // the socket stays open until the process ends
    const bool taken = errno == EADDRINUSE;
    close(claim);
    return !taken;
}

} // namespace Platform
