// SPDX-License-Identifier: MIT
#include "Model/DeviceModel.h"

#include <algorithm>
#include <memory>
#include <set>

#include "LibTools/XmlFile.h"
#include "Log/Log.h"
#include "Platform/Numbers.h"
#include "XmlText/XmlText.h"

namespace {

constexpr int VisibleColumns = 5;
constexpr int ObserverKindCleared = 2;

QList<QStandardItem*> EmptyRow()
{
    QList<QStandardItem*> row;
    for (int column = 0; column < DeviceModel::ColumnCount; ++column)
        row.append(new QStandardItem);
    return row;
}

int VersionOf(const tinyxml2::XMLElement& library)
{
    const char* text = library.Attribute("version");
    return text ? Platform::ParseIntAutoBase(text).value_or(0) : 0;
}

} // namespace

FixtureConflictCallback DeviceModel::defaultConflictCallback = [](const QString&, const QString&) {
    return KeepFixture;
};

DeviceModel::DeviceModel(QObject* parent)
    : QStandardItemModel(parent)
{
    Clear();
}

DeviceModel::~DeviceModel() = default;

void DeviceModel::Clear()
{
    // The tables first: a listener of the reset must not find fixtures that are being deleted.
    fixtures.clear();
    QList<DeviceLedItem*>::clear();
    manufacturerRows.clear();
    firstOfProduct_.clear();
    nextUniqueID = 0;
    QStandardItemModel::clear();
    SetUpColumns();
    SetChanged();
    WEFTObservableData data;
    data.kind = ObserverKindCleared;
    Notify(&data);
}

void DeviceModel::SetUpColumns()
{
    setColumnCount(VisibleColumns);
    setHorizontalHeaderLabels({tr("Manufacturer"), tr("Product Name"), tr("Size")});
}

int DeviceModel::Merge(const std::wstring& path, bool force,
                       const FixtureConflictCallback& callback)
{
    return Merge(XmlFile(path), force, callback);
}

int DeviceModel::Merge(const XmlFile& file, bool force, const FixtureConflictCallback& callback)
{
    ZEN_LOG_INFO("DeviceModel::Merge(%ls)", file.Path().c_str());
    SetChanged();
    readWhole_ = false;
    if (!file.IsReadable()) {
        ZEN_LOG_ERROR("Could not read library XML file");
        return 0;
    }
    const auto* library = file.Document().FirstChildElement("LEDFixtureLibrary");
    if (!library) {
        ZEN_LOG_ERROR("No LEDFixtureLibrary node found");
        return 0;
    }
    const int fileVersion = VersionOf(*library);
    readWhole_ = true;
    if (!force && fileVersion <= version)
        return 0;
    version = fileVersion;
    for (const auto* element = library->FirstChildElement("LEDFixture"); element;
         element = element->NextSiblingElement("LEDFixture"))
    {
        auto item = DeviceLedItem::FromXml(*element, GetNextUniqueID());
        if (!item)
            readWhole_ = false;
        else if (AddFixture(std::move(item), callback) == StopMerge)
            break;
    }
    return 0;
}

int DeviceModel::Save(const std::wstring& path) const
{
    XmlText::Document document;
    auto& library = XmlText::AddElement(document, "LEDFixtureLibrary");
    XmlText::SetAttribute(library, "version", version);
    WriteFixtures(library);
    return WriteXmlFile(path, document) ? 0 : 1;
}

int DeviceModel::WriteFixtures(tinyxml2::XMLNode& parent) const
{
    tinyxml2::XMLElement* element = parent.ToElement();
    for (const DeviceLedItem* item : fixtures) {
        if (element)
            item->ToXml(*element);
    }
    return 0;
}

int DeviceModel::AddFixture(std::unique_ptr<DeviceLedItem>&& item,
                            const FixtureConflictCallback& callback)
{
    DeviceLedItem* old = GetLEDFixtureByProduct(item->product);
    if (old) {
        if (old->pixelMap == item->pixelMap)
            return KeepFixture;
        const auto& ask = callback ? callback : defaultConflictCallback;
        const int answer = ask ? ask(QString::fromStdWString(item->manufacturer),
                                     QString::fromStdWString(item->product))
                               : KeepFixture;
        if (answer != OverwriteFixture)
            return answer == KeepFixture ? KeepFixture : StopMerge;
    }
    if (item->uniqueID == 0)
        item->uniqueID = GetNextUniqueID();
    if (old)
        Replace(*old, *item);
    append(item.get());
    fixtures[item->uniqueID] = item.get();
    firstOfProduct_.try_emplace(item->product, item->uniqueID);
    AddRow(*item.release());
    return 0;
}

