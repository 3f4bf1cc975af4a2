// SPDX-License-Identifier: MIT
#include "UI/Editor/EditorController.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include <QAction>
#include <QItemSelectionModel>
#include <QScopedValueRollback>
#include <QTransform>
#include <QUndoStack>

#include "Log/Log.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "Model/MappedObjectListProxy.h"
#include "UI/Commands/CanvasCommands.h"
#include "UI/Commands/CopyCommands.h"
#include "UI/Commands/GeometryCommands.h"
#include "UI/Commands/PushStep.h"
#include "UI/Dialogs/LEDDialogCanvasSize.h"
#include "UI/Dialogs/LEDDialogDuplicateMappingElement.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Editor/WeftMapEditorView.h"
#include "UI/Editor/WeftMappedObjectTreeView.h"

EditorController::EditorController(const Parts& parts, QObject* parent)
    : QObject(parent)
    , manager_(parts.manager)
    , undoStack_(parts.undoStack)
    , scene_(parts.scene)
    , view_(parts.view)
    , list_(parts.list)
    , sight_({manager_, scene_, view_, list_})
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
    connect(&manager_, &DeviceManager::devicesChangedGeometry, this,
            &EditorController::UpdateZoomCentre);
    ConnectSelection();
    ConnectCopies();
}

void EditorController::ConnectSelection()
{
    connect(list_.selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &EditorController::UpdateModelSelectionFromMappedObjectList);
    connect(manager_.GetMappedObjectListProxy(), &MappedObjectListProxy::select,
            list_.selectionModel(),
            qOverload<const QItemSelection&, QItemSelectionModel::SelectionFlags>(
                &QItemSelectionModel::select));
    connect(&list_, &WeftMappedObjectTreeView::EnvokeRemoveSelection, &scene_,
            &WeftMapEditorScene::RemoveSelectedRectangle);
}

void EditorController::ConnectCopies()
{
    connect(&list_, &WeftMappedObjectTreeView::EnvokeDuplicateElement, this,
            &EditorController::ActionDuplicateElement);
    connect(&list_, &WeftMappedObjectTreeView::EnvokeCopySelection, this,
            &EditorController::ActionCopySelection);
    connect(&list_, &WeftMappedObjectTreeView::EnvokePasteSelection, this,
            &EditorController::ActionPasteSelection);
    connect(&undoStack_, &QUndoStack::indexChanged, this, &EditorController::ShowCopies);
    connect(&clipboard_, &ElementClipboard::armedChanged, this, [this](bool armed) {
        if (QAction* paste = scene_.GetActions().paste)
            paste->setEnabled(armed);
    });
}

// ---- One selection -----------------------------------------------------------------------------

