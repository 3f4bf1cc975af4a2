// SPDX-License-Identifier: MIT
#include "Platform/Folders.h"

#include <cstdlib>
#include <filesystem>

namespace Platform {

std::string FindUserDataFolder()
{
    std::filesystem::path folder;
    const char* data = std::getenv("XDG_DATA_HOME");
    if (data && *data == '/') {
        folder = data;
    } else {
        const char* home = std::getenv("HOME");
        if (!home || *home != '/')
            return {};
        folder = std::filesystem::path(home) / ".local" / "share";
    }
    std::string text = folder.lexically_normal().string();
    while (text.size() > 1 && text.back() == '/')
        text.pop_back();
    return text;
}

std::string UserDataFolder()
{
    std::string folder = FindUserDataFolder();
    std::error_code ignored;
    if (!folder.empty())
        std::filesystem::create_directories(folder, ignored);
    return folder;
}

} // namespace Platform
