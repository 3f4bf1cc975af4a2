// SPDX-License-Identifier: MIT
#include "Model/MappedDeviceModel.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include <QColor>
#include <QDebug>
#include <QMutexLocker>
#include <QSignalBlocker>

#include "LibTools/XmlFile.h"
#include "Log/Log.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceModel.h"
#include "Model/DocumentNetwork.h"
#include "Platform/Text.h"
#include "Settings/SettingsBlock.h"
#include "XmlText/XmlText.h"

namespace {

constexpr std::size_t LongestNodeAddress = 64;

void ReadManualNodes(const tinyxml2::XMLDocument& document, ArtNetNodeModel& nodes)
{
    const auto* list = document.FirstChildElement("ManualNetworkNodes");
    if (!list)
        return;
    for (const auto* child = list->FirstChildElement("ManualNode"); child;
         child = child->NextSiblingElement("ManualNode"))
    {
        const auto nodeName = XmlText::Attribute(*child, "Name");
        if (!nodeName)
            return;
        const auto address = XmlText::Attribute(*child, "IP");
        if (!address)
            continue;
        ArtNetNodeRecord record;
        record.name = Platform::WideToUtf8(*nodeName);
        record.ip = Platform::WideToUtf8(*address).substr(0, LongestNodeAddress);
        record.manual = true;
        nodes.AddManualNode(record);
    }
}

void WriteManualNodes(tinyxml2::XMLDocument& document, const ArtNetNodeModel& nodes)
{
    auto& list = XmlText::AddElement(document, "ManualNetworkNodes");
    for (const ArtNetNodeRecord& record : nodes.GetAllNodes()) {
        if (!record.manual)
            continue;
        auto& child = XmlText::AddElement(list, "ManualNode");
        XmlText::SetAttribute(child, "Name", Platform::Utf8ToWide(record.name));
        XmlText::SetAttribute(child, "IP", Platform::Utf8ToWide(record.ip));
    }
}

bool IsCanvasSize(const XmlText::Pair<std::int32_t>& size)
{
    const auto fits = [](std::int32_t side) {
        return side >= 1 && side <= MappedDeviceModel::MaxCanvasSize;
    };
    return fits(size.first) && fits(size.second);
}

QStandardItem* TextCell(const std::wstring& text)
{
    return new QStandardItem(QString::fromStdWString(text));
}

QString SizeText(const PixelMap& map)
{
    return QStringLiteral("%1x%2").arg(map.GetWidth()).arg(map.GetHeight());
}

} // namespace

/// The values that a <Mapping> element must have.
struct MappedDeviceModel::Header
{
    XmlText::Pair<std::int32_t> version;
    XmlText::Pair<std::int32_t> resolution;
    std::wstring name;
};

MappedDeviceModel::MappedDeviceModel(QObject* parent)
    : QStandardItemModel(parent)
{
    SetUpColumns();
    connect(this, &MappedDeviceModel::mappingsChanged, this,
            &MappedDeviceModel::RecalculateConflicts);
}

MappedDeviceModel::~MappedDeviceModel() = default;

void MappedDeviceModel::SetUpColumns()
{
    setColumnCount(8);
    const QString unnamed = QStringLiteral("?");
    setHorizontalHeaderLabels({tr("Manufacturer"), tr("Product Name"), tr("Size"), tr("ID"),
                               unnamed, unnamed, unnamed, unnamed, unnamed, tr("Address"),
                               tr("Description")});
}

void MappedDeviceModel::Clear()
{
    {
        const QMutexLocker lock(&mutex);
        elements.clear();
        byRow_.clear();
        QStandardItemModel::clear();
        nextElementID = 0;
        ++revision_;
        emit mappingsChanged();
    }
    SetUpColumns();
    merging = UniverseMerging();
}

// ---- Loading -----------------------------------------------------------------------------------

int MappedDeviceModel::Load(const std::wstring& path, const DeviceModel& library,
                            ArtNetNodeModel& nodes)
{
    Clear();
    XmlText::Document document;
    if (!ReadXmlFile(path, document)) {
        ZEN_LOG_ERROR("Could not read mapping XML file");
        return -1;
    }
    ReadManualNodes(document, nodes);
    const auto* mapping = document.FirstChildElement("Mapping");
    if (!mapping) {
        ZEN_LOG_ERROR("No Mapping node found");
        emit mappingsChanged();
        return 0;
    }
    Header header;
    if (!ReadHeader(*mapping, header))
        return -1;
    StoreHeader(*mapping, std::move(header));
    if (const auto settingsOfFile = UniverseMerging::FromXml(document))
        merging = *settingsOfFile;
    ReadElements(*mapping, library);
    ++revision_;
    emit mappingsChanged();
    return 0;
}

