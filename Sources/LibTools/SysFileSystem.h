// SPDX-License-Identifier: MIT
#pragma once

#include "LibTools/Dir.h"
#include "LibTools/Installable.h"
#include "LibTools/ZenFile.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <QIODevice>

/// The file system, with paths as wide text and `/` between their parts. Nothing raises.
class SysFileSystem : public T_Installable<SysFileSystem>
{
public:
    [[nodiscard]] virtual PathKind GetPathKind(const std::wstring& path) const = 0;
    /// By the extension, in any case: 1 jpg and jpeg, 2 bmp, 3 gif, 4 png, 5 and up video and other
    /// media, 0 anything else.
    [[nodiscard]] virtual std::int32_t GetMediaKind(const std::wstring& path) const = 0;
    /// The path without its last component.
    [[nodiscard]] virtual std::wstring GetDirectoryOf(const std::wstring& path) const = 0;
    /// The last component.
    [[nodiscard]] virtual std::wstring GetFileName(const std::wstring& path) const = 0;
    /// Always empty: the program has no working directory of its own.
    [[nodiscard]] virtual std::wstring GetWorkingDirectory() const = 0;
    [[nodiscard]] virtual wchar_t GetPathSeparator() const = 0;
    /// One level, or all levels. True when a directory was made: one that exists already gives
    /// false.
    virtual bool CreateDirectory(const std::wstring& path) = 0;
    virtual bool CreateDirectories(const std::wstring& path) = 0;
    /// These three give true on failure.
    virtual bool Rename(const std::wstring& from, const std::wstring& to) = 0;
    virtual bool Remove(const std::wstring& path) = 0; ///< a file or an empty directory
    virtual bool CopyFile(const std::wstring& from, const std::wstring& to, bool failIfExists) = 0;
    /// Never null; a device that could not be opened reads as a failure.
    virtual std::unique_ptr<ZenFile> OpenDevice(const std::wstring& path,
                                                QIODevice::OpenMode mode) = 0;
    /// With a mode of fopen. Null when it fails, and for a directory.
    virtual std::unique_ptr<ZenFile> Open(const std::wstring& path, const std::wstring& mode) = 0;
    /// Empties `entries` and fills it with what is right below `path`, in no particular order.
    virtual void ListDirectory(const std::wstring& path, std::vector<DirEntry>& entries) = 0;
};
