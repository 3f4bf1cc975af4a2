// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Support {

/// A folder of the test's own, removed with the object.
class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        std::string pattern = std::filesystem::temp_directory_path() / "pixelweft-XXXXXX";
        if (!mkdtemp(pattern.data()))
            throw std::runtime_error("no temporary folder to be had");
        path_ = pattern;
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

    /// From now on the process has its home here, without files or settings: nothing of the real
    /// user is read or written.
    void UseAsHome() const
    {
        setenv("HOME", path_.c_str(), 1);
        setenv("XDG_DATA_HOME", (path_ / "data").c_str(), 1);
        setenv("XDG_CONFIG_HOME", (path_ / "config").c_str(), 1);
    }

    /// Writes `bytes` to a file of this name, which may have folders, and gives its path.
    std::filesystem::path Write(const std::filesystem::path& name, std::string_view bytes) const
    {
        const auto path = path_ / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

private:
    std::filesystem::path path_;
};

/// All bytes of a file, empty when it can't be read.
[[nodiscard]] inline std::string ReadBytes(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace Support
