// SPDX-License-Identifier: MIT
#include "UI/Editor/WeftMapEditorScene.h"

#include <utility>

#include <QAction>
#include <QGraphicsView>
#include <QUndoStack>

#include "Log/Log.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "UI/Editor/EditorDisplayState.h"
#include "UI/Editor/GraphCanvas.h"
#include "UI/Editor/GraphForeground.h"
#include "UI/Editor/MappingRectangle.h"
#include "UI/Editor/PlacementCommands.h"

namespace {

constexpr double CanvasZ = -2;
constexpr double ForegroundZ = 2;

} // namespace

WeftMapEditorScene::WeftMapEditorScene(DeviceManager& manager, EditorDisplayState& display,
                                       QUndoStack& undoStack, QObject* parent)
    : QGraphicsScene(parent)
    , manager_(manager)
    , display_(display)
    , undoStack_(undoStack)
    , flipHorizontal_(new QAction(tr("&Flip Horizontal"), this))
    , flipVertical_(new QAction(tr("&Flip Vertical"), this))
    , canvas_(new GraphCanvas(display))
    , foreground_(new GraphForeground)
    , overlay_(*this)
    , gestures_(*this)
{
    setItemIndexMethod(NoIndex);
    canvas_->setZValue(CanvasZ);
    foreground_->setZValue(ForegroundZ);
    addItem(canvas_);
    addItem(foreground_);
    flipHorizontal_->setObjectName(QStringLiteral("actionFlipHorizontal"));
    flipVertical_->setObjectName(QStringLiteral("actionFlipVertical"));
    flipHorizontal_->setCheckable(true);
    flipVertical_->setCheckable(true);
    connect(flipHorizontal_, &QAction::triggered, this,
            &WeftMapEditorScene::FlipHSelectedRectangle);
    connect(flipVertical_, &QAction::triggered, this, &WeftMapEditorScene::FlipVSelectedRectangle);
    ConnectModel();
}

WeftMapEditorScene::~WeftMapEditorScene()
{
    // Nobody listens any more, and the items tell the scene when they go.
    blockSignals(true);
    RemoveOverlays();
    const SelectionBatch batch(*this);
    for (const auto& [id, item] : std::exchange(itemsById_, {}))
        delete item;
}

void WeftMapEditorScene::ConnectModel()
{
    // Steps of a drag and typed places come by two signals; the canvas treats them alike.
    connect(&manager_, &DeviceManager::deviceChangeGeometry, this,
            &WeftMapEditorScene::SetGeometryItem);
    connect(&manager_, &DeviceManager::deviceUpdatedGeometry, this,
            &WeftMapEditorScene::SetGeometryItem);
    connect(&manager_, &DeviceManager::deviceChangeCentreX, this,
            &WeftMapEditorScene::SetCentreXItem);
    connect(&manager_, &DeviceManager::deviceChangeCentreY, this,
            &WeftMapEditorScene::SetCentreYItem);
    connect(&manager_, &DeviceManager::deviceChangeCentreXY, this,
            &WeftMapEditorScene::SetCentreXYItem);
    connect(&manager_, &DeviceManager::deviceChangeMapSize, this, &WeftMapEditorScene::SetSizeItem);
    connect(&manager_, &DeviceManager::deviceChangeRotation, this,
            &WeftMapEditorScene::SetRotationItem);
    connect(&manager_, &DeviceManager::deviceChangeFlip, this,
            &WeftMapEditorScene::SetFlipStateItem);
    connect(&manager_, &DeviceManager::deleteGraphicObject, this,
            &WeftMapEditorScene::DeleteObjectItem);
    connect(&manager_, &DeviceManager::devicesChangedGeometry, this, [this] { overlay_.Follow(); });
}

void WeftMapEditorScene::SetActions(const EditorActions& actions)
{
    actions_ = actions;
}

void WeftMapEditorScene::Push(std::unique_ptr<QUndoCommand> command)
{
    undoStack_.push(command.release());
}

