// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include <QObject>
#include <QString>

class ArtNetNodeModel;
class DeviceManager;
class ExternalServerPreferences;
class GetIPRange;
class LEDEngine;
class SettingsBlock;

/// The chosen network: what the operator or the document wants as text, and the address and
/// broadcast address that it has now. Follows adapters as they come and go.
class NetworkChoice : public QObject
{
    Q_OBJECT

public:
    /// Takes a text for the operator, who reads it later: the light doesn't wait for anybody.
    using Notice = std::function<void(const QString&)>;

    /// Everything but `notice` outlives this object.
    NetworkChoice(GetIPRange& networks, SettingsBlock& settings, DeviceManager& manager,
                  LEDEngine& engine, Notice notice);

    /// Chooses the network that the text names; an empty text is none. The operator reads a notice
    /// when no adapter or more than one matches.
    void Choose(const QString& text);

    /// Takes the network that a document names, with the notices that go with it.
    void ChooseFromDocument(const std::wstring& documentText);

    /// The first network there is, for a document that is made anew.
    void ChooseFirst();

    /// Elements for a node that is nowhere any more, in no known network and not entered by hand,
    /// are for nobody in particular again.
    void ClearStaleAddresses(const ArtNetNodeModel& nodes);

    /// Where merged DMX comes in. Null preferences: at the chosen network.
    void SetHostPreferences(const ExternalServerPreferences* preferences);

    /// The wanted network, as a text of the list of networks; empty for none.
    [[nodiscard]] const QString& GetNetworkText() const;
    /// Our address in it and its broadcast address; empty while no adapter has it.
    [[nodiscard]] const std::wstring& GetNetworkIP() const { return networkIP; }
    [[nodiscard]] const std::wstring& GetNetworkBroadcast() const { return networkBroadcast; }

public slots:
    /// Hands the choice and the merger's settings to the output.
    void updateArtNetOutput();
    /// Every 3 seconds: takes up a chosen network that has come, or come back.
    void CheckNetworkUpdates();

signals:
    /// The known networks, the choice, or what is sent in it is another.
    void networkChanged();

private:
    [[nodiscard]] std::wstring determineArtNetReceiveInterfaceIPs() const;
    void FollowChosenNetwork(bool connected);
    void LookForChosenNetwork();

    GetIPRange& networks_;
    SettingsBlock& settings_;
    DeviceManager& manager_;
    LEDEngine& engine_;
    Notice notice_;
    const ExternalServerPreferences* preferences_ = nullptr;
    std::wstring networkIP;
    std::wstring networkBroadcast;
};
