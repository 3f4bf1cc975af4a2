// SPDX-License-Identifier: MIT
#include "LibTools/W32StringService.h"

#include "Platform/Text.h"

#include <algorithm>
#include <cstring>
#include <string>

bool W32StringService::WideToWide(const void* source, std::size_t inCount, void* target,
                                  std::size_t& outCount)
{
    outCount = std::min(inCount, outCount);
    if (outCount > 0)
        std::memcpy(target, source, outCount);
    return true;
}

bool W32StringService::WideFromWide(const void* source, std::size_t inCount, void* target,
                                    std::size_t& outCount)
{
    return WideToWide(source, inCount, target, outCount);
}

bool W32StringService::Utf8ToWide(const char* source, std::size_t byteCount, char16_t* target,
                                  std::size_t& size)
{
    const std::size_t room = size / sizeof(char16_t);
    std::fill_n(target, room, u'\0');
    size = 0;
    const std::u16string units = Platform::Utf8ToUtf16({source, byteCount});
    if (units.size() > room)
        return false;
    std::copy(units.begin(), units.end(), target);
    size = units.size() * sizeof(char16_t);
    return true;
}

bool W32StringService::WideToUtf8(const char16_t* source, std::size_t byteCount, char* target,
                                  std::size_t& size)
{
    const std::size_t room = size;
    std::fill_n(target, room, '\0');
    size = 0;
    const std::string bytes = Platform::Utf16ToUtf8({source, byteCount / sizeof(char16_t)});
    if (bytes.size() > room)
        return false;
    std::copy(bytes.begin(), bytes.end(), target);
    size = bytes.size();
    return true;
}
