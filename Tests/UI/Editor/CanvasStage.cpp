// SPDX-License-Identifier: MIT
#include "CanvasStage.h"

#include <algorithm>

#include <QApplication>
#include <QHBoxLayout>
#include <QPixmap>

#include "LibTools/NaturalOrder.h"
#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "Model/MappedObjectListProxy.h"
#include "Model/Trouble.h"

CanvasStage::CanvasStage(QSize canvas, QSize viewSize)
    : manager(QString())
{
    manager.Initialize();
    manager.SetCanvasSize(canvas.width(), canvas.height());
    undo.setUndoLimit(10);
    scene = std::make_unique<WeftMapEditorScene>(manager, display, undo);
    view = new WeftMapEditorView;
    list = new WeftMappedObjectTreeView;
    list->setModel(manager.GetMappedObjectListProxy());
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list->setSortingEnabled(true);
    list->sortByColumn(MappedDeviceModel::NameColumn, Qt::AscendingOrder);
    list->setFixedWidth(200);
    auto* layout = new QHBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(list);
    layout->addWidget(view);
    view->setFixedSize(viewSize);
    view->setScene(scene.get());
    view->SetUp(display, manager);
    controller = std::make_unique<EditorController>(
        EditorController::Parts{manager, undo, *scene, *view, *list});
    scene->SetCanvasSize(canvas.width(), canvas.height());
    QPixmap picture(64, 64);
    picture.fill(QColor(40, 80, 120));
    scene->SetTestPatternImage(picture);
    window.show();
    view->CanvasChanged();
    QApplication::processEvents();
}

CanvasStage::~CanvasStage()
{
    undo.clear();
    controller.reset();
    list->setModel(nullptr);
    view->setScene(nullptr);
    scene.reset();
}

std::int64_t CanvasStage::AddFixture(const wchar_t* product, int width, int height, int channels)
{
    const std::int64_t id = manager.GetDeviceModel()->GetNextUniqueID();
    manager.GetDeviceModel()->AddFixture(std::make_unique<DeviceLedItem>(
        L"Maker", product, PixelMap(width, height, PixelMapType::RGB), id, channels));
    return id;
}

std::int64_t CanvasStage::Place(std::int64_t fixture, QPointF centre, QSizeF size, float rotation)
{
    MappedObjectParams params;
    params.ipconf = QStringLiteral("Auto");
    params.fixtureID = fixture;
    params.posX = static_cast<float>(centre.x());
    params.posY = static_cast<float>(centre.y());
    params.width = static_cast<float>(size.width());
    params.height = static_cast<float>(size.height());
    const QModelIndex index = manager.AddMappedObject(params);
    manager.ApplyObjectParams(index, params);
    manager.SetObjectRotation(index, rotation);
    return manager.GetUniqueID(index);
}

const VideoMapping& CanvasStage::Video(std::int64_t id) const
{
    return *Item(id).GetVideoMapping();
}

ElementGeometry::Placement CanvasStage::PlaceOf(std::int64_t id) const
{
    return ElementGeometry::PlacementOf(Video(id), manager.CanvasPixels());
}

MappedLedItem& CanvasStage::Item(std::int64_t id) const
{
    return *manager.GetMappedDeviceModel()->GetItemByUniqueID(id);
}

std::vector<std::int64_t> CanvasStage::Ids() const
{
    std::vector<std::int64_t> ids;
    for (const MappedLedItem* element : manager.GetMappedDeviceModel()->GetAllItems())
        ids.push_back(element->uniqueID);
    std::ranges::sort(ids);
    return ids;
}

std::vector<std::int64_t> CanvasStage::SelectedInList() const
{
    std::vector<std::int64_t> ids;
    for (int row = 0; row < list->model()->rowCount(); ++row) {
        const QModelIndex cell = list->model()->index(row, MappedDeviceModel::IdentifierColumn);
        if (list->selectionModel()->isSelected(cell))
            ids.push_back(cell.data(Qt::UserRole).toLongLong());
    }
    std::ranges::sort(ids);
    return ids;
}

