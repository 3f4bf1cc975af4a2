// SPDX-License-Identifier: MIT
#include "UI/Editor/EditorController.h"

#include <algorithm>
#include <memory>
#include <vector>

#include <QAction>
#include <QItemSelectionModel>
#include <QScopedValueRollback>

#include "Log/Log.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "Model/MappedObjectListProxy.h"
#include "UI/Editor/ArrangeCommands.h"
#include "UI/Editor/GeometryCommands.h"
#include "UI/Editor/MappingRectangle.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Editor/WeftMapEditorView.h"
#include "UI/Editor/WeftMappedObjectTreeView.h"

namespace {

/// Whole rows, as few ranges as they make: a selection model's work grows with their number.
QItemSelection RowsOf(const QAbstractItemModel& model, std::vector<int> rows)
{
    std::ranges::sort(rows);
    QItemSelection selection;
    const int lastColumn = model.columnCount() - 1;
    for (std::size_t first = 0; first < rows.size();) {
        std::size_t last = first;
        while (last + 1 < rows.size() && rows[last + 1] == rows[last] + 1)
            ++last;
        selection.append(
            QItemSelectionRange(model.index(rows[first], 0), model.index(rows[last], lastColumn)));
        first = last + 1;
    }
    return selection;
}

} // namespace

EditorController::EditorController(const Parts& parts, QObject* parent)
    : QObject(parent)
    , manager_(parts.manager)
    , scene_(parts.scene)
    , view_(parts.view)
    , list_(parts.list)
{
    list_.setUniformRowHeights(true); // Thousands of rows are measured once.
    connect(&scene_, &WeftMapEditorScene::RectangleSelectionEvent, this,
            &EditorController::UpdateModelSelectionFromMappingScene);
    connect(&scene_, &WeftMapEditorScene::selectionEnded, this,
            &EditorController::MappingSceneSelectionEnded);
    connect(&scene_, &WeftMapEditorScene::sceneSizeChanged, this,
            &EditorController::MappingSceneSizeChanged);
    connect(&scene_, &WeftMapEditorScene::RectangleDoubleClicked, this,
            &EditorController::ActionMappingSetupForUniqueID);
    connect(&scene_, &WeftMapEditorScene::FlipHSelectedRectangle, this,
            [this](bool on) { ActionFlip(FlipHorizontal, on); });
    connect(&scene_, &WeftMapEditorScene::FlipVSelectedRectangle, this,
            [this](bool on) { ActionFlip(FlipVertical, on); });
    connect(&manager_, &DeviceManager::createRectangleDevice, this,
            &EditorController::UpdateSceneNewRectangle);
    // Behind the scene's own connection: the frame is in its place by then.
    connect(&manager_, &DeviceManager::devicesChangedGeometry, this,
            &EditorController::UpdateZoomCentre);
    connect(list_.selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &EditorController::UpdateModelSelectionFromMappedObjectList);
    connect(manager_.GetMappedObjectListProxy(), &MappedObjectListProxy::select,
            list_.selectionModel(),
            qOverload<const QModelIndex&, QItemSelectionModel::SelectionFlags>(
                &QItemSelectionModel::select));
    connect(&list_, &WeftMappedObjectTreeView::EnvokeRemoveSelection, &scene_,
            &WeftMapEditorScene::RemoveSelectedRectangle);
}

// ---- One selection -----------------------------------------------------------------------------

void EditorController::UpdateModelSelectionFromMappingScene()
{
    if (!fromList_) {
        const QScopedValueRollback<bool> guard(fromScene_, true);
        const MappedObjectListProxy& proxy = *manager_.GetMappedObjectListProxy();
        std::vector<int> rows;
        for (const std::int64_t id : scene_.SelectedIds()) {
            const QModelIndex row = proxy.mapFromSource(scene_.IndexOf(id));
            if (row.isValid())
                rows.push_back(row.row());
        }
        list_.selectionModel()->select(RowsOf(proxy, std::move(rows)),
                                       QItemSelectionModel::ClearAndSelect);
    }
    FollowSelection();
}

void EditorController::UpdateModelSelectionFromMappedObjectList(const QItemSelection& selected,
                                                                const QItemSelection& deselected)
{
    if (fromScene_)
        return;
    const auto apply = [this](const QItemSelection& rows, bool on) {
        for (const QItemSelectionRange& range : rows) {
            for (int row = range.top(); row <= range.bottom(); ++row) {
                const QModelIndex cell =
                    range.model()->index(row, MappedDeviceModel::IdentifierColumn);
                const std::int64_t id = cell.data(Qt::UserRole).toLongLong();
                if (id > 0)
                    scene_.SetSelected(id, on);
            }
        }
    };
    {
        const QScopedValueRollback<bool> guard(fromList_, true);
        const WeftMapEditorScene::SelectionBatch batch(scene_);
        apply(deselected, false);
        apply(selected, true);
    }
    MappingSceneSelectionEnded();
}

