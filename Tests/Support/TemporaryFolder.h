// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Support {

/// A folder of the test's own, removed with the object.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

    /// From now on the process has its home here, without files or settings: nothing of the real
    /// user is read or written.
    void UseAsHome() const;

    /// Writes `bytes` to a file of this name in the folder and gives its path.
    std::filesystem::path Write(const std::string& name, std::string_view bytes) const;

private:
    std::filesystem::path path_;
};

/// All bytes of a file, empty when it can't be read.
[[nodiscard]] std::string ReadBytes(const std::filesystem::path& path);

} // namespace Support
