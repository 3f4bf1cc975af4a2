// SPDX-License-Identifier: MIT
#include "Model/DeviceManager.h"

#include "LibTools/XmlFile.h"
#include "Log/Log.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceListProxy.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedObjectListProxy.h"
#include "Model/MappingFile.h"

#include <QFile>
#include <QFileInfo>
#include <QMutexLocker>
#include <QThread>

#include <system_error>
#include <utility>

namespace {

/// Another process may be writing the file; it gets half a second to finish.
std::unique_ptr<XmlFile> ReadPatiently(const QString& path)
{
    constexpr int tries = 10;
    constexpr unsigned long pauseMs = 50;
    auto file = std::make_unique<XmlFile>(path.toStdWString());
    for (int i = 1; i < tries && !file->IsReadable() && QFileInfo::exists(path); ++i) {
        QThread::msleep(pauseMs);
        file = std::make_unique<XmlFile>(path.toStdWString());
    }
    return file;
}

} // namespace

DeviceManager::DeviceManager(QString path)
    : libraryPath(std::move(path))
{
    qRegisterMetaType<Zen::Vector4DF>("Zen::Vector4DF");
    qRegisterMetaType<int64_t>("int64_t");
}

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

// ---- The library -------------------------------------------------------------------------------

bool DeviceManager::LoadLibrary(const QString& path)
{
    const auto file = ReadPatiently(path);
    deviceModel->Clear();
    deviceModel->Merge(*file, true);
    FollowLibrary();
    if (path == libraryPath) {
        if (deviceModel->WasReadWhole() || !QFileInfo::exists(path))
            libraryRead_ = LibraryRead::Whole;
        else
            libraryRead_ = file->IsReadable() ? LibraryRead::Partly : LibraryRead::NotAtAll;
    }
    return file->IsReadable();
}

bool DeviceManager::MergeLibrary(const QString& path, bool force,
                                 const FixtureConflictCallback& callback, const DiskWait& wait)
{
    deviceModel->Merge(path.toStdWString(), force, callback);
    FollowLibrary();
    return SaveLibrary(wait);
}

void DeviceManager::FollowLibrary()
{
    ElementIds changed;
    {
        const QMutexLocker lock(&mutex);
        mappedDeviceModel->RebindFixtures(*deviceModel);
        for (const std::int64_t fixtureID : mappedDeviceModel->GetOutdatedFixtures(*deviceModel)) {
            const auto ids = mappedDeviceModel->UpdateFixtureInElements(
                fixtureID, *deviceModel->GetLEDFixture(fixtureID));
            changed.insert(changed.end(), ids.begin(), ids.end());
        }
    }
    if (TellRefitted(changed))
        SetDocumentDirty(true);
}

bool DeviceManager::TellRefitted(const ElementIds& changed)
{
    if (changed.empty())
        return false;
    emit elementsRefitted(changed);
    emit mappingsChanged();
    return true;
}

bool DeviceManager::SaveLibrary(const DiskWait& wait)
{
    SaveResult saved = KeepUnreadLibrary();
    if (saved)
        saved = deviceModel->Save(libraryPath.toStdWString(), wait);
    librarySaved_ = TellSaved(saved);
    return librarySaved_;
}

bool DeviceManager::TellSaved(const SaveResult& saved)
{
    if (saved) {
        emit librarySaved();
        return true;
    }
    ZEN_LOG_ERROR("The fixture library could not be saved to %ls",
                  libraryPath.toStdWString().c_str());
    emit librarySaveFailed(libraryPath, saved.Reason());
    return false;
}

