// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <QObject>

class ExternalServerPreferences;
class NetworkChoice;

/// Follows the DMX input settings that a host tells over the control channel. Only ReelCommand has
/// any; beside another host nothing happens here.
class HostSettings : public QObject
{
    Q_OBJECT

public:
    /// Both outlive this object.
    HostSettings(ExternalServerPreferences& preferences, NetworkChoice& network);

public slots:
    /// When the host tells something else than its preferences did, they are read again and the
    /// output follows. A host repeats itself 40 times a second: what its preferences still
    /// contradict after that is looked up once a second.
    void artNetDMXInputSettingsReceived(bool enabled, const std::wstring& IP,
                                        std::vector<int>& usedUniverses);

signals:
    void artNetDMXInputSettingsChanged(bool enabled, const std::wstring& ip);
    /// The Port-Addresses that the host takes for itself.
    void usedUniversesReceived(const std::vector<int>& usedUniverses);

private:
    using Told = std::pair<bool, std::wstring>;

    [[nodiscard]] Told InPreferences() const;
    [[nodiscard]] bool IsDue(const Told& told);

    ExternalServerPreferences& preferences_;
    NetworkChoice& network_;
    std::optional<Told> handled_; ///< what was told last and differed
    std::int64_t handledTime_ = 0;
};
