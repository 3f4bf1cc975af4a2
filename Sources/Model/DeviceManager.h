// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QObject>
#include <QRecursiveMutex>
#include <QString>

#include "Model/DeviceModel.h"

class ArtNetNodeModel;
class DeviceListProxy;
class MappedDeviceModel;
class MappedLedItem;
class MappedObjectListProxy;

/// The one door to the library and the document. Main thread; the mutex keeps an element from being
/// seen half-written by the engine's walk.
class DeviceManager : public QObject
{
    Q_OBJECT

public:
    /// `path` is the user's library file. The models stand after Initialize.
    explicit DeviceManager(QString path);
    ~DeviceManager() override;

    /// Builds the models and their proxies. Always true.
    bool Initialize();

    /// Replaces the library by this file.
    void LoadLibrary(const QString& path);
    /// Merges a file into the library and saves the library.
    void MergeLibrary(const QString& path, bool force, const FixtureConflictCallback& callback);

    /// Merges the document's own fixtures into the library and loads the document. False when the
    /// file doesn't exist, which leaves everything as it is, or can't be read.
    bool LoadMapping(const QString& path, ArtNetNodeModel& nodes);
    /// 0 when the document was written.
    int SaveMapping(const QString& path, const ArtNetNodeModel& nodes);
    void ClearAll();

    [[nodiscard]] DeviceModel* GetDeviceModel() const { return deviceModel.get(); }
    [[nodiscard]] MappedDeviceModel* GetMappedDeviceModel() const
    {
        return mappedDeviceModel.get();
    }
    [[nodiscard]] DeviceListProxy* GetDeviceListProxy() const { return deviceListProxy.get(); }
    [[nodiscard]] MappedObjectListProxy* GetMappedObjectListProxy() const
    {
        return mappedObjectListProxy.get();
    }
    [[nodiscard]] QRecursiveMutex& GetMutex() { return mutex; }
    [[nodiscard]] MappedLedItem* GetMappedItemByRow(int row) const;
    [[nodiscard]] DeviceLedItem* GetLEDFixtureByProduct(const std::wstring& product) const;

    void SetCanvasSize(int width, int height);
    void GetCanvasSize(int& width, int& height) const;

    /// Adds elements that were made elsewhere; the document owns them then.
    QList<QModelIndex> AddMappedItems(std::vector<std::unique_ptr<MappedLedItem>> items);
    void RemoveMappedObjects(const QList<qint64>& uniqueIDs);

    int selectionMode = 0; ///< 0 no mark of the selection on the output, 1 solid, 2 flashing
    bool documentDirty = false;

signals:
    void mappingsChanged();
    void signalDocumentSavedState(bool saved);

private:
    QRecursiveMutex mutex;
    QString libraryPath;
    int canvasWidth = 100;
    int canvasHeight = 100;
    // The proxies go before the models that they show.
    std::unique_ptr<DeviceModel> deviceModel;
    std::unique_ptr<MappedDeviceModel> mappedDeviceModel;
    std::unique_ptr<DeviceListProxy> deviceListProxy;
    std::unique_ptr<MappedObjectListProxy> mappedObjectListProxy;
};
