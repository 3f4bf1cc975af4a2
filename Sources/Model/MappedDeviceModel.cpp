// SPDX-License-Identifier: MIT
#include "Model/MappedDeviceModel.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>
#include <utility>

#include <QLoggingCategory>
#include <QMutexLocker>
#include <QSignalBlocker>

#include "Language/Language.h"
#include "Model/DeviceModel.h"
#include "Model/PatchText.h"

namespace {

/// A line for each of thousands of elements costs more than the work, so these lines are off unless
/// QT_LOGGING_RULES turns them on.
Q_LOGGING_CATEGORY(ModelTrace, "pixelweft.model", QtInfoMsg)

/// So many rows may come or go one by one; for more, the table and its proxies take one change of
/// the whole layout, which costs as much as some insertions.
constexpr std::size_t AFew = 8;

QString AddressText(const MappedLedItem& element)
{
    const DMXMappingArtNet* address = element.GetArtNetMapping();
    return address ? AddressText(*address) : QString();
}

QString NodeText(const MappedLedItem& element)
{
    const DMXMappingArtNet* address = element.GetArtNetMapping();
    if (!address)
        return {};
    const bool hasName = !address->IsAuto() && !address->GetIpName().empty();
    return QString::fromStdWString(hasName ? address->GetIpName() : address->GetIpconf());
}

QStandardItem* TextCell(const std::wstring& text)
{
    return new QStandardItem(QString::fromStdWString(text));
}

} // namespace

MappedDeviceModel::MappedDeviceModel(QObject* parent)
    : QStandardItemModel(parent)
{
    SetUpColumns();
    connect(this, &MappedDeviceModel::mappingsChanged, this,
            &MappedDeviceModel::RecalculateConflicts);
    // These connections are the first ones. So every other listener finds the elements in the
    // tables while they are about to be removed, and not afterwards.
    connect(this, &MappedDeviceModel::rowsAboutToBeRemoved, this,
            [this](const QModelIndex&, int first, int last) {
                for (int row = first; row <= last; ++row)
                    elements.remove(GetElement(row)->uniqueID);
            });
    connect(this, &MappedDeviceModel::rowsRemoved, this,
            [this](const QModelIndex&, int first, int last) {
                byRow_.erase(byRow_.begin() + first, byRow_.begin() + last + 1);
                ++revision_;
            });
}

MappedDeviceModel::~MappedDeviceModel() = default;

void MappedDeviceModel::SetUpColumns()
{
    // All at once: a proxy forgets its column when an empty table gets more of them a second time.
    setColumnCount(ColumnCount);
    InEachLanguage(this, [this] {
        const QString unnamed = QStringLiteral("?");
        setHorizontalHeaderLabels({tr("Manufacturer"), tr("Product Name"), tr("Size"), tr("ID"),
                                   unnamed, tr("Description"), unnamed, unnamed, unnamed,
                                   tr("Address"), tr("Node")});
    });
}

void MappedDeviceModel::Clear()
{
    {
        const QMutexLocker lock(&mutex);
        elements.clear();
        byRow_.clear();
        // Qt's clear() would take the columns too, and with them what their views know of them.
        beginResetModel();
        {
            const QSignalBlocker resetForAll(this);
            removeRows(0, rowCount());
        }
        endResetModel();
        nextElementID = 0;
        ++revision_;
        emit mappingsChanged();
    }
    merging = UniverseMerging::OfNewDocument();
}

// ---- Elements ----------------------------------------------------------------------------------

void MappedDeviceModel::AddRows(std::vector<std::unique_ptr<MappedLedItem>> items, bool withSize)
{
    std::vector<QList<QStandardItem*>> rows;
    rows.reserve(items.size());
    for (auto& item : items)
        rows.push_back(MakeRow(std::move(item), withSize));
    AppendElementRows(rows);
}

QList<QStandardItem*> MappedDeviceModel::MakeRow(std::unique_ptr<MappedLedItem> item, bool withSize)
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
    row[AddressColumn] = new QStandardItem(AddressText(*element));
    row[NodeColumn] = new QStandardItem(NodeText(*element));
    return row;
}

void MappedDeviceModel::AppendElementRows(const std::vector<QList<QStandardItem*>>& rows)
{
    if (rows.empty())
        return;
    const int first = rowCount();
    beginInsertRows(QModelIndex(), first, first + static_cast<int>(rows.size()) - 1);
    {
        // With a signal for each row, every proxy would sort and index the whole table each time.
        const QSignalBlocker oneInsertionForAll(this);
        for (const QList<QStandardItem*>& row : rows)
            InsertElementRow(rowCount(), row);
    }
    endInsertRows();
}

