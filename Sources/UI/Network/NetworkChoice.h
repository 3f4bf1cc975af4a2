// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QObject>
#include <QString>

class ArtNetNodeModel;
class DeviceManager;
class ExternalServerPreferences;
class GetIPRange;
class LEDEngine;
class QSocketNotifier;
class QUndoStack;
class SettingsBlock;
struct KnownNetwork;

namespace Platform {
class AdapterEvents;
}

/// The chosen network: what the operator or the document wants as text, and the address and
/// broadcast address that it has now. Follows adapters as they come and go.
class NetworkChoice : public QObject
{
    Q_OBJECT

public:
    /// Takes a text for the operator, who reads it later: the output doesn't wait for that.
    using Notice = std::function<void(const QString&)>;

    /// Everything but `notice` outlives this object.
    NetworkChoice(GetIPRange& networks, SettingsBlock& settings, DeviceManager& manager,
                  LEDEngine& engine, Notice notice);
    ~NetworkChoice() override;

    /// Chooses the network that the text names, among the adapters as they are now; an empty text
    /// is none. The operator reads a notice when no adapter or more than one matches.
    void Choose(const QString& text);

    /// Takes the network that a document names, with the notices that go with it.
    void ChooseFromDocument(const std::wstring& documentText);

    /// The first network there is, for a new document.
    void ChooseFirst();

    /// Elements lose the address of a node that is in no known network and was not entered by hand:
    /// they are sent to "Auto" again, which is a step of its own: an operator who chose the wrong
    /// network gets them back.
    void ClearStaleAddresses(const ArtNetNodeModel& nodes, QUndoStack& undoStack);

    /// From now on a change of the adapters is followed when it happens, where the system tells.
    void FollowAdapters();

    /// Where merged DMX is received when the host is its source. Null: on the chosen network.
    void SetHostPreferences(const ExternalServerPreferences* preferences);

    /// The wanted network, as a text of the list of networks; empty for none.
    [[nodiscard]] const QString& GetNetworkText() const;
    /// Our address in it and its broadcast address; empty while no adapter has it.
    [[nodiscard]] const std::wstring& GetNetworkIP() const { return networkIP; }
    [[nodiscard]] const std::wstring& GetNetworkBroadcast() const { return networkBroadcast; }
    /// The name of the adapter that has it, such as "eth0".
    [[nodiscard]] QString GetAdapter() const { return QString::fromStdWString(adapter_); }
    /// Whether the adapter of the chosen network is up, with its cable in. False without a network.
    [[nodiscard]] bool IsConnected() const;
    /// The addresses of the network as dotted text, with 255 for each open part: the broadcast
    /// address, or, while no adapter has a range of the operator, that of the range. Empty for
    /// none.
    [[nodiscard]] QString GetNetworkPattern() const;

public slots:
    /// Hands the choice and the merger's settings to the output.
    void updateArtNetOutput();
    /// Takes up a chosen network that appeared or came back, and lets go of one that is gone. Every
    /// 3 seconds, and when the system tells of a change.
    void CheckNetworkUpdates();

signals:
    /// The known networks, the choice or the addresses of elements changed.
    void networkChanged();

private:
    [[nodiscard]] std::wstring determineArtNetReceiveInterfaceIPs() const;
    void FollowChosenNetwork(const std::vector<KnownNetwork>& changes);
    void LookForChosenNetwork();
    /// Takes the first network that the wanted text names now, or none. How many there are.
    std::size_t TakeFirstMatch();
    /// Whether an adapter has the address and broadcast address that the output uses.
    [[nodiscard]] bool IsStillThere() const;

    GetIPRange& networks_;
    SettingsBlock& settings_;
    DeviceManager& manager_;
    LEDEngine& engine_;
    Notice notice_;
    const ExternalServerPreferences* preferences_ = nullptr;
    std::wstring networkIP;
    std::wstring networkBroadcast;
    std::wstring adapter_;
    std::unique_ptr<Platform::AdapterEvents> events_;
    std::unique_ptr<QSocketNotifier> notifier_; ///< of events_
};
