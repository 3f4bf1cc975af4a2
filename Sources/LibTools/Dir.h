// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// What a path leads to. The numbers are those of SysFileSystem::GetPathKind.
enum class PathKind : std::int32_t
{
    File = 0,
    Directory = 1,
    Other = 2 ///< also: nothing there
};

/// One entry of a directory: its name without the path, and what it is.
struct DirEntry
{
    std::wstring name;
    PathKind kind = PathKind::Other;

    bool operator==(const DirEntry&) const = default;
};

/// A directory with the entries right below it.
struct Dir
{
    DirEntry entry;
    std::vector<DirEntry> children;
};
