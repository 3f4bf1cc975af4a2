// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

/// A file in memory for readers that want a path: the fuzzer's input, written anew for each run.
class InputFile
{
public:
    InputFile()
        : descriptor_(memfd_create("input", 0))
    {
        if (descriptor_ < 0)
            std::abort();
    }
    ~InputFile() { close(descriptor_); }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    void Write(const std::uint8_t* data, std::size_t size) const
    {
        if (ftruncate(descriptor_, 0) != 0 ||
            pwrite(descriptor_, data, size, 0) != static_cast<ssize_t>(size))
            std::abort();
    }

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