void WeftMapEditorScene::HoldUndo(bool hold)
{
    if (actions_.undo)
        actions_.undo->setEnabled(!hold && undoStack_.canUndo());
    if (actions_.redo)
        actions_.redo->setEnabled(!hold && undoStack_.canRedo());
}

// ---- The canvas --------------------------------------------------------------------------------

void WeftMapEditorScene::SetCanvasSize(int width, int height)
{
    if (canvas_->GetSize().toSize() == QSize(width, height))
        return;
    canvas_->SetSize(QSizeF(width, height));
    setSceneRect(-(width / 2), -(height / 2), 2 * width, 2 * height);
    emit sceneSizeChanged();
}

void WeftMapEditorScene::RescaleItems(float fx, float fy)
{
    const bool followCanvas = fx == 0 && fy == 0;
    if (!followCanvas && (fx <= 0 || fy <= 0))
        return;
    for (const auto& [id, item] : itemsById_) {
        MappedLedItem* element = manager_.GetMappedItem(IndexOf(id));
        if (!element || !element->GetVideoMapping())
            continue;
        if (!followCanvas) {
            const QMutexLocker lock(&manager_.GetMutex());
            VideoMapping& video = *element->EditVideoMapping();
            video.SetCenter({video.centerX / fx, video.centerY / fy});
            video.SetSize({video.width / fx, video.height / fy});
        }
        if (const auto state = ReadElement(manager_, IndexOf(id)))
            item->SetPlacement(state->placement);
    }
    overlay_.Follow();
}

void WeftMapEditorScene::RedrawCanvas()
{
    canvas_->Redraw();
}

void WeftMapEditorScene::ClearAll()
{
    const SelectionBatch batch(*this);
    gestures_.Abandon();
    RemoveOverlays();
    for (const std::int64_t id : SelectedIds())
        Find(id)->setSelected(false);
    const auto items = std::exchange(itemsById_, {});
    for (auto item = items.rbegin(); item != items.rend(); ++item)
        delete item->second;
    numbers_.Clear();
}

void WeftMapEditorScene::SetTestPatternImage(const QPixmap& picture)
{
    canvas_->SetTestPattern(picture);
    emit testPatternImageChange(picture);
}

void WeftMapEditorScene::usedUniversesChanged(const std::vector<int>& usedUniverses)
{
    usedUniverses_.assign(usedUniverses.begin(), usedUniverses.end());
}

// ---- Elements ----------------------------------------------------------------------------------

MappingRectangle* WeftMapEditorScene::AddRectangle(const EditorGeometry::Placement& placement,
                                                   QSizeF naturalSize, const QModelIndex& index,
                                                   double rotation)
{
    const MappedLedItem* element = manager_.GetMappedItem(index);
    if (!element || itemsById_.contains(element->uniqueID))
        return nullptr;
    auto item =
        std::make_unique<MappingRectangle>(*this, display_, element->uniqueID, placement.size);
    item->SetNaturalSize(naturalSize);
    item->setPos(placement.centre);
    item->setRotation(rotation);
    item->SetAutoMark(element->GetDMXMapping() &&
                      element->GetDMXMapping()->GetIpconf() == AutoNode);
    itemsById_[element->uniqueID] = item.get();
    addItem(item.get());
    return item.release();
}

MappingRectangle* WeftMapEditorScene::Find(std::int64_t id) const
{
    const auto found = itemsById_.find(id);
    return found == itemsById_.end() ? nullptr : found->second;
}

std::vector<std::int64_t> WeftMapEditorScene::AllIds() const
{
    std::vector<std::int64_t> ids;
    ids.reserve(itemsById_.size());
    for (const auto& [id, item] : itemsById_)
        ids.push_back(id);
    return ids;
}

std::vector<QPersistentModelIndex> WeftMapEditorScene::AllIndexes() const
{
    std::vector<QPersistentModelIndex> indexes;
    indexes.reserve(itemsById_.size());
    for (const auto& [id, item] : itemsById_)
        indexes.emplace_back(IndexOf(id));
    return indexes;
}

