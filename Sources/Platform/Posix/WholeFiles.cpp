// SPDX-License-Identifier: MIT
#include "Platform/WholeFiles.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t WithinTheMask = 0666;
constexpr mode_t Permissions = 07777;

std::error_code LastError()
{
    return {errno == EDQUOT ? ENOSPC : errno, std::generic_category()};
}

/// A nearly full disk takes a part of the bytes first, and refuses the next part.
std::error_code WriteAll(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else if (written == 0)
            return std::make_error_code(std::errc::no_space_on_device);
        else if (errno != EINTR)
            return LastError();
    }
    return {};
}

/// Not every file system can wait for its disk, and what it can't do is no failure.
std::error_code BringToDisk(int file)
{
    if (fsync(file) == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP)
        return {};
    return LastError();
}

std::error_code WriteNewFile(const std::string& next, std::string_view bytes, const mode_t* mode)
{
    const int file = open(next.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, WithinTheMask);
    if (file < 0)
        return LastError();
    std::error_code failure = WriteAll(file, bytes);
    if (!failure)
        failure = BringToDisk(file);
    if (!failure && mode)
        (void)fchmod(file, *mode & Permissions); // A disk without permissions has none to keep.
    // A share may refuse the bytes only now.
    if (close(file) != 0 && !failure && errno != EINTR)
        failure = LastError();
    if (failure)
        (void)unlink(next.c_str());
    return failure;
}

/// Brings a rename to the disk: without it a power cut soon afterwards may bring the old file back.
/// A folder that can't be opened for it has both files whole in any case.
void BringFolderToDisk(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const int file = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0)
        return;
    (void)BringToDisk(file);
    close(file);
}

} // namespace

namespace Platform {

std::error_code ReplaceFile(const std::string& path, const std::string& next,
                            std::string_view bytes)
{
    struct stat old = {};
    const bool exists = stat(path.c_str(), &old) == 0;
    if (const auto failure = WriteNewFile(next, bytes, exists ? &old.st_mode : nullptr))
        return failure;
    if (std::rename(next.c_str(), path.c_str()) == 0) {
        BringFolderToDisk(path);
        return {};
    }
    const std::error_code failure = LastError();
    (void)unlink(next.c_str());
    return failure;
}

} // namespace Platform
