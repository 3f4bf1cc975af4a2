// SPDX-License-Identifier: MIT
#include "UI/Network/NetworkChoice.h"

#include <algorithm>
#include <utility>

#include <QSocketNotifier>
#include <QUndoStack>

#include "LEDEngine/GetIPRange.h"
#include "LEDEngine/LEDEngine.h"
#include "Log/Log.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Platform/AdapterEvents.h"
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

NetworkChoice::~NetworkChoice() = default;

void NetworkChoice::FollowAdapters()
{
    events_ = std::make_unique<Platform::AdapterEvents>();
    if (events_->Handle() < 0)
        return;
    notifier_ = std::make_unique<QSocketNotifier>(events_->Handle(), QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
        events_->Clear();
        CheckNetworkUpdates();
    });
    CheckNetworkUpdates(); // what changed before
}

void NetworkChoice::SetHostPreferences(const ExternalServerPreferences* preferences)
{
    preferences_ = preferences;
}

void NetworkChoice::Choose(const QString& text)
{
    settings_.networkText = text;
    networks_.DetectChanges(); // the choice takes what they are now
    const std::size_t matches = TakeFirstMatch();
    if (matches == 0 && !text.isEmpty())
        notice_(tr("No network interfaces match network %1").arg(text));
    else if (matches > 1)
        notice_(tr("More than one network adapter matches network %1").arg(text));
    emit networkChanged();
}

void NetworkChoice::ChooseFromDocument(const std::wstring& documentText)
{
    const QString old = settings_.networkText;
    QString wanted = QString::fromStdWString(documentText);
    networks_.DetectChanges();
    if (wanted.isEmpty()) {
        ZEN_LOG_INFO("Network disbaled loaded form mapping file");
    } else if (!networks_.IsKnownNetwork(documentText)) {
        if (GetIPRange::IsValidRange(documentText)) {
            networks_.AddManualRange(documentText);
        } else {
            notice_(tr("Mapping file has an invalid braodcast IP specified %1").arg(wanted));
            wanted.clear();
        }
    }
    Choose(wanted);
    if (QString::fromStdWString(documentText) == old)
        return;
    // A network that no adapter has is told by Choose.
    if (wanted.isEmpty())
        notice_(tr("This document sends on no network: choose one in the tool bar to send."));
    else if (!networkIP.empty())
        notice_(tr("This document sends on %1 (%2, %3)")
                    .arg(wanted, GetAdapter(), QString::fromStdWString(networkIP)));
}

void NetworkChoice::ChooseFirst()
{
    networks_.DetectChanges();
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
    if (engine_.GetOutput().GetBroadcastValue() != 0)
        FollowChosenNetwork(changes);
    else
        LookForChosenNetwork();
    emit networkChanged();
}

void NetworkChoice::FollowChosenNetwork(const std::vector<KnownNetwork>& changes)
{
    const std::uint32_t current = engine_.GetOutput().GetBroadcastValue();
    const auto isCurrent = [current](const KnownNetwork& network) {
        return network.broadcastValue == current;
    };
    const bool connected = std::ranges::any_of(
        changes, [&](const KnownNetwork& network) { return isCurrent(network) && network.up; });
    if (std::ranges::any_of(changes, isCurrent))
        ZEN_LOG_INFO("Current network %s", connected ? "connected" : "disconnected");
    if (connected)
        Choose(settings_.networkText);
    else if (!IsStillThere())
        TakeFirstMatch();
    else // A network whose cable was pulled isn't given up: it usually comes back.
        return;
    updateArtNetOutput();
}

void NetworkChoice::LookForChosenNetwork()
{
    ZEN_LOG_INFO("Checking if new matching network is detected");
    if (TakeFirstMatch() == 0)
        return;
    ZEN_LOG_INFO("Found matching network");
    updateArtNetOutput();
}

std::size_t NetworkChoice::TakeFirstMatch()
{
    const auto matches = networks_.FindMatching(settings_.networkText.toStdWString());
    adapter_ = matches.empty() ? std::wstring() : matches.front().network.adapter;
    networkIP = matches.empty() ? std::wstring() : matches.front().ip;
    networkBroadcast = matches.empty() ? std::wstring() : matches.front().network.broadcast;
    return matches.size();
}

bool NetworkChoice::IsConnected() const
{
    const auto matches = networks_.FindMatching(settings_.networkText.toStdWString());
    return std::ranges::any_of(matches, [this](const GetIPRange::Match& match) {
        return match.ip == networkIP && match.network.up;
    });
}

bool NetworkChoice::IsStillThere() const
{
    const auto matches = networks_.FindMatching(settings_.networkText.toStdWString());
    return std::ranges::any_of(matches, [this](const GetIPRange::Match& match) {
        return match.ip == networkIP && match.network.broadcast == networkBroadcast;
    });
}
