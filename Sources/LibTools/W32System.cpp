// SPDX-License-Identifier: MIT
#include "LibTools/W32System.h"

#include "Log/Log.h"
#include "Platform/Folders.h"
#include "Platform/Text.h"

std::wstring W32System::GetPlatformName() const
{
    // Hosts compare this text; it names the family of file formats, not the machine's own system.
    return L"WIN";
}

bool W32System::GetUserDataFolder(std::wstring& folder) const
{
    const std::string path = Platform::UserDataFolder();
    if (path.empty())
        return false;
    folder = Platform::Utf8ToWide(path);
    ZEN_LOG_INFO("%s", path.c_str());
    return true;
}

std::wstring W32System::GetProductFolderName() const
{
    return L"Zentri PixelWeft2";
}

void W32System::GetNetworkInterfaces(std::vector<NetworkInterface>& interfaces) const
{
    const auto found = Platform::GetNetworkInterfaces().value_or(std::vector<NetworkInterface>());
    interfaces.insert(interfaces.end(), found.begin(), found.end());
}
