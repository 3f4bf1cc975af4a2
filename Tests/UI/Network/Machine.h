// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <QStringList>

#include "LEDEngine/GetIPRange.h"
#include "LEDEngine/LEDEngine.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Platform/IPv4.h"
#include "Settings/ExternalServerPreferences.h"
#include "Settings/SettingsBlock.h"
#include "Support/LogCapture.h"
#include "UI/Network/NetworkChoice.h"

/// A machine whose adapters the test plugs and pulls, and an operator who reads every notice.
class Machine : public testing::Test
{
protected:
    Machine() { manager.Initialize(); }

    /// Its name has the first number of its address.
    static NetworkInterface Adapter(const std::string& ip, const std::string& broadcast,
                                    bool up = true)
    {
        return {ip,        Platform::ParseIPv4(ip).value_or(0),
                broadcast, Platform::ParseIPv4(broadcast).value_or(0),
                up,        "art" + ip.substr(0, ip.find('.')),
                0};
    }
    QModelIndex Place(const std::wstring& node, int universe = 0)
    {
        const DMXMappingArtNet address(0, universe, 1, node, L"Node");
        const DeviceLedItem fixture(L"Maker", L"Lamp", PixelMap(1, 1, PixelMapType::RGB), 1, 3);
        MappedDeviceModel& document = *manager.GetMappedDeviceModel();
        auto element = std::make_unique<MappedLedItem>(L"Lamp", fixture, nullptr, &address);
        element->uniqueID = document.GetNextElementID();
        return document.AddMappingElement(std::move(element));
    }
    /// The value of the broadcast address that the output has, 0 for none.
    [[nodiscard]] std::uint32_t Broadcast() { return engine.GetOutput().GetBroadcastValue(); }
    [[nodiscard]] bool TakeDirty() { return std::exchange(manager.documentDirty, false); }

    std::vector<NetworkInterface> adapters = {Adapter("10.0.0.1", "10.255.255.255"),
                                              Adapter("2.0.0.1", "2.255.255.255")};
    QStringList notices;
    Support::LogCapture log;
    GetIPRange networks{[this] {
        return adapters;
    }};
    SettingsBlock settings{SettingsBlock::WithoutStore{}};
    DeviceManager manager{QString()};
    LEDEngine engine{manager};
    ArtNetNodeModel nodes;
    ExternalServerPreferences preferences;
    NetworkChoice choice{networks, settings, manager, engine, [this](const QString& text) {
                             notices.push_back(text);
                         }};
};