bool MappedDeviceModel::ReadHeader(const tinyxml2::XMLElement& mapping, Header& header)
{
    const auto fail = [](const char* message) {
        ZEN_LOG_ERROR("%s", message);
        return false;
    };
    const char* version = mapping.Attribute("version");
    if (!version)
        return fail("Mapping version not defined");
    const auto versionNumbers = XmlText::ParseIntPair(version, '.');
    if (!versionNumbers)
        return fail("Mapping version syntax error");
    const char* resolution = mapping.Attribute("resolution");
    if (!resolution)
        return fail("Mapping resolution not defined");
    const auto size = XmlText::ParseIntPair(resolution, ',');
    if (!size || !IsCanvasSize(*size))
        return fail("Mapping resolution syntax error");
    auto documentName = XmlText::Attribute(mapping, "name");
    if (!documentName)
        return fail("Mapping name not defined");
    header = {*versionNumbers, *size, std::move(*documentName)};
    return true;
}

void MappedDeviceModel::StoreHeader(const tinyxml2::XMLElement& mapping, Header header)
{
    autoUnicast = XmlText::ReadInt(mapping, "autoUnicast").value != 0;
    network = DocumentNetwork(mapping);
    versionMajor = header.version.first;
    versionMinor = header.version.second;
    canvasWidth = header.resolution.first;
    canvasHeight = header.resolution.second;
    name = std::move(header.name);
}

void MappedDeviceModel::ReadElements(const tinyxml2::XMLElement& mapping,
                                     const DeviceModel& library)
{
    const QMutexLocker lock(&mutex);
    std::vector<std::unique_ptr<MappedLedItem>> items;
    for (const auto* element = mapping.FirstChildElement("Element"); element;
         element = element->NextSiblingElement("Element"))
    {
        const std::int64_t identifier = ++nextElementID;
        auto item = MappedLedItem::FromXml(*element, library);
        if (!item)
            continue;
        item->uniqueID = identifier;
        items.push_back(std::move(item));
    }
    AddRows(std::move(items), false);
}

// ---- Saving ------------------------------------------------------------------------------------

int MappedDeviceModel::Save(const std::wstring& path, const DeviceModel& library,
                            const ArtNetNodeModel& nodes)
{
    const std::filesystem::path file(Platform::WideToUtf8(path));
    std::error_code failure;
    std::filesystem::create_directories(file.parent_path(), failure);
    if (!file.parent_path().empty() && !std::filesystem::is_directory(file.parent_path(), failure))
    {
        ZEN_LOG_ERROR("The folder of the mapping could not be made: %ls", path.c_str());
        return -1;
    }
    XmlText::Document document;
    library.WriteFixtures(XmlText::AddElement(document, "LEDFixtureLibrary"));
    merging.ToXml(document);
    WriteManualNodes(document, nodes);
    auto& mapping = XmlText::AddElement(document, "Mapping");
    const auto pair = [](int first, wchar_t separator, int second) {
        return std::to_wstring(first) + separator + std::to_wstring(second);
    };
    XmlText::SetAttribute(mapping, "name", name);
    XmlText::SetAttribute(mapping, "version", pair(versionMajor, L'.', versionMinor));
    XmlText::SetAttribute(mapping, "resolution", pair(canvasWidth, L',', canvasHeight));
    XmlText::SetAttribute(mapping, "autoUnicast", autoUnicast ? 1 : 0);
    XmlText::SetAttribute(mapping, "network",
                          settings ? settings->networkText.toStdWString() : network);
    WriteElements(mapping);
    return WriteXmlFile(path, document) ? 0 : 1;
}

void MappedDeviceModel::WriteElements(tinyxml2::XMLElement& mapping) const
{
    const QMutexLocker lock(&mutex);
    for (const MappedLedItem* item : byRow_)
        item->WriteElement(mapping);
}

// ---- Elements ----------------------------------------------------------------------------------

void MappedDeviceModel::AddRows(std::vector<std::unique_ptr<MappedLedItem>> items, bool withSize)
{
    if (items.empty())
        return;
    const int first = rowCount();
    beginInsertRows(QModelIndex(), first, first + static_cast<int>(items.size()) - 1);
    {
        // Each row on its own would have every proxy sort and map the whole table anew.
        const QSignalBlocker oneInsertionForAll(this);
        for (auto& item : items)
            AddRow(std::move(item), withSize);
    }
    endInsertRows();
}

