// SPDX-License-Identifier: MIT
#include "Model/DeviceModel.h"

#include <algorithm>
#include <memory>
#include <set>

#include <QSignalBlocker>

#include "Language/Language.h"
#include "LibTools/XmlFile.h"
#include "Log/Log.h"
#include "Platform/Numbers.h"
#include "XmlText/XmlText.h"

namespace {

constexpr int ObserverKindCleared = 2;
constexpr int RightAligned = Qt::AlignRight | Qt::AlignVCenter;

/// Spellings of one manufacturer share a row.
QString ManufacturerKey(const std::wstring& manufacturer)
{
    return QString::fromStdWString(manufacturer).toUpper();
}

/// `cell` gives the item of a column of the fixture's row.
template <class Cell>
void SetFixtureTexts(const Cell& cell, const LEDFixture& fixture)
{
    for (const int column : {DeviceModel::NameColumn, DeviceModel::ProductColumn})
        cell(column)->setText(QString::fromStdWString(fixture.product));
    cell(DeviceModel::SizeColumn)->setText(SizeText(fixture.pixelMap));
    cell(DeviceModel::ChannelsColumn)->setText(QString::number(fixture.GetChannelCount()));
}

QList<QStandardItem*> EmptyRow()
{
    QList<QStandardItem*> row;
    for (int column = 0; column < DeviceModel::ColumnCount; ++column)
        row.append(new QStandardItem);
    for (const int column : {DeviceModel::SizeColumn, DeviceModel::ChannelsColumn})
        row[column]->setData(RightAligned, Qt::TextAlignmentRole);
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
    SetUpColumns();
}

DeviceModel::~DeviceModel() = default;

void DeviceModel::Clear()
{
    // The tables first: a listener of the reset must not find fixtures that are being deleted.
    ++revision_;
    fixtures.clear();
    QList<DeviceLedItem*>::clear();
    manufacturerRows.clear();
    firstOfProduct_.clear();
    nextUniqueID = 0;
    // Qt's clear() would take the columns too, and with them what their views know of them.
    beginResetModel();
    {
        const QSignalBlocker resetForAll(this);
        removeRows(0, rowCount());
    }
    endResetModel();
    SetChanged();
    WEFTObservableData data;
    data.kind = ObserverKindCleared;
    Notify(&data);
}

void DeviceModel::SetUpColumns()
{
    setColumnCount(ColumnCount);
    InEachLanguage(this, [this] {
        setHorizontalHeaderLabels(
            {tr("Fixture"), tr("Product Name"), tr("Size"), QString(), tr("Ch.")});
        setHeaderData(ChannelsColumn, Qt::Horizontal, tr("DMX channels"), Qt::ToolTipRole);
    });
    for (const int column : {SizeColumn, ChannelsColumn})
        setHeaderData(column, Qt::Horizontal, RightAligned, Qt::TextAlignmentRole);
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

SaveResult DeviceModel::Save(const std::wstring& path, const DiskWait& wait) const
{
    XmlText::Document document;
    WriteLibrary(document, [](const DeviceLedItem&) { return true; });
    return WriteXmlFile(path, document, wait);
}

void DeviceModel::WriteLibrary(tinyxml2::XMLDocument& document,
                               const std::function<bool(const DeviceLedItem&)>& isWanted) const
{
    auto& library = XmlText::AddElement(document, "LEDFixtureLibrary");
    XmlText::SetAttribute(library, "version", version);
    for (const DeviceLedItem* item : fixtures) {
        if (isWanted(*item))
            item->ToXml(library);
    }
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
        old = GetLEDFixtureByProduct(item->product); // the library may be another one by now
    }
    ++revision_;
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
    SetFixtureTexts([&row](int column) { return row[column]; }, item);
    row[IdentifierColumn]->setText(QString::number(item.uniqueID));
    delete row[ItemColumn];
    row[ItemColumn] = &item;
    ManufacturerRow(item.manufacturer).appendRow(row);
}

/// The cell that has the rows of the manufacturer's fixtures, which is made when there is none.
QStandardItem& DeviceModel::ManufacturerRow(const std::wstring& manufacturer)
{
    const QString key = ManufacturerKey(manufacturer);
    auto known = manufacturerRows.find(key);
    if (known == manufacturerRows.end()) {
        auto row = EmptyRow();
        row[NameColumn]->setText(QString::fromStdWString(manufacturer));
        appendRow(row);
        known = manufacturerRows.insert(key, row);
    }
    return *known->first();
}

const DeviceLedItem* DeviceModel::ChangeFixture(std::int64_t uniqueID, const LEDFixture& wanted)
{
    DeviceLedItem* item = GetLEDFixture(uniqueID);
    if (!item)
        return nullptr;
    const LEDFixture definition = wanted; // It may be that of the fixture that goes.
    if (DeviceLedItem* other = GetLEDFixtureByProduct(definition.product); other && other != item) {
        ZEN_LOG_INFO("The fixture \"%ls\" takes the place of another of this name",
                     definition.product.c_str());
        RemoveWithRow(*other);
    }
    ++revision_;
    const std::wstring product = item->product;
    const std::int64_t number = item->uniqueID;
    // All of it, AutomaticChannelCount too: the definition of before gives the file of before.
    static_cast<LEDFixture&>(*item) = definition;
    item->uniqueID = number;
    NoteFirstOf(product);
    NoteFirstOf(item->product);
    RemoveRowsThatItOverwrote(*item);
    MoveRow(*item);
    TidyManufacturers();
    return item;
}

/// Brings the fixture's row up to date and under its manufacturer.
void DeviceModel::MoveRow(DeviceLedItem& item)
{
    QStandardItem& present = *item.parent();
    SetFixtureTexts([&](int column) { return present.child(item.row(), column); }, item);
    QStandardItem& wanted = ManufacturerRow(item.manufacturer);
    if (&wanted != &present)
        wanted.appendRow(present.takeRow(item.row()));
}

/// A manufacturer's row has the spelling of its first fixture, and goes with its last row.
void DeviceModel::TidyManufacturers()
{
    QMap<QString, std::wstring> spellings;
    for (const DeviceLedItem* item : qAsConst(fixtures)) {
        const QString key = ManufacturerKey(item->manufacturer);
        if (!spellings.contains(key))
            spellings.insert(key, item->manufacturer);
    }
    for (const QString& key : manufacturerRows.keys()) {
        QStandardItem& cell = *manufacturerRows[key].first();
        if (spellings.contains(key))
            cell.setText(QString::fromStdWString(spellings[key]));
        else if (!cell.hasChildren()) {
            manufacturerRows.remove(key);
            removeRow(cell.row());
        }
    }
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
    return known == firstOfProduct_.end() ? nullptr : fixtures.value(known->second, nullptr);
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

void DeviceModel::RemoveWithRow(DeviceLedItem& item)
{
    QStandardItem& parent = *item.parent();
    // Rows before it may go with the fixture, and the fixture leaves its own cell first.
    const QPersistentModelIndex row = item.index().siblingAtColumn(ProductColumn);
    if (IsInLibrary(item))
        removeFixtureByUniqueID(item.uniqueID);
    parent.removeRow(row.row());
}

void DeviceModel::TakeBack(DeviceLedItem& item)
{
    const QString key = ManufacturerKey(item.manufacturer);
    RemoveWithRow(item);
    const QStandardItem* cell = manufacturerRows.value(key).value(0);
    if (!cell || cell->hasChildren())
        return;
    manufacturerRows.remove(key);
    removeRow(cell->row());
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
    ++revision_;
    removeAll(&item);
    // A fixture that overwrote others has their numbers too; all go.
    for (const qint64 key : fixtures.keys(&item))
        fixtures.remove(key);
    NoteFirstOf(item.product);
}

void DeviceModel::NoteFirstOf(const std::wstring& product)
{
    firstOfProduct_.erase(product);
    for (auto fixture = fixtures.begin(); fixture != fixtures.end(); ++fixture) {
        if (fixture.value()->product == product) {
            firstOfProduct_.emplace(product, fixture.key());
            return;
        }
    }
}
