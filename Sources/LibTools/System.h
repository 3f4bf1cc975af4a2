// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/Adapters.h"

#include <memory>
#include <string>
#include <vector>

/// What the program asks of the machine and the user's account.
class System
{
public:
    System() = default;
    System(const System&) = delete;
    System& operator=(const System&) = delete;
    virtual ~System() = default;

    /// The platform's name as the hosts know it.
    [[nodiscard]] virtual std::wstring GetPlatformName() const = 0;
    /// The per-user application data folder, without a trailing separator. False, with `folder` as
    /// it was, when the user has none.
    virtual bool GetUserDataFolder(std::wstring& folder) const = 0;
    /// The folder below it that holds the fixture library.
    [[nodiscard]] virtual std::wstring GetProductFolderName() const = 0;
    /// Appends one record for each IPv4 address of each adapter, loopback left out.
    virtual void GetNetworkInterfaces(std::vector<NetworkInterface>& interfaces) const = 0;

    /// The service of the process, which may be null.
    static inline std::unique_ptr<System> global;
};