void MappedDeviceModel::InsertElementRow(int row, const QList<QStandardItem*>& cells)
{
    auto* element = static_cast<MappedLedItem*>(cells[ItemColumn]);
    element->row = row;
    element->CountChangesIn(&revision_);
    // The engine's order is up to date before the table notifies its views.
    byRow_.insert(byRow_.begin() + row, element);
    elements.insert(element->uniqueID, element);
    ++revision_;
    insertRow(row, cells);
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
    return !TakeElements({uniqueID}).empty();
}

TakenElements MappedDeviceModel::TakeElements(const std::vector<std::int64_t>& ids)
{
    const QMutexLocker lock(&mutex);
    std::unordered_set<const MappedLedItem*> leaving;
    for (const std::int64_t id : ids) {
        if (const MappedLedItem* element = elements.value(id, nullptr))
            leaving.insert(element);
    }
    std::vector<int> rows;
    TakenElements taken;
    for (int row = 0; row < rowCount(); ++row) {
        if (!leaving.contains(GetElement(row)))
            continue;
        qCDebug(ModelTrace) << "RemoveMappingElement(" << GetElement(row)->uniqueID << ") found at "
                            << row;
        rows.push_back(row);
        taken.push_back({row, !item(row, SizeColumn)->text().isEmpty(), nullptr});
    }
    if (rows.size() > AFew && rows.front() + static_cast<int>(rows.size()) < rowCount())
        GatherAtEnd(rows);
    {
        // The rows follow at once: until then each element is found under its row as before.
        const QSignalBlocker blocker(this);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            taken[i].element.reset(static_cast<MappedLedItem*>(takeItem(rows[i], ItemColumn)));
            taken[i].element->CountChangesIn(nullptr);
        }
    }
    // From the end, so that the rows before stay where they are; as ranges, since each removal
    // moves the rest of the table and of every proxy.
    for (auto end = rows.size(); end > 0;) {
        auto begin = end - 1;
        while (begin > 0 && rows[begin - 1] == rows[begin] - 1)
            --begin;
        removeRows(rows[begin], static_cast<int>(end - begin));
        end = begin;
    }
    if (!rows.empty())
        RecalculateConflicts();
    return taken;
}

void MappedDeviceModel::PutBackElements(TakenElements taken)
{
    const QMutexLocker lock(&mutex);
    const int stay = rowCount();
    std::vector<QList<QStandardItem*>> rows;
    rows.reserve(taken.size());
    for (TakenElement& back : taken)
        rows.push_back(MakeRow(std::move(back.element), back.showsSize));
    if (taken.size() <= AFew) {
        for (std::size_t i = 0; i < rows.size(); ++i)
            InsertElementRow(std::min(taken[i].row, rowCount()), rows[i]);
    } else {
        // One insertion and one change of the layout, however scattered the rows are.
        AppendElementRows(rows);
        std::vector<int> target(static_cast<std::size_t>(stay) + taken.size());
        std::size_t staying = 0;
        std::size_t returned = 0;
        for (int row = 0; row < std::ssize(target); ++row) {
            const bool returns = returned < taken.size() &&
                                 (taken[returned].row <= row || std::cmp_equal(staying, stay));
            target[returns ? static_cast<std::size_t>(stay) + returned++ : staying++] = row;
        }
        if (!std::ranges::is_sorted(target))
            Rearrange(target);
    }
    RecalculateConflicts();
}

/// Puts these rows, which ascend, behind all others in one change of the layout. The others keep
/// their order. `rows` are then where they went.
void MappedDeviceModel::GatherAtEnd(std::vector<int>& rows)
{
    const int stay = rowCount() - static_cast<int>(rows.size());
    std::vector<int> target(static_cast<std::size_t>(rowCount()));
    auto next = rows.begin();
    for (int row = 0, staying = 0, leaving = stay; row < rowCount(); ++row) {
        const bool leaves = next != rows.end() && *next == row;
        target[static_cast<std::size_t>(row)] = leaves ? leaving++ : staying++;
        next += leaves ? 1 : 0;
    }
    std::iota(rows.begin(), rows.end(), stay);
    Rearrange(target);
}

