// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>

/// Conversions at the border of our files: UTF-16 units and bytes in buffers that the caller owns.
/// Inside the program text is std::wstring; Platform/Text.h converts between the two.
class StringService
{
public:
    StringService() = default;
    StringService(const StringService&) = delete;
    StringService& operator=(const StringService&) = delete;
    virtual ~StringService() = default;

    /// Copies `inCount` bytes unchanged. `outCount` is the room of the target in bytes; it becomes
    /// the number of bytes copied, and never grows. Always true.
    virtual bool WideToWide(const void* source, std::size_t inCount, void* target,
                            std::size_t& outCount) = 0;
    /// The same the other way.
    virtual bool WideFromWide(const void* source, std::size_t inCount, void* target,
                              std::size_t& outCount) = 0;

    /// `size` is the room of the target in bytes; it becomes twice the number of units written. The
    /// target is cleared first. False, with size 0, when the room is too small. What is no UTF-8
    /// becomes U+FFFD.
    virtual bool Utf8ToWide(const char* source, std::size_t byteCount, char16_t* target,
                            std::size_t& size) = 0;

    /// `byteCount` is the size of the source in bytes, `size` the room of the target; it becomes
    /// the bytes written. The target is cleared first. An empty text gives size 0 and true, a
    /// target that is too small size 0 and false.
    virtual bool WideToUtf8(const char16_t* source, std::size_t byteCount, char* target,
                            std::size_t& size) = 0;

    /// The service of the process, which may be null.
    static inline std::unique_ptr<StringService> global;
};
