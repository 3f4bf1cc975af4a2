// SPDX-License-Identifier: MIT
#include "UI/Library/LEDDeviceListView.h"

#include <algorithm>

#include <QApplication>
#include <QDrag>
#include <QHeaderView>
#include <QMouseEvent>

#include "Model/DeviceListProxy.h"
#include "Model/DeviceManager.h"
#include "Model/DeviceModel.h"

namespace {

constexpr int Indentation = 14;
constexpr int HeadMargin = 12;

/// Room for the mark of sorting is in the names, and in a column that is sorted by: beside each
/// number it would take the room of the names.
class NarrowHeader final : public QHeaderView
{
public:
    explicit NarrowHeader(QWidget* parent)
        : QHeaderView(Qt::Horizontal, parent)
    {
        setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        connect(this, &QHeaderView::sortIndicatorChanged, this, [this] { resizeSections(); });
    }

protected:
    [[nodiscard]] QSize sectionSizeFromContents(int section) const override
    {
        const QSize whole = QHeaderView::sectionSizeFromContents(section);
        if (section == DeviceModel::NameColumn || section == sortIndicatorSection())
            return whole;
        const QString name = model()->headerData(section, Qt::Horizontal).toString();
        const int narrow = fontMetrics().horizontalAdvance(name) + HeadMargin;
        return {std::min(narrow, whole.width()), whole.height()};
    }
};

} // namespace

LEDDeviceListView::LEDDeviceListView(QWidget* parent)
    : DockList(parent)
{
    setHeader(new NarrowHeader(this));
    setSortingEnabled(true);
    setIndentation(Indentation);
    setAllColumnsShowFocus(true);
}

void LEDDeviceListView::SetDeviceManager(DeviceManager* manager)
{
    deviceManager_ = manager;
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(DeviceModel::NameColumn, QHeaderView::Stretch);
    for (int column = 0; column < DeviceModel::ColumnCount; ++column)
        setColumnHidden(column, column != DeviceModel::NameColumn &&
                                    column != DeviceModel::SizeColumn &&
                                    column != DeviceModel::ChannelsColumn);
}

const DeviceLedItem* LEDDeviceListView::SelectedFixture() const
{
    const QModelIndexList rows =
        selectionModel() ? selectionModel()->selectedRows() : QModelIndexList();
    return rows.size() == 1 ? FixtureAt(rows.front()) : nullptr;
}

const DeviceLedItem* LEDDeviceListView::FixtureAt(const QModelIndex& index) const
{
    if (!deviceManager_ || !index.isValid() || !index.parent().isValid())
        return nullptr;
    const QModelIndex row = deviceManager_->GetDeviceListProxy()->mapToSource(index);
    return dynamic_cast<const DeviceLedItem*>(deviceManager_->GetDeviceModel()->itemFromIndex(
        row.siblingAtColumn(DeviceModel::ItemColumn)));
}

std::set<const DeviceLedItem*> LEDDeviceListView::SelectedFixtures() const
{
    std::set<const DeviceLedItem*> fixtures;
    if (!selectionModel())
        return fixtures;
    for (const QModelIndex& row : selectionModel()->selectedRows()) {
        fixtures.insert(FixtureAt(row));
        for (int below = 0; below < model()->rowCount(row); ++below)
            fixtures.insert(FixtureAt(model()->index(below, 0, row)));
    }
    fixtures.erase(nullptr);
    return fixtures;
}

std::unique_ptr<QMimeData> LEDDeviceListView::DragData() const
{
    if (!pressedFixture_)
        return nullptr;
    auto load = std::make_unique<QMimeData>();
    load->setData(QLatin1String(FixtureMimeType),
                  QByteArray::number(static_cast<qlonglong>(*pressedFixture_)));
    return load;
}

void LEDDeviceListView::mousePressEvent(QMouseEvent* event)
{
    DockList::mousePressEvent(event);
    pressPosition_ = event->pos();
    const DeviceLedItem* fixture = FixtureAt(indexAt(event->pos()));
    pressedFixture_ = fixture ? std::optional(fixture->uniqueID) : std::nullopt;
}

void LEDDeviceListView::mouseMoveEvent(QMouseEvent* event)
{
    if (!event->buttons().testFlag(Qt::LeftButton) || !pressedFixture_)
        return DockList::mouseMoveEvent(event);
    // Before that Qt would select each row that the mouse passes over, and drag the wrong one.
    if ((event->pos() - pressPosition_).manhattanLength() < QApplication::startDragDistance())
        return;
    auto load = DragData();
    pressedFixture_.reset(); // The drag takes the release of the mouse with it.
    // The drag belongs to Qt, which deletes it after the drop.
    auto* drag = new QDrag(this);
    drag->setMimeData(load.release());
    drag->exec(Qt::MoveAction);
}
