// SPDX-License-Identifier: MIT
#include "LibTools/QSysFileSystem.h"

#include "Platform/Text.h"

#include <QString>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace {

// Through UTF-8 and not through the path's own wide conversion, which follows the C locale.
fs::path Native(const std::wstring& path)
{
    return {Platform::WideToUtf8(path)};
}

std::wstring Wide(const fs::path& path)
{
    return Platform::Utf8ToWide(path.native());
}

PathKind KindOf(const fs::file_status& status)
{
    if (fs::is_directory(status))
        return PathKind::Directory;
    return fs::is_regular_file(status) ? PathKind::File : PathKind::Other;
}

constexpr std::array<std::pair<std::string_view, std::int32_t>, 10> mediaKinds{{{".jpg", 1},
                                                                                {".jpeg", 1},
                                                                                {".bmp", 2},
                                                                                {".gif", 3},
                                                                                {".png", 4},
                                                                                {".avi", 5},
                                                                                {".mov", 6},
                                                                                {".mp4", 7},
                                                                                {".mpg", 8},
                                                                                {".wmv", 9}}};

} // namespace

PathKind QSysFileSystem::GetPathKind(const std::wstring& path) const
{
    std::error_code error;
    return KindOf(fs::status(Native(path), error));
}

std::int32_t QSysFileSystem::GetMediaKind(const std::wstring& path) const
{
    std::string extension = Native(path).extension().native();
    std::transform(extension.begin(), extension.end(), extension.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    const auto* found = std::find_if(mediaKinds.begin(), mediaKinds.end(),
                                     [&](const auto& kind) { return kind.first == extension; });
    return found != mediaKinds.end() ? found->second : 0;
}

std::wstring QSysFileSystem::GetDirectoryOf(const std::wstring& path) const
{
    return Wide(Native(path).parent_path());
}

std::wstring QSysFileSystem::GetFileName(const std::wstring& path) const
{
    return Wide(Native(path).filename());
}

std::wstring QSysFileSystem::GetWorkingDirectory() const
{
    return {};
}

wchar_t QSysFileSystem::GetPathSeparator() const
{
    return L'/';
}

bool QSysFileSystem::CreateDirectory(const std::wstring& path)
{
    std::error_code error;
    return fs::create_directory(Native(path), error);
}

bool QSysFileSystem::CreateDirectories(const std::wstring& path)
{
    std::error_code error;
    return fs::create_directories(Native(path), error);
}

bool QSysFileSystem::Rename(const std::wstring& from, const std::wstring& to)
{
    std::error_code error;
    fs::rename(Native(from), Native(to), error);
    return static_cast<bool>(error);
}

bool QSysFileSystem::Remove(const std::wstring& path)
{
    std::error_code error;
    return !fs::remove(Native(path), error) || error;
}

bool QSysFileSystem::CopyFile(const std::wstring& from, const std::wstring& to, bool failIfExists)
{
    const auto options =
        failIfExists ? fs::copy_options::none : fs::copy_options::overwrite_existing;
    std::error_code error;
    return !fs::copy_file(Native(from), Native(to), options, error) || error;
}

std::unique_ptr<ZenFile> QSysFileSystem::OpenDevice(const std::wstring& path,
                                                    QIODevice::OpenMode mode)
{
    auto device = std::make_unique<QFile>(QString::fromStdWString(path));
    device->open(mode); // A closed device is no failure here: its readers find out.
    return std::make_unique<QZenFile>(std::move(device));
}

std::unique_ptr<ZenFile> QSysFileSystem::Open(const std::wstring& path, const std::wstring& mode)
{
    // fopen reads a directory here, and fails only later.
    if (GetPathKind(path) == PathKind::Directory)
        return nullptr;
    std::FILE* stream =
        std::fopen(Platform::WideToUtf8(path).c_str(), Platform::WideToUtf8(mode).c_str());
    if (!stream)
        return nullptr;
    return std::make_unique<QZenFile>(stream);
}

void QSysFileSystem::ListDirectory(const std::wstring& path, std::vector<DirEntry>& entries)
{
    entries.clear();
    std::error_code error;
    fs::directory_iterator it(Native(path), error);
    while (!error && it != fs::directory_iterator()) {
        std::error_code statusError;
        entries.push_back({Wide(it->path().filename()), KindOf(it->status(statusError))});
        it.increment(error);
    }
}
