// SPDX-License-Identifier: MIT
#include "Support/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace Support {

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "pixelweft-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("no temporary folder to be had");
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void TemporaryFolder::UseAsHome() const
{
    setenv("HOME", path_.c_str(), 1);
    setenv("XDG_DATA_HOME", (path_ / "data").c_str(), 1);
    setenv("XDG_CONFIG_HOME", (path_ / "config").c_str(), 1);
}

std::filesystem::path TemporaryFolder::Write(const std::string& name, std::string_view bytes) const
{
    const auto path = path_ / name;
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path;
}

std::string ReadBytes(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace Support
