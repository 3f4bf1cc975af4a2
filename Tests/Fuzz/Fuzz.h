// SPDX-License-Identifier: MIT
// What every fuzzer has: its own main, the check that ends it, and the input as a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "Support/TemporaryFolder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// What must hold for every input.
inline void Require(bool holds)
{
    if (!holds)
        std::abort();
}

/// The bytes as a file, for readers that want a path. The next ones take its place.
inline std::filesystem::path InputFile(std::string_view bytes)
{
    static const Support::TemporaryFolder folder;
    return folder.Write("input", bytes);
}

inline std::string_view BytesOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}
