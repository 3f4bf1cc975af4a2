// SPDX-License-Identifier: MIT
#include "UI/Network/NetworkChoice.h"

#include <algorithm>
#include <utility>

#include <QUndoStack>

#include "LEDEngine/GetIPRange.h"
#include "LEDEngine/LEDEngine.h"
#include "Log/Log.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Settings/ExternalServerPreferences.h"
#include "Settings/SettingsBlock.h"
#include "UI/Commands/AddressCommands.h"

NetworkChoice::NetworkChoice(GetIPRange& networks, SettingsBlock& settings, DeviceManager& manager,
                             LEDEngine& engine, Notice notice)
    : networks_(networks)
    , settings_(settings)
    , manager_(manager)
    , engine_(engine)
    , notice_(std::move(notice))
{}

void NetworkChoice::SetHostPreferences(const ExternalServerPreferences* preferences)
{
    preferences_ = preferences;
}

void NetworkChoice::Choose(const QString& text)
{
    settings_.networkText = text;
    networkIP.clear();
    networkBroadcast.clear();
    if (!text.isEmpty()) {
        const auto matches = networks_.FindMatching(text.toStdWString());
        if (matches.empty())
            notice_(tr("No network interfaces match network ") + text);
        else if (matches.size() > 1)
            notice_(tr("More than one network adapter matches network ") + text);
        if (!matches.empty()) {
            networkIP = matches.front().ip;
            networkBroadcast = matches.front().network.broadcast;
        }
    }
    emit networkChanged();
}

void NetworkChoice::ChooseFromDocument(const std::wstring& documentText)
{
    const QString old = settings_.networkText;
    QString wanted = QString::fromStdWString(documentText);
    if (wanted.isEmpty()) {
        ZEN_LOG_INFO("Network disbaled loaded form mapping file");
    } else if (!networks_.IsKnownNetwork(documentText)) {
        if (GetIPRange::IsValidRange(documentText)) {
            networks_.AddManualRange(documentText);
        } else {
            notice_(tr("Mapping file has an invalid braodcast IP specified ") + wanted);
            wanted.clear();
        }
    }
    if (QString::fromStdWString(documentText) != old) {
        const auto shown = [](const QString& text) {
            return text.isEmpty() ? QStringLiteral("0.0.0.0") : text;
        };
        notice_(tr("The broadcast IP has been changed from ") + shown(old) +
                tr(" to the mapping file IP ") + shown(wanted));
    }
    Choose(wanted);
}

void NetworkChoice::ChooseFirst()
{
    const auto known = networks_.GetNetworks();
    Choose(known.empty() ? QString() : QString::fromStdWString(known.front().text));
}

const QString& NetworkChoice::GetNetworkText() const
{
    return settings_.networkText;
}

QString NetworkChoice::GetNetworkPattern() const
{
    if (!networkBroadcast.empty())
        return QString::fromStdWString(networkBroadcast);
    const bool isRange = settings_.networkText.contains(QLatin1Char('X'), Qt::CaseInsensitive);
    const std::wstring text = settings_.networkText.toStdWString();
    if (!isRange || !GetIPRange::IsValidRange(text))
        return {};
    return QString::fromStdWString(GetIPRange::RangeToBroadcast(text));
}

void NetworkChoice::ClearStaleAddresses(const ArtNetNodeModel& nodes, QUndoStack& undoStack)
{
    const MappedDeviceModel& document = *manager_.GetMappedDeviceModel();
    ElementIds stale;
    for (int row = 0; row < document.rowCount(); ++row) {
        const MappedLedItem* element = document.GetElement(row);
        const DMXMappingArtNet* mapping = element ? element->GetArtNetMapping() : nullptr;
        if (!mapping || mapping->IsAuto())
            continue;
        const std::wstring& node = mapping->GetIpconf();
        if (!nodes.IsManualNode(QString::fromStdWString(node)) && !networks_.IsInKnownNetwork(node))
            stale.push_back(element->uniqueID);
    }
    if (stale.empty())
        return;
    undoStack.push(new AddressCommand(manager_, stale, [](DMXMappingArtNet& mapping) {
        mapping.SetNode(AutoNode, std::wstring());
    }));
    emit networkChanged();
}

std::wstring NetworkChoice::determineArtNetReceiveInterfaceIPs() const
{
    const UniverseMerging& merging = manager_.GetMappedDeviceModel()->GetMerging();
    const bool fromHost = merging.GetMergerDMXSource() == MergerDMXSource::ReelCommand;
    if (!fromHost || !preferences_ || !preferences_->IsArtNet())
        return networkIP;
    return preferences_->artNetIPAddress == L"ALL" ? std::wstring() : preferences_->artNetIPAddress;
}

void NetworkChoice::updateArtNetOutput()
{
    engine_.InitializeOutput(networkIP, networkBroadcast, determineArtNetReceiveInterfaceIPs(),
                             manager_.GetMappedDeviceModel()->GetMerging());
}

void NetworkChoice::CheckNetworkUpdates()
{
    const auto changes = networks_.DetectChanges();
    if (changes.empty())
        return;
    const std::uint32_t current = engine_.GetOutput().GetBroadcastValue();
    if (current != 0) {
        const auto change = std::ranges::find(changes, current, &NetworkChange::broadcastValue);
        if (change != changes.end())
            FollowChosenNetwork(change->up);
    } else {
        LookForChosenNetwork();
    }
    emit networkChanged();
}

void NetworkChoice::FollowChosenNetwork(bool connected)
{
    ZEN_LOG_INFO("Current network %s", connected ? "connected" : "disconnected");
    // A network that went down isn't given up: it usually comes back.
    if (!connected)
        return;
    Choose(settings_.networkText);
    updateArtNetOutput();
}

void NetworkChoice::LookForChosenNetwork()
{
    ZEN_LOG_INFO("Checking if new matching network is detected");
    const auto matches = networks_.FindMatching(settings_.networkText.toStdWString());
    if (matches.empty())
        return;
    ZEN_LOG_INFO("Found matching network");
    networkIP = matches.front().ip;
    networkBroadcast = matches.front().network.broadcast;
    updateArtNetOutput();
}
