// SPDX-License-Identifier: MIT
#include "Settings/ModeLogPath.h"

#include "Platform/Folders.h"
#include "Settings/ApplicationMode.h"

std::filesystem::path ModeLogPath(std::int32_t mode)
{
    const char* hostFolder = nullptr;
    if (mode == ApplicationMode::BesideReelCommand)
        hostFolder = "Zentri ReelCommand 5";
    else if (mode == ApplicationMode::BesideLoomTap)
        hostFolder = "LoomTap2";
    if (!hostFolder)
        return {};
    return std::filesystem::path(Platform::UserDataFolder()) / hostFolder / "PixelWeftLog.txt";
}
