// SPDX-License-Identifier: MIT
#pragma once

#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"

#include <filesystem>
#include <vector>

/// A document of `count` elements, to be saved and loaded.
class SavedDocument
{
public:
    explicit SavedDocument(int count)
        : manager_(QString())
    {
        manager_.Initialize();
        PixelMap map(4, 1, PixelMapType::RGB);
        for (int i = 0; i < 4; ++i)
            map.SetCell(i, 0, 1 + 3 * i);
        manager_.GetDeviceModel()->AddFixture(
            std::make_unique<DeviceLedItem>(L"Maker", L"Bar", map, 1, 12));
        MappedObjectParams record;
        record.ipconf = QStringLiteral("Auto");
        record.fixtureID = manager_.GetLEDFixtureByProduct(L"Bar")->uniqueID;
        manager_.AddMappedObjects({static_cast<std::size_t>(count), record});
    }

    int Save(const std::filesystem::path& path)
    {
        return manager_.SaveMapping(QString::fromStdString(path.string()), nodes_);
    }
    [[nodiscard]] int Count() const { return manager_.GetMappedDeviceModel()->rowCount(); }

    /// How many elements a new run of the program finds in the file; -1 when it can't read it.
    [[nodiscard]] static int CountIn(const std::filesystem::path& path)
    {
        SavedDocument reader(0);
        const bool readable =
            reader.manager_.LoadMapping(QString::fromStdString(path.string()), reader.nodes_);
        return readable ? reader.Count() : -1;
    }

private:
    DeviceManager manager_;
    ArtNetNodeModel nodes_;
};
