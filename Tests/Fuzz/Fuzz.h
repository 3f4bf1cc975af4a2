// SPDX-License-Identifier: MIT
// What every fuzzer has: its own main, the check that ends it, and the input as a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include <sys/mman.h>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// What must hold for every input.
inline void Require(bool holds)
{
    if (!holds)
        std::abort();
}

/// A file in memory, for readers that want a path.
class InputFile
{
public:
    InputFile()
        : descriptor_(memfd_create("input", 0))
    {
        Require(descriptor_ >= 0);
    }
    ~InputFile() { close(descriptor_); }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    /// Replaces the whole content.
    void Write(const void* data, std::size_t size) const
    {
        Require(ftruncate(descriptor_, 0) == 0 &&
                pwrite(descriptor_, data, size, 0) == static_cast<ssize_t>(size));
    }
    void Write(std::string_view bytes) const { Write(bytes.data(), bytes.size()); }

    [[nodiscard]] std::string Path() const
    {
        return "/proc/self/fd/" + std::to_string(descriptor_);
    }
    [[nodiscard]] std::wstring WidePath() const
    {
        const std::string path = Path();
        return {path.begin(), path.end()};
    }

private:
    int descriptor_;
};
