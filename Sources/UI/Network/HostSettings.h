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

/// Follows the DMX input settings that the host reports over the control channel. Only ReelCommand
/// reports any; beside another host nothing happens here.
class HostSettings : public QObject
{
    Q_OBJECT

public:
    /// Both outlive this object.
    HostSettings(ExternalServerPreferences& preferences, NetworkChoice& network);

public slots:
    /// When the settings differ from those in the preferences, the preferences are read again and
    /// the output follows. The host repeats its report 40 times a second: a report that the
    /// preferences still contradict is looked up once a second.
    void artNetDMXInputSettingsReceived(bool enabled, const std::wstring& IP,
                                        std::vector<int>& usedUniverses);

signals:
    void artNetDMXInputSettingsChanged(bool enabled, const std::wstring& ip);
    /// The Port-Addresses that the host takes for itself.
    void usedUniversesReceived(const std::vector<int>& usedUniverses);

private:
    using Report = std::pair<bool, std::wstring>;

    [[nodiscard]] Report InPreferences() const;
    [[nodiscard]] bool IsDue(const Report& report);

    ExternalServerPreferences& preferences_;
    NetworkChoice& network_;
    std::optional<Report> handled_; ///< the last one that differed
    std::int64_t handledTime_ = 0;
};