QModelIndex WeftMapEditorScene::IndexOf(std::int64_t id) const
{
    return manager_.GetMappedDeviceModel()->GetIndexOfUniqueID(numbers_.Present(id));
}

void WeftMapEditorScene::RefreshAutoMarks()
{
    for (const auto& [id, item] : itemsById_) {
        const MappedLedItem* element = manager_.GetMappedItem(IndexOf(id));
        const DMXMapping* patch = element ? element->GetDMXMapping() : nullptr;
        item->SetAutoMark(patch && patch->GetIpconf() == AutoNode);
    }
}

PatchAddress WeftMapEditorScene::NextFreePatch(std::int64_t fixtureID) const
{
    std::vector<PatchedSpan> patched;
    const MappedDeviceModel& document = *manager_.GetMappedDeviceModel();
    for (int row = 0; row < document.rowCount(); ++row) {
        const MappedLedItem* element = document.GetElement(row);
        const DMXMappingArtNet* patch = element ? element->GetArtNetMapping() : nullptr;
        if (patch)
            patched.push_back({{patch->GetSubnet(), patch->GetUniverse(), patch->GetChannel()},
                               element->GetFixture().GetChannelCount()});
    }
    return ::NextFreePatch(patched, manager_.GetDeviceChannelCount(fixtureID), usedUniverses_);
}

void WeftMapEditorScene::SetGeometryItem(int64_t uniqueID, Zen::Vector4DF geometry)
{
    MappingRectangle* item = Find(uniqueID);
    if (!item)
        return;
    const QSizeF size(static_cast<double>(geometry.width), static_cast<double>(geometry.height));
    const QPointF topLeft(static_cast<double>(geometry.left), static_cast<double>(geometry.top));
    item->SetPlacement({topLeft + QPointF(size.width() / 2, size.height() / 2), size});
}

void WeftMapEditorScene::SetCentreXItem(int64_t uniqueID, float centreX)
{
    if (MappingRectangle* item = Find(uniqueID))
        item->setX(static_cast<double>(centreX));
    else
        ZEN_LOG_ERROR("SetCentreXItem found nothing");
}

void WeftMapEditorScene::SetCentreYItem(int64_t uniqueID, float centreY)
{
    if (MappingRectangle* item = Find(uniqueID))
        item->setY(static_cast<double>(centreY));
    else
        ZEN_LOG_ERROR("SetCentreYItem found nothing");
}

void WeftMapEditorScene::SetCentreXYItem(int64_t uniqueID, float centreX, float centreY)
{
    MappingRectangle* item = Find(uniqueID);
    if (!item) {
        ZEN_LOG_ERROR("WeftMapEditorScene finds nothing to modify");
        return;
    }
    item->setPos(static_cast<double>(centreX), static_cast<double>(centreY));
}

void WeftMapEditorScene::SetSizeItem(int64_t uniqueID, float width, float height)
{
    MappingRectangle* item = Find(uniqueID);
    if (!item) {
        ZEN_LOG_ERROR("Lost item!");
        return;
    }
    item->SetSize(QSizeF(static_cast<double>(width), static_cast<double>(height)));
}

void WeftMapEditorScene::SetRotationItem(int64_t uniqueID, float rotation)
{
    if (MappingRectangle* item = Find(uniqueID))
        item->setRotation(static_cast<double>(rotation));
}

void WeftMapEditorScene::SetFlipStateItem(int64_t uniqueID, int flipDirection, bool state)
{
    MappingRectangle* item = Find(uniqueID);
    if (!item) {
        ZEN_LOG_ERROR("SetFlipStateItem with uniqueID %lld not found!",
                      static_cast<long long>(uniqueID));
        return;
    }
    item->SetFlip(flipDirection, state);
}