void EditorController::UpdateModelSelectionFromMappingScene()
{
    if (!fromList_) {
        const QScopedValueRollback<bool> guard(fromScene_, true);
        list_.selectionModel()->select(
            manager_.GetMappedObjectListProxy()->RowsOf(scene_.SelectedIds()),
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
    const EditorActions& actions = scene_.GetActions();
    for (QAction* action : {actions.crop, actions.remove, actions.copy, actions.duplicate}) {
        if (action)
            action->setEnabled(scene_.SelectedCount() > 0);
    }
    UpdateZoomCentre();
    sight_.Follow(fromList_);
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
    const QPointF centre = BoxOf(scene_.SelectedIds()).center();
    view_.SetZoomCentre(centre.x(), centre.y());
}

QRectF EditorController::BoxOf(const ElementIds& ids) const
{
    const QSizeF canvas = manager_.CanvasPixels();
    return QTransform::fromScale(canvas.width(), canvas.height())
        .mapRect(ElementGeometry::Bounds(manager_.GetVideoMappings(ids)));
}

void EditorController::SetZoomStyle(int style)
{
    zoomStyle_ = style;
    UpdateZoomCentre();
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
    const MappedLedItem* element = manager_.GetMappedDeviceModel()->GetItemByUniqueID(uniqueID);
    if (!element)
        ZEN_LOG_ERROR("Mapped item lost!");
    else if (!element->GetDMXMapping())
        ZEN_LOG_ERROR("DMXMapping lost!");
}

// ---- Actions -----------------------------------------------------------------------------------
// A gesture that still runs ends first: its elements must not be measured in the middle of it.

void EditorController::Select(const ElementIds& ids)
{
    {
        const WeftMapEditorScene::SelectionBatch batch(scene_);
        scene_.UnSelectAll();
        for (const std::int64_t id : ids)
            scene_.SetSelected(id, true);
    }
    MappingSceneSelectionEnded();
}

void EditorController::SelectAndShow(const ElementIds& ids)
{
    Select(ids);
    if (scene_.SelectedCount() > 0)
        view_.ShowPart(BoxOf(scene_.SelectedIds()));
}

void EditorController::ActionSelectAll()
{
    scene_.SelectAll();
    MappingSceneSelectionEnded();
}

void EditorController::ActionUnSelectAll()
{
    scene_.UnSelectAll();
}

void EditorController::ActionAlign(ElementGeometry::AlignMode mode)
{
    scene_.GetGestures().Release();
    if (scene_.SelectedCount() > 0)
        Push(std::make_unique<AlignRectangleCommand>(manager_, scene_.SelectedIds(), mode));
}

void EditorController::ActionAlignDistribute(ElementGeometry::DistributeMode mode)
{
    scene_.GetGestures().Release();
    if (scene_.SelectedCount() > 1)
        Push(std::make_unique<AlignDistributeRectangleCommand>(manager_, scene_.SelectedIds(),
                                                               mode));
}

void EditorController::ActionRotateLeftRight(float degrees)
{
    scene_.GetGestures().Release();
    auto command = std::make_unique<RotateRectangleCommand>(manager_, scene_.SelectedIds());
    command->TurnBy(static_cast<double>(degrees));
    if (!command->ChangesNothing())
        Push(std::move(command));
}

void EditorController::ActionFlip(int direction, bool state)
{
    scene_.GetGestures().Release();
    if (scene_.SelectedCount() > 0)
        Push(std::make_unique<FlipRectangleCommand>(
            manager_, scene_.SelectedIds(), direction == 0 ? FlipHorizontal : FlipVertical, state));
}

void EditorController::ActionCropCanvasToSelectedDevices()
{
    scene_.GetGestures().Release();
    ElementIds selected = scene_.SelectedIds();
    if (selected.empty())
        return;
    scene_.UnSelectAll();
    Push(std::make_unique<CropCanvasToSelectionCommand>(manager_, std::move(selected)));
}

void EditorController::ActionCanvasSize()
{
    LEDDialogCanvasSize dialog(view_.window());
    const QSize canvas = manager_.CanvasPixels();
    dialog.SetSize(canvas.width(), canvas.height());
    if (dialog.exec() == QDialog::Accepted)
        ResizeCanvas(dialog.GetWidth(), dialog.GetHeight(), dialog.KeepsPositions());
}

void EditorController::ResizeCanvas(int width, int height, bool keepPixels)
{
    scene_.GetGestures().Release();
    if (QSize(width, height) != manager_.CanvasPixels())
        Push(std::make_unique<ResizeCanvasCommand>(manager_, QSize(width, height), keepPixels));
}

void EditorController::ActionFit()
{
    view_.FitCanvas();
}

void EditorController::ActionFitSelection()
{
    if (scene_.SelectedCount() > 0)
        view_.FitPart(BoxOf(scene_.SelectedIds()));
}

void EditorController::ActionActualPixels()
{
    view_.ShowActualPixels();
}

void EditorController::ActionDuplicateElement()
{
    scene_.GetGestures().Release();
    if (scene_.SelectedCount() != 1)
        return;
    // The document may be replaced while the dialog is open, and then gives its numbers again.
    const QPersistentModelIndex source = scene_.SelectedIndexes().front();
    LEDDialogDuplicateMappingElement dialog(DuplicateGrid::MostElements, view_.window());
    dialog.FocusCount();
    if (dialog.exec() == QDialog::Accepted)
        DuplicateElement(source, {dialog.GetAcross(), dialog.GetDown(), dialog.GetFirstDirection(),
                                  dialog.GetThenDirection()});
}

void EditorController::DuplicateElement(const QModelIndex& index, const DuplicateGrid& grid)
{
    scene_.GetGestures().Release();
    const auto source = ReadElements({manager_.GetMappedItem(index)});
    if (!source.empty())
        PushStep(undoStack_,
                 std::make_unique<DuplicateElementCommand>(manager_, source.front(), grid));
}

void EditorController::ActionCopySelection()
{
    scene_.GetGestures().Release();
    // In the order of the list, in which a paste gives the addresses.
    const MappedObjectListProxy& proxy = *manager_.GetMappedObjectListProxy();
    std::vector<const MappedLedItem*> elements;
    for (const QItemSelectionRange& range : proxy.RowsOf(scene_.SelectedIds())) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            elements.push_back(manager_.GetMappedItem(proxy.mapToSource(proxy.index(row, 0))));
    }
    if (!elements.empty())
        clipboard_.Copy(ReadElements(elements));
}

void EditorController::ActionPasteSelection()
{
    scene_.GetGestures().Release();
    std::vector<ElementValues> elements = clipboard_.Take();
    if (elements.empty())
        return;
    if (BindToLibrary(elements, *manager_.GetDeviceModel()))
        emit fixturesAdded();
    const PatchAddress first = scene_.NextFreePatch(elements.front().fixture->uniqueID);
    PushStep(undoStack_, std::make_unique<CopyPasteCommand>(manager_, elements, first));
}

/// Scrolls to the copies of the step that was just made, or made again. A full history has the same
/// index after a new step, but then nothing to do again.
void EditorController::ShowCopies(int undoIndex)
{
    const bool forward = undoIndex > std::exchange(undoIndex_, undoIndex) || !undoStack_.canRedo();
    const QUndoCommand* step = forward ? undoStack_.command(undoIndex - 1) : nullptr;
    const auto* copies = dynamic_cast<const CopiesCommand*>(step);
    if (!copies)
        return;
    view_.ShowPart(BoxOf(copies->GetElements()));
}

void EditorController::Push(std::unique_ptr<QUndoCommand> command)
{
    undoStack_.push(command.release());
}
