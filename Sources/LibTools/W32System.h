// SPDX-License-Identifier: MIT
#pragma once

#include "LibTools/System.h"

class W32System final : public System
{
public:
    [[nodiscard]] std::wstring GetPlatformName() const override;
    bool GetUserDataFolder(std::wstring& folder) const override;
    [[nodiscard]] std::wstring GetProductFolderName() const override;
    void GetNetworkInterfaces(std::vector<NetworkInterface>& interfaces) const override;
};