void DeviceModel::Replace(DeviceLedItem& old, DeviceLedItem& item)
{
    // The numbers that elements hold now lead to the new definition. The old row stays, and its
    // item takes the new pixels and number, for a view that still shows it.
    for (const qint64 key : fixtures.keys(&old))
        fixtures[key] = &item;
    removeAll(&old);
    old.pixelMap = item.pixelMap;
    old.uniqueID = item.uniqueID;
}

void DeviceModel::AddRow(DeviceLedItem& item)
{
    auto row = EmptyRow();
    row[ProductColumn]->setText(QString::fromStdWString(item.product));
    row[SizeColumn]->setText(
        QStringLiteral("%1x%2").arg(item.pixelMap.GetWidth()).arg(item.pixelMap.GetHeight()));
    row[IdentifierColumn]->setText(QString::number(item.uniqueID));
    delete row[ItemColumn];
    row[ItemColumn] = &item;

    const QString name = QString::fromStdWString(item.manufacturer);
    auto known = manufacturerRows.find(name.toUpper());
    if (known == manufacturerRows.end()) {
        auto manufacturer = EmptyRow();
        manufacturer[ManufacturerColumn]->setText(name);
        appendRow(manufacturer);
        known = manufacturerRows.insert(name.toUpper(), manufacturer);
    }
    known->first()->appendRow(row);
}

DeviceLedItem* DeviceModel::GetLEDFixture(std::int64_t uniqueID) const
{
    DeviceLedItem* item = fixtures.value(uniqueID, nullptr);
    if (!item)
        ZEN_LOG_ERROR("GetLEDFixture could not find #%lld", static_cast<long long>(uniqueID));
    return item;
}

DeviceLedItem* DeviceModel::GetLEDFixtureByProduct(const std::wstring& product) const
{
    const auto known = firstOfProduct_.find(product);
    if (known != firstOfProduct_.end()) {
        DeviceLedItem* item = fixtures.value(known->second, nullptr);
        if (item && item->product == product)
            return item;
    }
    // The fixture editor changes names in place; firstOfProduct_ follows with the next reload.
    const auto found = std::ranges::find(fixtures, product, &DeviceLedItem::product);
    return found == fixtures.end() ? nullptr : *found;
}

QStringList DeviceModel::GetManufacturers() const
{
    std::set<std::wstring> names;
    for (const DeviceLedItem* item : fixtures)
        names.insert(item->manufacturer);
    QStringList list;
    for (const std::wstring& name : names)
        list.append(QString::fromStdWString(name));
    list.sort(Qt::CaseSensitive);
    return list;
}

void DeviceModel::removeFixtureByUniqueID(std::int64_t uniqueID)
{
    DeviceLedItem* item = fixtures.value(uniqueID, nullptr);
    if (!item)
        return;
    ZEN_LOG_INFO("removeFixtureByUniqueID( %lld ) devItem=@%p", static_cast<long long>(uniqueID),
                 static_cast<const void*>(item));
    // Not by its names: two fixtures have the same ones when the editor has renamed one of them.
    Remove(*item);
}

void DeviceModel::removeFixture(const std::wstring& manufacturer, const std::wstring& product)
{
    const auto found = std::find_if(fixtures.begin(), fixtures.end(), [&](const auto* item) {
        return item->manufacturer == manufacturer && item->product == product;
    });
    if (found != fixtures.end())
        Remove(*found.value());
}

void DeviceModel::Remove(DeviceLedItem& item)
{
    ZEN_LOG_INFO("removeFixture( %lld ) current=@%p", static_cast<long long>(fixtures.key(&item)),
                 static_cast<const void*>(&item));
    RemoveRowsThatItOverwrote(item);
    Forget(item);
    // The row's cell owns the item. It is taken out here; the caller removes the row.
    if (QStandardItem* parent = item.parent())
        parent->takeChild(item.row(), item.column());
    delete &item;
}

void DeviceModel::RemoveRowsThatItOverwrote(const DeviceLedItem& item)
{
    for (const auto& manufacturer : qAsConst(manufacturerRows)) {
        QStandardItem& fixtureRows = *manufacturer.first();
        for (int row = fixtureRows.rowCount() - 1; row >= 0; --row) {
            const auto* old = dynamic_cast<DeviceLedItem*>(fixtureRows.child(row, ItemColumn));
            if (old && old != &item && fixtures.value(old->uniqueID, nullptr) == &item)
                fixtureRows.removeRow(row);
        }
    }
}

void DeviceModel::Forget(DeviceLedItem& item)
{
    removeAll(&item);
    // A fixture that overwrote others has their numbers too; all go.
    for (const qint64 key : fixtures.keys(&item))
        fixtures.remove(key);
    firstOfProduct_.erase(item.product);
    for (auto left = fixtures.begin(); left != fixtures.end(); ++left) {
        if (left.value()->product == item.product) {
            firstOfProduct_.emplace(item.product, left.key());
            break;
        }
    }
}