void WeftMapEditorScene::DeleteObjectItem(int64_t uniqueID)
{
    const auto found = itemsById_.find(uniqueID);
    if (found == itemsById_.end()) {
        ZEN_LOG_DEBUG("WeftMapEditorScene::DeleteObjectItem() WARNING: Item %lld lost from the "
                      "scene!",
                      static_cast<long long>(uniqueID));
        return;
    }
    MappingRectangle* item = found->second;
    ZEN_LOG_DEBUG("WeftMapEditorScene::DeleteObjectItem() Mapping size=%zu, deleteId=%lld, "
                  "itemId=%lld",
                  itemsById_.size(), static_cast<long long>(uniqueID),
                  static_cast<long long>(item->GetId()));
    item->setSelected(false);
    itemsById_.erase(found);
    delete item;
    ZEN_LOG_DEBUG("WeftMapEditorScene::DeleteObjectItem() Deleted item %lld from the scene.",
                  static_cast<long long>(uniqueID));
}

void WeftMapEditorScene::RemoveSelectedRectangle()
{
    gestures_.Release();
    auto command = std::make_unique<RemoveRectangleCommand>(*this, SelectedIds());
    if (!command->ChangesNothing())
        Push(std::move(command));
}

// ---- Selection ---------------------------------------------------------------------------------

WeftMapEditorScene::SelectionBatch::SelectionBatch(WeftMapEditorScene& scene)
    : scene_(scene)
{
    ++scene_.selectionBatches_;
}

WeftMapEditorScene::SelectionBatch::~SelectionBatch()
{
    if (--scene_.selectionBatches_ == 0)
        scene_.SettleSelection();
}

void WeftMapEditorScene::NoteSelection(MappingRectangle& item, bool selected)
{
    if (selected)
        selected_.insert(item.GetId());
    else
        selected_.erase(item.GetId());
    selectionChanged_ = true;
    if (selectionBatches_ == 0)
        SettleSelection();
}

void WeftMapEditorScene::SettleSelection()
{
    if (!selectionChanged_)
        return;
    selectionChanged_ = false;
    if (MappingRectangle* before = Find(onlySelected_))
        before->SetOnlySelected(false);
    onlySelected_ = selected_.size() == 1 ? *selected_.begin() : 0;
    if (MappingRectangle* now = Find(onlySelected_))
        now->SetOnlySelected(true);
    if (selected_.size() < 2)
        overlay_.Remove();
    else
        overlay_.Follow();
    emit RectangleSelectionEvent();
}

std::vector<std::int64_t> WeftMapEditorScene::SelectedIds() const
{
    return {selected_.begin(), selected_.end()};
}

std::vector<QPersistentModelIndex> WeftMapEditorScene::SelectedIndexes() const
{
    std::vector<QPersistentModelIndex> indexes;
    indexes.reserve(selected_.size());
    for (const std::int64_t id : selected_)
        indexes.emplace_back(IndexOf(id));
    return indexes;
}

void WeftMapEditorScene::SetSelected(std::int64_t id, bool selected)
{
    if (MappingRectangle* item = Find(id)) {
        ZEN_LOG_DEBUG("WeftMapEditorScene::SetSelected(%lld, %s)", static_cast<long long>(id),
                      selected ? "yes" : "no");
        item->setSelected(selected);
    }
}

void WeftMapEditorScene::SelectById(const std::vector<std::int64_t>& ids)
{
    const SelectionBatch batch(*this);
    for (const std::int64_t id : ids) {
        if (MappingRectangle* item = Find(id))
            item->setSelected(true);
    }
}

void WeftMapEditorScene::SelectAll()
{
    {
        const SelectionBatch batch(*this);
        for (const auto& [id, item] : itemsById_)
            item->setSelected(true);
    }
    emit sceneClick();
}

void WeftMapEditorScene::UnSelectAll()
{
    const SelectionBatch batch(*this);
    overlay_.Remove();
    for (const std::int64_t id : SelectedIds())
        Find(id)->setSelected(false);
}

// ---- Overlays ----------------------------------------------------------------------------------

void WeftMapEditorScene::ShowGroupOverlay()
{
    overlay_.Show();
}

void WeftMapEditorScene::RemoveOverlays()
{
    dragPreview_.reset();
    overlay_.Remove();
}