void MappedDeviceModel::AddRow(std::unique_ptr<MappedLedItem> item, bool withSize)
{
    MappedLedItem* element = item.release();
    const DeviceLedItem& fixture = element->GetFixture();
    QList<QStandardItem*> row;
    row.reserve(ColumnCount);
    for (int column = 0; column < ColumnCount; ++column)
        row.append(nullptr);
    row[ManufacturerColumn] = TextCell(fixture.manufacturer);
    row[ProductColumn] = TextCell(fixture.product);
    row[SizeColumn] = new QStandardItem(withSize ? SizeText(fixture.pixelMap) : QString());
    row[ItemColumn] = element;
    row[NameColumn] = TextCell(element->description);
    auto* identifier = new QStandardItem(QString::number(element->uniqueID));
    identifier->setData(static_cast<qlonglong>(element->uniqueID), Qt::UserRole);
    row[IdentifierColumn] = identifier;
    row[AddressColumn] = element->GetDMXMapping()
                             ? TextCell(element->GetDMXMapping()->GetSortDescription())
                             : new QStandardItem;
    element->row = rowCount();
    element->CountChangesIn(&revision_);
    // The engine's order stands before the table tells its views.
    byRow_.push_back(element);
    elements.insert(element->uniqueID, element);
    ++revision_;
    appendRow(row);
}

QModelIndex MappedDeviceModel::AddMappingElement(std::unique_ptr<MappedLedItem> item)
{
    std::vector<std::unique_ptr<MappedLedItem>> items;
    items.push_back(std::move(item));
    return AddMappingElements(std::move(items)).front();
}

QModelIndexList
MappedDeviceModel::AddMappingElements(std::vector<std::unique_ptr<MappedLedItem>> items)
{
    const QMutexLocker lock(&mutex);
    const int first = rowCount();
    for (const auto& item : items)
        nextElementID = std::max(nextElementID, item->uniqueID);
    AddRows(std::move(items), true);
    RecalculateConflicts();
    QModelIndexList indexes;
    for (int row = first; row < rowCount(); ++row)
        indexes.append(index(row, IdentifierColumn));
    return indexes;
}

bool MappedDeviceModel::RemoveMappingElement(std::int64_t uniqueID)
{
    return RemoveMappingElements({uniqueID}) == 1;
}

int MappedDeviceModel::RemoveMappingElements(const QList<qint64>& uniqueIDs)
{
    const QMutexLocker lock(&mutex);
    std::vector<int> rows;
    for (const qint64 uniqueID : uniqueIDs) {
        const MappedLedItem* element = uniqueID > 0 ? elements.take(uniqueID) : nullptr;
        if (!element)
            continue;
        rows.push_back(element->QStandardItem::row());
        qDebug() << "RemoveMappingElement(" << uniqueID << ") found at " << rows.back();
    }
    std::ranges::sort(rows);
    // From the end, so that the rows before stay where they are; as ranges, since each removal
    // moves the rest of the table and of every proxy.
    for (auto end = rows.size(); end > 0;) {
        auto begin = end - 1;
        while (begin > 0 && rows[begin - 1] == rows[begin] - 1)
            --begin;
        const int count = static_cast<int>(end - begin);
        byRow_.erase(byRow_.begin() + rows[begin], byRow_.begin() + rows[begin] + count);
        ++revision_;
        removeRows(rows[begin], count);
        end = begin;
    }
    if (!rows.empty())
        RecalculateConflicts();
    return static_cast<int>(rows.size());
}

MappedLedItem* MappedDeviceModel::GetItemByUniqueID(std::int64_t uniqueID) const
{
    const QMutexLocker lock(&mutex);
    return elements.value(uniqueID, nullptr);
}

MappedLedItem* MappedDeviceModel::GetItemByDescription(const std::wstring& description) const
{
    const QMutexLocker lock(&mutex);
    const auto found = std::ranges::find(byRow_, description, &MappedLedItem::description);
    return found == byRow_.end() ? nullptr : *found;
}

QList<MappedLedItem*> MappedDeviceModel::GetAllItems() const
{
    return {byRow_.begin(), byRow_.end()};
}

QModelIndex MappedDeviceModel::GetIndexOfUniqueID(std::int64_t uniqueID) const
{
    const MappedLedItem* element = GetItemByUniqueID(uniqueID);
    return element ? index(element->QStandardItem::row(), 0) : QModelIndex();
}

bool MappedDeviceModel::IsFixtureUsed(std::int64_t fixtureID) const
{
    const QMutexLocker lock(&mutex);
    return std::ranges::any_of(byRow_, [fixtureID](const MappedLedItem* element) {
        return element->GetFixture().uniqueID == fixtureID;
    });
}

