// SPDX-License-Identifier: MIT
#include "Application/CommandLine.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <system_error>

#include <QFile>

#include "Platform/SingleInstance.h"
#include "UI/Widgets/Version.h"

namespace {

using namespace std::literals;

constexpr std::string_view MessageHead = "PixelWeft opens\0"sv;

/// By its ending, in any case, as file managers know it.
bool IsFileOfOurs(std::string_view path)
{
    constexpr std::size_t endingSize = 4;
    if (path.size() <= endingSize || path.starts_with('-'))
        return false;
    std::string ending(path.substr(path.size() - endingSize));
    std::transform(ending.begin(), ending.end(), ending.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return ending == ".wfm" || ending == ".wfl";
}

std::string AbsolutePath(const char* path)
{
    std::error_code failure; // The folder that we are in may be gone.
    const auto absolute = std::filesystem::absolute(path, failure);
    return failure ? std::string() : absolute.string();
}

std::string Usage()
{
    return "Usage: pixelweft [-artnetdebug] [FILE...]\n"
           "Opens the window, and offers to import a mapping (.wfm) or fixtures (.wfl). While\n"
           "PixelWeft runs already, it is given the files, and this start ends.\n"
           "\n"
           "  -artnetdebug  Writes a line to the log for each node that takes a universe.\n"
           "  --help        Says this.\n"
           "  --version     Says which version it is.\n";
}

} // namespace

CommandLine::CommandLine(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "-artnetdebug")
            debugArtNet = true;
        else if (argument == "--help")
            said = Usage();
        else if (argument == "--version")
            said = "pixelweft " + ProgramVersion().toStdString() + "\n";
        else if (IsFileOfOurs(argument))
            files.push_back(AbsolutePath(argv[i]));
    }
    std::erase(files, std::string());
}

std::string MessageOf(const std::vector<std::string>& files)
{
    std::string message(MessageHead);
    for (const std::string& file : files) {
        if (message.size() + file.size() + 1 > Platform::SingleInstance::MaxMessage)
            break;
        message.append(file).push_back('\0');
    }
    return message;
}

std::optional<QStringList> FilesIn(std::string_view message)
{
    if (!message.starts_with(MessageHead) || !message.ends_with('\0'))
        return {};
    message.remove_prefix(MessageHead.size());
    std::vector<std::string> files;
    while (!message.empty()) {
        const std::size_t end = message.find('\0');
        files.emplace_back(message.substr(0, end));
        if (!files.back().starts_with('/') || !IsFileOfOurs(files.back()))
            return {};
        message.remove_prefix(end + 1);
    }
    return PathsOf(files);
}

QStringList PathsOf(const std::vector<std::string>& files)
{
    QStringList paths;
    for (const std::string& file : files)
        paths += QFile::decodeName(QByteArray::fromStdString(file));
    return paths;
}
