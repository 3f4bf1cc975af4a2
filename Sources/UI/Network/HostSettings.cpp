// SPDX-License-Identifier: MIT
#include "UI/Network/HostSettings.h"

#include "Log/Log.h"
#include "Platform/Clock.h"
#include "Settings/ApplicationMode.h"
#include "Settings/ExternalServerPreferences.h"
#include "UI/Network/NetworkChoice.h"

namespace {

constexpr std::int64_t RepeatInterval = 1'000'000'000;

} // namespace

HostSettings::HostSettings(ExternalServerPreferences& preferences, NetworkChoice& network)
    : preferences_(preferences)
    , network_(network)
{}

HostSettings::Report HostSettings::InPreferences() const
{
    return {preferences_.IsArtNet(), preferences_.artNetIPAddress};
}

bool HostSettings::IsDue(const Report& report)
{
    const std::int64_t now = Platform::MonotonicNanoseconds();
    if (report == handled_ && now - handledTime_ < RepeatInterval)
        return false;
    handledTime_ = now;
    return true;
}

void HostSettings::artNetDMXInputSettingsReceived(bool enabled, const std::wstring& IP,
                                                  std::vector<int>& usedUniverses)
{
    if (preferences_.mode != ApplicationMode::BesideReelCommand)
        return;
    emit usedUniversesReceived(usedUniverses);
    const Report report{enabled, IP};
    const Report before = InPreferences();
    if (report == before) {
        handled_.reset();
        return;
    }
    if (!IsDue(report))
        return;
    if (!preferences_.Load())
        ZEN_LOG_INFO("The preferences of the host can't be read");
    // Each new registration costs frames: one registration for each report, and one when the
    // preferences have followed.
    if (report == handled_ && InPreferences() == before)
        return;
    handled_ = report;
    network_.updateArtNetOutput();
    emit artNetDMXInputSettingsChanged(enabled, IP);
}