void MappedDeviceModel::UpdateFixtureInElements(std::int64_t fixtureID,
                                                const DeviceLedItem& fixture)
{
    const QMutexLocker lock(&mutex);
    for (std::size_t i = 0; i < byRow_.size(); ++i) {
        MappedLedItem& element = *byRow_[i];
        if (element.GetFixture().uniqueID != fixtureID)
            continue;
        DeviceLedItem& own = element.EditFixture();
        own.product = fixture.product;
        own.pixelMap = fixture.pixelMap;
        own.staticChannels = fixture.staticChannels;
        own.SetChannelCount(fixture.GetChannelCount());
        const int at = static_cast<int>(i);
        item(at, ProductColumn)->setText(QString::fromStdWString(own.product));
        item(at, SizeColumn)->setText(SizeText(own.pixelMap));
        if (element.GetDMXMapping())
            item(at, AddressColumn)
                ->setText(QString::fromStdWString(element.GetDMXMapping()->GetSortDescription()));
    }
    RecalculateConflicts();
}

void MappedDeviceModel::ReplaceNodeAddress(const QString& oldIpconf, const QString& newIpconf,
                                           const QString& newIpName)
{
    const std::wstring old = oldIpconf.toStdWString();
    for (MappedLedItem* element : byRow_) {
        const DMXMappingArtNet* mapping = element->GetArtNetMapping();
        if (mapping && mapping->GetIpconf() == old)
            element->EditArtNetMapping()->SetNode(newIpconf.toStdWString(),
                                                  newIpName.toStdWString());
    }
}

void MappedDeviceModel::UpdateAddressCells(const std::vector<int>& rows)
{
    for (const int row : rows) {
        const MappedLedItem* element = GetElement(row);
        if (element && element->GetDMXMapping())
            item(row, AddressColumn)
                ->setText(QString::fromStdWString(element->GetDMXMapping()->GetSortDescription()));
    }
    RecalculateConflicts();
}

void MappedDeviceModel::SetDescription(int row, const std::wstring& description)
{
    const QMutexLocker lock(&mutex);
    MappedLedItem* element = GetElement(row);
    if (!element)
        return;
    element->description = description;
    item(row, NameColumn)->setText(QString::fromStdWString(description));
}

void MappedDeviceModel::RecalculateConflicts()
{
    std::set<std::uint16_t> broadcast;
    std::set<std::uint16_t> chosen;
    for (const MappedLedItem* element : byRow_) {
        if (const DMXMappingArtNet* mapping = element->GetArtNetMapping())
            (mapping->IsAuto() ? broadcast : chosen).insert(mapping->GetPortAddress());
    }
    conflictUniverses.clear();
    for (const std::uint16_t portAddress : broadcast) {
        if (chosen.contains(portAddress))
            conflictUniverses.insert(portAddress);
    }
}

bool MappedDeviceModel::IsUniverseInConflict(const QModelIndex& index) const
{
    const MappedLedItem* element = GetElement(index.row());
    const DMXMappingArtNet* mapping = element ? element->GetArtNetMapping() : nullptr;
    return mapping && conflictUniverses.contains(mapping->GetPortAddress());
}

QVariant MappedDeviceModel::data(const QModelIndex& index, int role) const
{
    if (role == Qt::ForegroundRole && index.isValid()) {
        if (IsUniverseInConflict(index))
            return QColor(255, 0, 0);
        const MappedLedItem* element = GetElement(index.row());
        const DMXMappingArtNet* mapping = element ? element->GetArtNetMapping() : nullptr;
        if (mapping && mapping->IsAuto())
            return QColor(255, 102, 0);
    }
    return QStandardItemModel::data(index, role);
}

void MappedDeviceModel::SetCanvasSize(int width, int height)
{
    canvasWidth = width;
    ++revision_;
    emit mappingsChanged();
    canvasHeight = height;
    ++revision_;
    emit mappingsChanged();
}

void MappedDeviceModel::SetTestImage(const QImage& picture)
{
    constexpr std::uint32_t fourBytes = 4;
    testImage = picture.convertToFormat(QImage::Format_ARGB32);
    testBitmap.reset();
    if (testImage.isNull())
        return;
    testBitmap = ZenBitmap::Create(testImage.width(), testImage.height(), fourBytes);
    if (!testBitmap)
        return;
    for (int y = 0; y < testImage.height(); ++y) {
        const auto* source = reinterpret_cast<const QRgb*>(testImage.constScanLine(y));
        std::uint8_t* target = testBitmap->data + std::ptrdiff_t{y} * testBitmap->bytesPerRow;
        for (int x = 0; x < testImage.width(); ++x) {
            *target++ = static_cast<std::uint8_t>(qBlue(source[x]));
            *target++ = static_cast<std::uint8_t>(qGreen(source[x]));
            *target++ = static_cast<std::uint8_t>(qRed(source[x]));
            *target++ = 255;
        }
    }
}