QByteArray DeviceManager::ReadLibraryFile() const
{
    QFile file(libraryPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool DeviceManager::WriteLibraryFile(const QByteArray& bytes, const DiskWait& wait)
{
    return TellSaved(DoOnDisk(wait, [this, &bytes] {
        return WriteWholeFile(libraryPath.toStdWString(), bytes.toStdString());
    }));
}

bool DeviceManager::ReplaceLibrary(const QByteArray& bytes, const DiskWait& wait)
{
    if (!WriteLibraryFile(bytes, wait))
        return false;
    librarySaved_ = true;
    libraryRead_ = LibraryRead::Whole;
    deviceModel->Clear();
    deviceModel->Merge(libraryPath.toStdWString(), true);
    KeepFixturesOfDocument();
    FollowLibrary();
    return true;
}

void DeviceManager::KeepFixturesOfDocument()
{
    for (const MappedLedItem* element : mappedDeviceModel->GetAllItems()) {
        const DeviceLedItem& own = element->GetFixture();
        const DeviceLedItem* present = deviceModel->GetLEDFixtureByProduct(own.product);
        if (present && !present->HasDefinitionOf(own)) {
            deviceModel->ChangeFixture(present->uniqueID, own);
        } else if (!present) {
            auto fixture = std::make_unique<DeviceLedItem>(own);
            fixture->uniqueID = 0;
            deviceModel->AddFixture(std::move(fixture));
        }
    }
}

/// Fails when the user's fixtures would be lost by a save.
SaveResult DeviceManager::KeepUnreadLibrary()
{
    if (libraryRead_ == LibraryRead::Whole)
        return {};
    if (libraryRead_ == LibraryRead::NotAtAll) {
        // The process that was writing the file may have finished. The library has only the
        // program's fixtures so far: the user's own win.
        deviceModel->Merge(XmlFile(libraryPath.toStdWString()), true,
                           [](const QString&, const QString&) { return OverwriteFixture; });
        FollowLibrary();
    }
    const bool known = libraryRead_ == LibraryRead::NotAtAll && deviceModel->WasReadWhole();
    if (!known && QFileInfo::exists(libraryPath)) {
        const QString aside = KeepUnreadableFile(libraryPath);
        if (aside.isEmpty())
            return std::make_error_code(std::errc::operation_not_permitted);
        emit libraryKeptAside(aside);
    }
    libraryRead_ = LibraryRead::Whole;
    return {};
}

bool DeviceManager::RemoveFixture(const QModelIndex& proxyIndex)
{
    if (!proxyIndex.isValid() || !proxyIndex.parent().isValid())
        return false;
    const QModelIndex source = deviceListProxy->mapToSource(proxyIndex);
    const QModelIndex parent = deviceListProxy->mapToSource(proxyIndex.parent());
    if (!source.isValid() || !parent.isValid())
        return false;
    const QModelIndex cell = deviceModel->index(source.row(), DeviceModel::ItemColumn, parent);
    auto* fixture = dynamic_cast<DeviceLedItem*>(deviceModel->itemFromIndex(cell));
    if (!fixture)
        return false;
    deviceModel->RemoveWithRow(*fixture);
    return true;
}

bool DeviceManager::AddFixture(const LEDFixture& fixture)
{
    return AddFixtures({fixture}) > 0;
}

std::size_t DeviceManager::AddFixtures(const std::vector<LEDFixture>& fixtures)
{
    const auto keep = [](const QString&, const QString&) {
        return KeepFixture;
    };
    std::size_t added = 0;
    for (const LEDFixture& fixture : fixtures) {
        auto item = std::make_unique<DeviceLedItem>(fixture);
        item->uniqueID = 0;
        if (deviceModel->AddFixture(std::move(item), keep) == 0)
            ++added;
    }
    if (added > 0)
        FollowLibrary();
    return added;
}

bool DeviceManager::ChangeFixture(std::int64_t fixtureID, const LEDFixture& wanted)
{
    ElementIds changed;
    {
        const QMutexLocker lock(&mutex);
        const DeviceLedItem* other = deviceModel->GetLEDFixtureByProduct(wanted.product);
        const std::int64_t replaced = other ? other->uniqueID : fixtureID;
        const DeviceLedItem* fixture = deviceModel->ChangeFixture(fixtureID, wanted);
        if (!fixture)
            return false;
        changed = mappedDeviceModel->UpdateFixtureInElements(fixture->uniqueID, *fixture);
        if (replaced != fixture->uniqueID) {
            const auto joined = mappedDeviceModel->UpdateFixtureInElements(replaced, *fixture);
            changed.insert(changed.end(), joined.begin(), joined.end());
        }
    }
    (void)TellRefitted(changed);
    return true;
}

DeviceLedItem* DeviceManager::GetLEDFixtureByProduct(const std::wstring& product) const
{
    return deviceModel->GetLEDFixtureByProduct(product);
}

bool DeviceManager::GetDeviceSize(std::int64_t fixtureID, int& width, int& height) const
{
    const DeviceLedItem* fixture = deviceModel->GetFixtures().value(fixtureID, nullptr);
    if (!fixture) {
        ZEN_LOG_ERROR("GetDeviceSize did not find a Library item with ID %lld",
                      static_cast<long long>(fixtureID));
        return false;
    }
    width = fixture->pixelMap.GetWidth();
    height = fixture->pixelMap.GetHeight();
    return true;
}

int DeviceManager::GetDeviceChannelCount(std::int64_t fixtureID) const
{
    const DeviceLedItem* fixture = deviceModel->GetFixtures().value(fixtureID, nullptr);
    if (!fixture) {
        ZEN_LOG_ERROR("GetDeviceSize did not find a Library item with ID %lld",
                      static_cast<long long>(fixtureID));
        return 0;
    }
    return fixture->GetChannelCount();
}

// ---- The document ------------------------------------------------------------------------------

MappingFile DeviceManager::ReadMapping(const QString& path) const
{
    return {path, *deviceModel};
}

void DeviceManager::LoadMapping(MappingFile file, ArtNetNodeModel& nodes)
{
    // Its fixtures have no version. With theirs, the program's fixtures would be news at the next
    // start: those that the operator deleted would be back, and each changed one asked about.
    const int version = deviceModel->GetVersion();
    deviceModel->Merge(file.File(), true, file.ConflictAnswers());
    deviceModel->SetVersion(version);
    mappedDeviceModel->Load(std::move(file), *deviceModel, nodes);
}

bool DeviceManager::LoadMapping(const QString& path, ArtNetNodeModel& nodes)
{
    MappingFile file = ReadMapping(path);
    if (!file.IsReadable())
        return false;
    LoadMapping(std::move(file), nodes);
    return true;
}

SaveResult DeviceManager::SaveMapping(const QString& path, const ArtNetNodeModel& nodes,
                                      const DiskWait& wait)
{
    return mappedDeviceModel->Save(path.toStdWString(), *deviceModel, nodes, wait);
}

void DeviceManager::MappingToXml(tinyxml2::XMLDocument& document,
                                 const ArtNetNodeModel& nodes) const
{
    mappedDeviceModel->ToXml(document, *deviceModel, nodes);
}

void DeviceManager::ClearAll()
{
    deviceModel->Clear();
    mappedDeviceModel->Clear();
}

void DeviceManager::CreateSceneItems()
{
    ElementIds ids;
    for (int row = 0; row < mappedDeviceModel->rowCount(); ++row) {
        const MappedLedItem& element = *mappedDeviceModel->GetElement(row);
        if (element.GetVideoMapping())
            ids.push_back(element.uniqueID);
        else
            ZEN_LOG_ERROR("Unexpected disappearance of VideoMapping!");
    }
    emit elementsAdded(ids);
}

void DeviceManager::SetDocumentDirty(bool dirty)
{
    documentDirty = dirty;
    emit signalDocumentSavedState(!dirty);
}

// ---- Adding and removing elements --------------------------------------------------------------

QModelIndex DeviceManager::AddMappedObject(const MappedObjectParams& params)
{
    const auto added = AddMappedObjects({params});
    return added.empty() ? QModelIndex() : added.front().index;
}

std::vector<AddedElement>
DeviceManager::AddMappedObjects(const std::vector<MappedObjectParams>& records)
{
    std::vector<std::unique_ptr<MappedLedItem>> items;
    std::vector<AddedElement> added;
    QModelIndexList indexes;
    {
        const QMutexLocker lock(&mutex);
        for (const MappedObjectParams& record : records) {
            const DeviceLedItem* fixture = deviceModel->GetLEDFixture(record.fixtureID);
            if (!fixture)
                continue;
            const std::int64_t uniqueID = mappedDeviceModel->GetNextElementID();
            const DMXMappingArtNet address(record.subnet, record.universe, record.channel,
                                           record.ipconf.toStdWString(),
                                           record.ipName.toStdWString());
            items.push_back(std::make_unique<MappedLedItem>(
                fixture->product + L'-' + std::to_wstring(uniqueID), *fixture,
                std::make_unique<VideoMapping>(), &address));
            items.back()->uniqueID = uniqueID;
            added.push_back({QModelIndex(), record});
        }
        indexes = mappedDeviceModel->AddMappingElements(std::move(items));
        for (std::size_t i = 0; i < added.size(); ++i)
            added[i].index = indexes[static_cast<int>(i)];
    }
    TellAdded(indexes);
    return added;
}

QList<QModelIndex> DeviceManager::AddMappedItems(std::vector<std::unique_ptr<MappedLedItem>> items)
{
    QList<QModelIndex> indexes;
    {
        const QMutexLocker lock(&mutex);
        for (const auto& item : items) {
            if (item->uniqueID == 0 || mappedDeviceModel->GetItemByUniqueID(item->uniqueID))
                item->uniqueID = mappedDeviceModel->GetNextElementID();
        }
        indexes = mappedDeviceModel->AddMappingElements(std::move(items));
    }
    TellAdded(indexes);
    return indexes;
}

void DeviceManager::TellAdded(const QModelIndexList& indexes)
{
    ElementIds ids;
    for (const QModelIndex& index : indexes)
        ids.push_back(GetUniqueID(index));
    emit elementsAdded(ids);
    emit mappingsChanged();
}

void DeviceManager::RemoveMappedObjects(const QList<qint64>& uniqueIDs)
{
    (void)TakeElements({uniqueIDs.begin(), uniqueIDs.end()});
}

TakenElements DeviceManager::TakeElements(const ElementIds& ids)
{
    emit elementsAboutToBeRemoved(ids);
    TakenElements taken;
    {
        const QMutexLocker lock(&mutex);
        taken = mappedDeviceModel->TakeElements(ids);
    }
    emit mappingsChanged();
    return taken;
}

void DeviceManager::PutBackElements(TakenElements elements)
{
    ElementIds ids;
    {
        const QMutexLocker lock(&mutex);
        for (const TakenElement& taken : elements) {
            ids.push_back(taken.element->uniqueID);
            mappedDeviceModel->RebindFixture(*taken.element, *deviceModel);
        }
        mappedDeviceModel->PutBackElements(std::move(elements));
    }
    emit elementsAdded(ids);
    emit mappingsChanged();
}