namespace {

/// Red where a universe is both broadcast and sent to a node, and where channels are not sent;
/// orange where two elements share channels.
Trouble TroubleOf(const MappedLedItem& element, const QList<MappedLedItem*>& all)
{
    const DMXMappingArtNet* address = element.GetArtNetMapping();
    if (!address)
        return Trouble::None;
    const auto last = [](const MappedLedItem& item) {
        return item.GetArtNetMapping()->GetChannel() + item.GetFixture().GetChannelCount() - 1;
    };
    const auto isSent = [](const MappedLedItem& item) {
        const std::int32_t channel = item.GetArtNetMapping()->GetChannel();
        return channel >= 1 && channel <= 512 && item.GetFixture().GetChannelCount() > 0;
    };
    bool shares = false;
    for (const MappedLedItem* other : all) {
        const DMXMappingArtNet* its = other->GetArtNetMapping();
        if (!its || its->GetPortAddress() != address->GetPortAddress())
            continue;
        if (its->IsAuto() != address->IsAuto() && isSent(element) && isSent(*other))
            return Trouble::Fault;
        shares =
            shares || (other != &element && its->GetIpconf() == address->GetIpconf() &&
                       its->GetChannel() <= last(element) && address->GetChannel() <= last(*other));
    }
    return last(element) > 512 ? Trouble::Fault : shares ? Trouble::Caution : Trouble::None;
}

} // namespace

std::string CanvasStage::TableFault() const
{
    const MappedDeviceModel& table = *manager.GetMappedDeviceModel();
    for (int row = 0; row < table.rowCount(); ++row) {
        const MappedLedItem* element = table.GetElement(row);
        const QModelIndex cell = table.index(row, MappedDeviceModel::IdentifierColumn);
        if (table.GetIndexOfUniqueID(element->uniqueID).row() != row ||
            table.GetItemByUniqueID(element->uniqueID) != element ||
            manager.GetUniqueID(cell) != element->uniqueID ||
            cell.data(Qt::UserRole).toLongLong() != element->uniqueID)
            return "row " + std::to_string(row) + " has another element's number";
        if (cell.siblingAtColumn(MappedDeviceModel::NameColumn).data().toString() !=
            QString::fromStdWString(element->description))
            return "row " + std::to_string(row) + " shows an older name";
        const auto wrong = static_cast<Trouble>(cell.data(TroubleRole).toInt());
        if (wrong != TroubleOf(*element, table.GetAllItems()))
            return "row " + std::to_string(row) + " has a wrong mark";
        const auto text = [&list = *manager.GetMappedObjectListProxy()](int of) {
            return list.index(of, list.sortColumn()).data().toString();
        };
        const bool ascending =
            manager.GetMappedObjectListProxy()->sortOrder() == Qt::AscendingOrder;
        if (row > 0 &&
            (ascending ? IsBefore(text(row), text(row - 1)) : IsBefore(text(row - 1), text(row))))
            return "the list isn't sorted";
    }
    return {};
}

std::string CanvasStage::Disagreement() const
{
    if (Ids() != scene->AllIds())
        return "the scene holds other elements than the document";
    if (list->model()->rowCount() != std::ssize(Ids()))
        return "the list shows other elements than the document";
    if (SelectedInList() != scene->SelectedIds())
        return "canvas and list have other selections";
    for (const std::int64_t id : Ids()) {
        const VideoMapping& video = Video(id);
        const MappingRectangle& item = *scene->Find(id);
        const bool same = item.GetPlacement() == PlaceOf(id) &&
                          item.rotation() == static_cast<double>(video.rotation) &&
                          item.IsFlipped(FlipHorizontal) == video.flipHorizontal &&
                          item.IsFlipped(FlipVertical) == video.flipVertical;
        if (!same)
            return "element " + std::to_string(id) + " is elsewhere than the document says";
        if (item.isSelected() != (item.zValue() == 1))
            return "element " + std::to_string(id) + " is stacked wrongly";
    }
    return TableFault();
}