/// Puts each row at `target`, which holds every row once; indexes and selections follow.
void MappedDeviceModel::Rearrange(const std::vector<int>& target)
{
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    // Taking an item out invalidates the persistent indexes of its cell, so they are moved to rows
    // that have no item meanwhile.
    const QModelIndexList indexes = persistentIndexList();
    const auto waiting = [this](const QModelIndex& index) {
        return createIndex(index.row() + rowCount(), index.column(), index.internalPointer());
    };
    for (const QModelIndex& index : indexes)
        changePersistentIndex(index, waiting(index));
    MoveItems(target);
    for (const QModelIndex& index : indexes)
        changePersistentIndex(waiting(index),
                              createIndex(target[static_cast<std::size_t>(index.row())],
                                          index.column(), index.internalPointer()));
    emit layoutChanged({}, VerticalSortHint);
}

/// Row by row to `target`. Items that are put again know their row: one whose row has changed
/// without that is searched for through the whole table when it is removed.
void MappedDeviceModel::MoveItems(const std::vector<int>& target)
{
    const QSignalBlocker nobodySeesThis(this);
    QStandardItem& root = *invisibleRootItem();
    std::vector<QStandardItem*> cells;
    std::vector<MappedLedItem*> before = byRow_;
    for (int row = 0; row < rowCount(); ++row) {
        for (int column = 0; column < ColumnCount; ++column)
            cells.push_back(root.takeChild(row, column));
    }
    auto cell = cells.begin();
    for (std::size_t row = 0; row < target.size(); ++row) {
        byRow_[static_cast<std::size_t>(target[row])] = before[row];
        for (int column = 0; column < ColumnCount; ++column, ++cell) {
            if (*cell)
                root.setChild(target[row], column, *cell);
        }
    }
    ++revision_;
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

std::vector<std::int64_t> MappedDeviceModel::UpdateFixtureInElements(std::int64_t fixtureID,
                                                                     const LEDFixture& fixture)
{
    const QMutexLocker lock(&mutex);
    std::vector<std::int64_t> ids;
    for (MappedLedItem* element : byRow_) {
        if (element->GetFixture().uniqueID != fixtureID)
            continue;
        static_cast<LEDFixture&>(element->EditFixture()) = fixture;
        ids.push_back(element->uniqueID);
    }
    UpdateCells(ids, [this](int row) { SetFixtureTexts(row); });
    RecalculateConflicts();
    return ids;
}

std::vector<std::int64_t>
MappedDeviceModel::GiveFixtures(const std::vector<ElementFixture>& fixtures)
{
    const QMutexLocker lock(&mutex);
    std::vector<std::int64_t> ids;
    for (const auto& [id, fixture] : fixtures) {
        MappedLedItem* element = GetItemByUniqueID(id);
        if (!element || ElementFixture{id, element->GetFixture()} == ElementFixture{id, fixture})
            continue;
        static_cast<LEDFixture&>(element->EditFixture()) = fixture;
        ids.push_back(id);
    }
    if (ids.empty())
        return ids;
    UpdateCells(ids, [this](int row) { SetFixtureTexts(row); });
    RecalculateConflicts();
    return ids;
}

std::set<std::int64_t> MappedDeviceModel::GetOutdatedFixtures(const DeviceModel& library) const
{
    std::set<std::int64_t> outdated;
    for (const MappedLedItem* element : byRow_) {
        const DeviceLedItem& own = element->GetFixture();
        const DeviceLedItem* fixture = library.GetFixtures().value(own.uniqueID, nullptr);
        if (fixture && !own.HasDefinitionOf(*fixture))
            outdated.insert(own.uniqueID);
    }
    return outdated;
}

void MappedDeviceModel::RebindFixtures(const DeviceModel& library)
{
    const QMutexLocker lock(&mutex);
    for (MappedLedItem* element : byRow_)
        RebindFixture(*element, library);
}

void MappedDeviceModel::RebindFixture(MappedLedItem& element, const DeviceModel& library)
{
    const DeviceLedItem* fixture = library.GetLEDFixtureByProduct(element.GetFixture().product);
    const std::int64_t number = fixture ? fixture->uniqueID : 0;
    if (element.GetFixture().uniqueID != number)
        element.EditFixture().uniqueID = number;
}

void MappedDeviceModel::ReplaceNodeAddress(const QString& oldIpconf, const QString& newIpconf,
                                           const QString& newIpName)
{
    const std::wstring old = oldIpconf.toStdWString();
    std::vector<std::int64_t> ids;
    for (int row = 0; row < rowCount(); ++row) {
        MappedLedItem& element = *GetElement(row);
        const DMXMappingArtNet* mapping = element.GetArtNetMapping();
        if (!mapping || mapping->GetIpconf() != old)
            continue;
        element.EditArtNetMapping()->SetNode(newIpconf.toStdWString(), newIpName.toStdWString());
        ids.push_back(element.uniqueID);
    }
    UpdateAddressCells(ids);
}

void MappedDeviceModel::SetFixtureTexts(int row)
{
    const DeviceLedItem& fixture = GetElement(row)->GetFixture();
    item(row, ManufacturerColumn)->setText(QString::fromStdWString(fixture.manufacturer));
    item(row, ProductColumn)->setText(QString::fromStdWString(fixture.product));
    item(row, SizeColumn)->setText(SizeText(fixture.pixelMap));
    SetAddressTexts(row);
}

void MappedDeviceModel::SetAddressTexts(int row)
{
    item(row, AddressColumn)->setText(AddressText(*GetElement(row)));
    item(row, NodeColumn)->setText(NodeText(*GetElement(row)));
}

/// Lets `setText` bring the cells of each of these elements up to date, which is one change.
template <class SetText>
void MappedDeviceModel::UpdateCells(const std::vector<std::int64_t>& ids, const SetText& setText)
{
    std::vector<int> rows;
    rows.reserve(ids.size());
    {
        const QSignalBlocker oneChangeForAll(this);
        for (const std::int64_t id : ids) {
            const int row = GetIndexOfUniqueID(id).row();
            if (row < 0)
                continue;
            setText(row);
            rows.push_back(row);
        }
    }
    TellTextsChanged(rows);
}

void MappedDeviceModel::UpdateAddressCells(const std::vector<std::int64_t>& ids)
{
    UpdateCells(ids, [this](int row) { SetAddressTexts(row); });
    RecalculateConflicts();
}

void MappedDeviceModel::UpdateNameCells(const std::vector<std::int64_t>& ids)
{
    UpdateCells(ids, [this](int row) {
        item(row, NameColumn)->setText(QString::fromStdWString(GetElement(row)->description));
    });
}

void MappedDeviceModel::TellTextsChanged(const std::vector<int>& rows)
{
    // With a signal for each cell, a sorting proxy would sort the table each time.
    if (rows.empty())
        return;
    const auto [first, last] = std::ranges::minmax(rows);
    emit dataChanged(index(first, 0), index(last, columnCount() - 1));
}

void MappedDeviceModel::RecalculateConflicts()
{
    ++patchRevision_;
    FaultyElements faults = FindPatchFaults(byRow_, merging, answeringNodes_);
    if (faults == faults_)
        return;
    faults_ = std::move(faults);
    emit faultsChanged();
}

void MappedDeviceModel::SetMerging(const UniverseMerging& wanted)
{
    if (merging == wanted)
        return;
    merging = wanted;
    RecalculateConflicts();
}

void MappedDeviceModel::SetAnsweringNodes(std::optional<std::set<std::wstring>> addresses)
{
    if (answeringNodes_ == addresses)
        return;
    answeringNodes_ = std::move(addresses);
    RecalculateConflicts();
}

bool MappedDeviceModel::IsUniverseInConflict(const QModelIndex& index) const
{
    const MappedLedItem* element = GetElement(index.row());
    const auto found = element ? faults_.find(element->uniqueID) : faults_.end();
    return found != faults_.end() && found->second.testFlag(PatchFault::MixedUniverse);
}

QVariant MappedDeviceModel::data(const QModelIndex& index, int role) const
{
    if (role != TroubleRole && role != Qt::ToolTipRole)
        return QStandardItemModel::data(index, role);
    const MappedLedItem* element = GetElement(index.row());
    const auto found = element ? faults_.find(element->uniqueID) : faults_.end();
    if (found == faults_.end())
        return {};
    if (role == TroubleRole)
        return static_cast<int>(TroubleOf(found->second));
    return PatchFaultsText(*element, found->second);
}

void MappedDeviceModel::SetCanvasSize(int width, int height)
{
    canvasWidth = CanvasSide(width);
    ++revision_;
    emit mappingsChanged();
    canvasHeight = CanvasSide(height);
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
