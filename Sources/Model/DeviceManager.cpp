// SPDX-License-Identifier: MIT
#include "Model/DeviceManager.h"

#include <utility>

#include <QFileInfo>
#include <QMutexLocker>

#include "Log/Log.h"
#include "Model/DeviceListProxy.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedObjectListProxy.h"

DeviceManager::DeviceManager(QString path)
    : libraryPath(std::move(path))
{}

DeviceManager::~DeviceManager() = default;

bool DeviceManager::Initialize()
{
    deviceModel = std::make_unique<DeviceModel>();
    deviceListProxy = std::make_unique<DeviceListProxy>();
    deviceListProxy->setSourceModel(deviceModel.get());
    mappedDeviceModel = std::make_unique<MappedDeviceModel>();
    mappedObjectListProxy = std::make_unique<MappedObjectListProxy>();
    mappedObjectListProxy->setSourceModel(mappedDeviceModel.get());
    return true;
}

void DeviceManager::LoadLibrary(const QString& path)
{
    deviceModel->Clear();
    deviceModel->Merge(path.toStdWString(), true);
}

void DeviceManager::MergeLibrary(const QString& path, bool force,
                                 const FixtureConflictCallback& callback)
{
    deviceModel->Merge(path.toStdWString(), force, callback);
    if (deviceModel->Save(libraryPath.toStdWString()) != 0)
        ZEN_LOG_ERROR("The fixture library could not be saved to %ls",
                      libraryPath.toStdWString().c_str());
}

bool DeviceManager::LoadMapping(const QString& path, ArtNetNodeModel& nodes)
{
    if (!QFileInfo::exists(path))
        return false;
    const std::wstring file = path.toStdWString();
    deviceModel->Merge(file, true);
    return mappedDeviceModel->Load(file, *deviceModel, nodes) >= 0;
}

int DeviceManager::SaveMapping(const QString& path, const ArtNetNodeModel& nodes)
{
    return mappedDeviceModel->Save(path.toStdWString(), *deviceModel, nodes);
}

void DeviceManager::ClearAll()
{
    deviceModel->Clear();
    mappedDeviceModel->Clear();
}

MappedLedItem* DeviceManager::GetMappedItemByRow(int row) const
{
    return mappedDeviceModel->GetElement(row);
}

DeviceLedItem* DeviceManager::GetLEDFixtureByProduct(const std::wstring& product) const
{
    return deviceModel->GetLEDFixtureByProduct(product);
}

void DeviceManager::SetCanvasSize(int width, int height)
{
    const QMutexLocker lock(&mutex);
    canvasWidth = width;
    canvasHeight = height;
    mappedDeviceModel->SetCanvasSize(width, height);
}

void DeviceManager::GetCanvasSize(int& width, int& height) const
{
    width = canvasWidth;
    height = canvasHeight;
}

QList<QModelIndex> DeviceManager::AddMappedItems(std::vector<std::unique_ptr<MappedLedItem>> items)
{
    QList<QModelIndex> indices;
    for (auto& item : items) {
        const QMutexLocker lock(&mutex);
        if (item->uniqueID == 0)
            item->uniqueID = mappedDeviceModel->GetNextElementID();
        indices.append(mappedDeviceModel->AddMappingElement(std::move(item)));
    }
    emit mappingsChanged();
    return indices;
}

void DeviceManager::RemoveMappedObjects(const QList<qint64>& uniqueIDs)
{
    for (const qint64 uniqueID : uniqueIDs) {
        const QMutexLocker lock(&mutex);
        mappedDeviceModel->RemoveMappingElement(uniqueID);
    }
    emit mappingsChanged();
}
