// SPDX-License-Identifier: MIT
#pragma once

#include "LibTools/StringService.h"

class W32StringService final : public StringService
{
public:
    bool WideToWide(const void* source, std::size_t inCount, void* target,
                    std::size_t& outCount) override;
    bool WideFromWide(const void* source, std::size_t inCount, void* target,
                      std::size_t& outCount) override;
    bool Utf8ToWide(const char* source, std::size_t byteCount, char16_t* target,
                    std::size_t& size) override;
    bool WideToUtf8(const char16_t* source, std::size_t byteCount, char* target,
                    std::size_t& size) override;
};
