// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include <QString>

/// The host program beside which this one runs, as "mode.xml" beside the executable says.
class ApplicationMode
{
public:
    enum : std::int32_t
    {
        BesideReelCommand = 0,
        BesideLoomTap = 1,
        NoHost = 2
    };

    [[nodiscard]] static ApplicationMode& Instance();

    /// Reads "mode.xml" beside the executable. True when it was understood, also with a value that
    /// names no host; false, with the reason in the log, otherwise.
    [[nodiscard]] bool Load();
    /// The same from this file.
    [[nodiscard]] bool LoadFrom(const QString& path);

    /// The host's name as the user knows it, empty without a host.
    [[nodiscard]] QString HostName() const;
    /// The key below which the host keeps its texts, empty without a host.
    [[nodiscard]] std::wstring RegistryRoot() const;

    std::int32_t mode = NoHost;
};