void EditorController::FollowSelection()
{
    if (QAction* remove = scene_.GetActions().remove)
        remove->setEnabled(scene_.SelectedCount() > 0);
    UpdateZoomCentre();
    emit selectionHasChanged(scene_.SelectedCount());
}

void EditorController::MappingSceneSelectionEnded()
{
    scene_.ShowGroupOverlay();
    UpdateZoomCentre();
}

void EditorController::UpdateZoomCentre()
{
    if (zoomStyle_ != 1 || scene_.SelectedCount() == 0) {
        view_.SetZoomCentre(-1, -1);
        return;
    }
    QPointF centre = scene_.GetGroupOverlay().GetCentre();
    if (scene_.SelectedCount() == 1) {
        if (const MappingRectangle* item = scene_.Find(scene_.SelectedIds().front()))
            centre = item->pos();
    }
    view_.SetZoomCentre(centre.x(), centre.y());
}

void EditorController::SetZoomStyle(int style)
{
    zoomStyle_ = style;
    UpdateZoomCentre();
}

void EditorController::UpdateSceneNewRectangle(float posX, float posY, float width, float height,
                                               int devWidth, int devHeight, float rotation, int,
                                               int, const QPersistentModelIndex& index, int64_t)
{
    MappingRectangle* item =
        scene_.AddRectangle({QPointF(static_cast<double>(posX), static_cast<double>(posY)),
                             QSizeF(static_cast<double>(width), static_cast<double>(height))},
                            QSizeF(devWidth, devHeight), index, static_cast<double>(rotation));
    // The signal knows nothing of flips.
    const auto state = ReadElement(manager_, index);
    if (!item || !state)
        return;
    item->SetFlip(FlipHorizontal, state->flipHorizontal);
    item->SetFlip(FlipVertical, state->flipVertical);
}

void EditorController::MappingSceneSizeChanged()
{
    view_.CanvasChanged();
}

void EditorController::ActionMappingSetupForUniqueID(int64_t uniqueID)
{
    if (uniqueID == -1 && scene_.SelectedCount() > 0)
        uniqueID = scene_.SelectedIds().front();
    if (uniqueID < 1) {
        ZEN_LOG_ERROR("Invalid uniqueID.");
        return;
    }
    const MappedLedItem* element = manager_.GetMappedItem(scene_.IndexOf(uniqueID));
    if (!element)
        ZEN_LOG_ERROR("Mapped item lost!");
    else if (!element->GetDMXMapping())
        ZEN_LOG_ERROR("DMXMapping lost!");
}

// ---- Actions -----------------------------------------------------------------------------------
// A gesture that still runs ends first: its elements must not be measured on the way.

void EditorController::ActionSelectAll()
{
    scene_.SelectAll();
    MappingSceneSelectionEnded();
}

void EditorController::ActionUnSelectAll()
{
    scene_.UnSelectAll();
}

void EditorController::ActionAlign(EditorGeometry::AlignMode mode)
{
    scene_.GetGestures().Release();
    if (scene_.SelectedCount() > 0) {
        scene_.Push(std::make_unique<AlignRectangleCommand>(scene_, scene_.SelectedIds(), mode));
    }
}

void EditorController::ActionAlignDistribute(EditorGeometry::DistributeMode mode)
{
    scene_.GetGestures().Release();
    if (scene_.SelectedCount() > 1) {
        scene_.Push(
            std::make_unique<AlignDistributeRectangleCommand>(scene_, scene_.SelectedIds(), mode));
    }
}

void EditorController::ActionRotateLeftRight(float degrees)
{
    scene_.GetGestures().Release();
    auto command = std::make_unique<RotateRectangleCommand>(scene_, scene_.SelectedIds());
    command->SetAngle(static_cast<double>(degrees));
    if (!command->ChangesNothing())
        scene_.Push(std::move(command));
}

void EditorController::ActionFlip(int direction, bool state)
{
    scene_.GetGestures().Release();
    if (scene_.SelectedCount() > 0) {
        scene_.Push(std::make_unique<FlipRectangleCommand>(
            scene_, scene_.SelectedIds(), direction == 0 ? FlipHorizontal : FlipVertical, state));
    }
}

void EditorController::ActionCropCanvasToSelectedDevices()
{
    scene_.GetGestures().Release();
    if (scene_.SelectedCount() == 0)
        scene_.SelectAll();
    const std::vector<std::int64_t> selected = scene_.SelectedIds();
    if (selected.empty())
        return;
    scene_.UnSelectAll();
    scene_.Push(std::make_unique<CropCanvasToSelectionCommand>(scene_, selected));
}
