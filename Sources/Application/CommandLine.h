// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QStringList>

/// What the command line asks for. Options of Qt are left to QApplication.
struct CommandLine
{
    CommandLine(int argc, char** argv);

    bool debugArtNet = false;        ///< -artnetdebug
    std::optional<std::string> said; ///< for --help and --version: the program says it and ends
    /// The mappings and libraries, as absolute paths in the system's encoding.
    std::vector<std::string> files;
};

/// The files of a command line as a message for the program that runs. What is more than one
/// message holds is left out, from the end.
[[nodiscard]] std::string MessageOf(const std::vector<std::string>& files);

/// The files of such a message; nothing when it is anything else.
[[nodiscard]] std::optional<QStringList> FilesIn(std::string_view message);

[[nodiscard]] QStringList PathsOf(const std::vector<std::string>& files);
