// SPDX-License-Identifier: MIT
#pragma once

#include "LibTools/SysFileSystem.h"

class QSysFileSystem final : public SysFileSystem
{
public:
    [[nodiscard]] PathKind GetPathKind(const std::wstring& path) const override;
    [[nodiscard]] std::int32_t GetMediaKind(const std::wstring& path) const override;
    [[nodiscard]] std::wstring GetDirectoryOf(const std::wstring& path) const override;
    [[nodiscard]] std::wstring GetFileName(const std::wstring& path) const override;
    [[nodiscard]] std::wstring GetWorkingDirectory() const override;
    [[nodiscard]] wchar_t GetPathSeparator() const override;
    bool CreateDirectory(const std::wstring& path) override;
    bool CreateDirectories(const std::wstring& path) override;
    bool Rename(const std::wstring& from, const std::wstring& to) override;
    bool Remove(const std::wstring& path) override;
    bool CopyFile(const std::wstring& from, const std::wstring& to, bool failIfExists) override;
    std::unique_ptr<ZenFile> OpenDevice(const std::wstring& path,
                                        QIODevice::OpenMode mode) override;
    std::unique_ptr<ZenFile> Open(const std::wstring& path, const std::wstring& mode) override;
    void ListDirectory(const std::wstring& path, std::vector<DirEntry>& entries) override;
};
