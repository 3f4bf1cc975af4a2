// SPDX-License-Identifier: MIT
#include "UI/Editor/WeftMapEditorScene.h"

#include <utility>

#include <QAction>
#include <QGraphicsView>
#include <QUndoStack>

#include "Language/Language.h"
#include "Log/Log.h"
#include "Model/DeviceManager.h"
#include "Model/ElementGeometry.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "UI/Commands/PlacementCommands.h"
#include "UI/Editor/EditorDisplayState.h"
#include "UI/Editor/GraphCanvas.h"
#include "UI/Editor/GraphForeground.h"

namespace {

constexpr std::size_t ManyElements = 256;

constexpr double CanvasZ = -2;
constexpr double ForegroundZ = 2;

/// Whether no node is chosen for the element.
bool IsAuto(const MappedLedItem& element)
{
    return element.GetDMXMapping() && element.GetDMXMapping()->GetIpconf() == AutoNode;
}

} // namespace

WeftMapEditorScene::WeftMapEditorScene(DeviceManager& manager, EditorDisplayState& display,
                                       QUndoStack& undoStack, QObject* parent)
    : QGraphicsScene(parent)
    , manager_(manager)
    , display_(display)
    , undoStack_(undoStack)
    , flipHorizontal_(new QAction(this))
    , flipVertical_(new QAction(this))
    , canvas_(new GraphCanvas(display))
    , foreground_(new GraphForeground)
    , selection_([this] { FollowSelection(); })
    , overlay_({*this, manager, display, selection_})
    , gestures_({manager, display, selection_, overlay_, undoStack, [this](bool hold) {
                     HoldUndo(hold);
                 }})
{
    setItemIndexMethod(NoIndex);
    canvas_->setZValue(CanvasZ);
    foreground_->setZValue(ForegroundZ);
    addItem(canvas_);
    addItem(foreground_);
    flipHorizontal_->setObjectName(QStringLiteral("actionFlipHorizontal"));
    flipVertical_->setObjectName(QStringLiteral("actionFlipVertical"));
    InEachLanguage(this, [this] {
        flipHorizontal_->setText(tr("Flip &Horizontal"));
        flipVertical_->setText(tr("Flip &Vertical"));
    });
    flipHorizontal_->setCheckable(true);
    flipVertical_->setCheckable(true);
    connect(flipHorizontal_, &QAction::triggered, this,
            &WeftMapEditorScene::FlipHSelectedRectangle);
    connect(flipVertical_, &QAction::triggered, this, &WeftMapEditorScene::FlipVSelectedRectangle);
    ShowFlips();
    ConnectModel();
}

WeftMapEditorScene::~WeftMapEditorScene()
{
    // Nobody listens any more, and the items say when they are deselected.
    blockSignals(true);
    RemoveOverlays();
    const SelectionBatch batch(*this);
    for (const auto& [id, item] : std::exchange(itemsById_, {}))
        delete item;
}

void WeftMapEditorScene::ConnectModel()
{
    connect(&manager_, &DeviceManager::elementsAdded, this, [this](const ElementIds& ids) {
        for (const std::int64_t id : ids)
            AddRectangle(id);
    });
    connect(&manager_, &DeviceManager::elementsAboutToBeRemoved, this,
            [this](const ElementIds& ids) {
                const SelectionBatch batch(*this);
                // The last ones first: that is where Qt's list of items finds them soonest.
                for (auto id = ids.rbegin(); id != ids.rend(); ++id)
                    DeleteObjectItem(*id);
            });
    connect(&manager_, &DeviceManager::elementsChanged, this, [this](const ElementIds& ids) {
        // Of many, gathering what to paint anew of each takes longer than painting all.
        if (ids.size() >= ManyElements)
            update();
        for (const std::int64_t id : ids) {
            if (MappingRectangle* item = Find(id))
                Place(*item);
        }
        ShowFlips();
    });
    connect(&manager_, &DeviceManager::elementsPatched, this, &WeftMapEditorScene::MarkAuto);
    connect(&manager_, &DeviceManager::elementsRefitted, this, [this](const ElementIds& ids) {
        for (const std::int64_t id : ids) {
            if (MappingRectangle* item = Find(id))
                TakeNaturalSize(*item);
        }
    });
    connect(&manager_, &DeviceManager::devicesChangedGeometry, this, [this] { overlay_.Follow(); });
    connect(&manager_, &DeviceManager::changeCanvasSize, this, [this](int width, int height) {
        SetCanvasSize(width, height);
        PlaceAll();
    });
}

void WeftMapEditorScene::SetActions(const EditorActions& actions)
{
    actions_ = actions;
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
    setSceneRect(QRect(-(width / 2), -(height / 2), 2 * width, 2 * height));
    emit sceneSizeChanged();
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

void WeftMapEditorScene::AddRectangle(std::int64_t id)
{
    const MappedLedItem* element = manager_.GetMappedDeviceModel()->GetItemByUniqueID(id);
    if (!element || !element->GetVideoMapping() || itemsById_.contains(id))
        return;
    auto item = std::make_unique<MappingRectangle>(*this, display_, id);
    TakeNaturalSize(*item);
    item->SetAutoMark(IsAuto(*element));
    Place(*item);
    itemsById_[id] = item.get();
    addItem(item.release());
}

void WeftMapEditorScene::TakeNaturalSize(MappingRectangle& item) const
{
    const MappedLedItem* element = manager_.GetMappedDeviceModel()->GetItemByUniqueID(item.GetId());
    if (!element)
        return;
    const PixelMap& pixels = element->GetFixture().pixelMap;
    item.SetNaturalSize(QSizeF(pixels.GetWidth(), pixels.GetHeight()));
}

void WeftMapEditorScene::Place(MappingRectangle& item) const
{
    const MappedLedItem* element = manager_.GetMappedDeviceModel()->GetItemByUniqueID(item.GetId());
    if (!element || !element->GetVideoMapping())
        return;
    const VideoMapping& video = *element->GetVideoMapping();
    item.SetPlacement(ElementGeometry::PlacementOf(video, manager_.CanvasPixels()));
    item.setRotation(static_cast<double>(video.rotation));
    item.SetFlip(FlipHorizontal, video.flipHorizontal);
    item.SetFlip(FlipVertical, video.flipVertical);
}

void WeftMapEditorScene::PlaceAll()
{
    for (const auto& [id, item] : itemsById_)
        Place(*item);
    overlay_.Follow();
}

MappingRectangle* WeftMapEditorScene::Find(std::int64_t id) const
{
    const auto found = itemsById_.find(id);
    return found == itemsById_.end() ? nullptr : found->second;
}

const MappingRectangle* WeftMapEditorScene::ElementAt(QPointF place) const
{
    for (const QGraphicsItem* item : items(place)) {
        const auto* rectangle = qgraphicsitem_cast<const MappingRectangle*>(item);
        if (rectangle && rectangle->IsElement())
            return rectangle;
    }
    return nullptr;
}

ElementIds WeftMapEditorScene::AllIds() const
{
    ElementIds ids;
    ids.reserve(itemsById_.size());
    for (const auto& [id, item] : itemsById_)
        ids.push_back(id);
    return ids;
}

void WeftMapEditorScene::RefreshAutoMarks()
{
    MarkAuto(AllIds());
}

void WeftMapEditorScene::MarkAuto(const ElementIds& ids)
{
    for (const std::int64_t id : ids) {
        const MappedLedItem* element = manager_.GetMappedDeviceModel()->GetItemByUniqueID(id);
        if (MappingRectangle* item = Find(id))
            item->SetAutoMark(element && IsAuto(*element));
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

void WeftMapEditorScene::DeleteObjectItem(std::int64_t id)
{
    const auto found = itemsById_.find(id);
    if (found == itemsById_.end()) {
        ZEN_LOG_DEBUG("WeftMapEditorScene::DeleteObjectItem() WARNING: Item %lld lost from the "
                      "scene!",
                      static_cast<long long>(id));
        return;
    }
    MappingRectangle* item = found->second;
    ZEN_LOG_DEBUG("WeftMapEditorScene::DeleteObjectItem() Mapping size=%zu, deleteId=%lld, "
                  "itemId=%lld",
                  itemsById_.size(), static_cast<long long>(id),
                  static_cast<long long>(item->GetId()));
    item->setSelected(false);
    itemsById_.erase(found);
    delete item;
    ZEN_LOG_DEBUG("WeftMapEditorScene::DeleteObjectItem() Deleted item %lld from the scene.",
                  static_cast<long long>(id));
}

void WeftMapEditorScene::RemoveSelectedRectangle()
{
    gestures_.Release();
    if (!selection_.IsEmpty())
        undoStack_.push(new RemoveRectangleCommand(manager_, SelectedIds()));
}

// ---- Selection ---------------------------------------------------------------------------------

void WeftMapEditorScene::NoteSelection(std::int64_t id, bool selected)
{
    selection_.Set(id, selected);
}

void WeftMapEditorScene::FollowSelection()
{
    if (MappingRectangle* before = Find(onlySelected_))
        before->SetOnlySelected(false);
    onlySelected_ = selection_.Count() == 1 ? selection_.Ids().front() : 0;
    if (MappingRectangle* now = Find(onlySelected_))
        now->SetOnlySelected(true);
    if (selection_.Count() < 2)
        overlay_.Remove();
    else
        overlay_.Follow();
    ShowFlips();
    emit RectangleSelectionEvent();
}

void WeftMapEditorScene::ShowFlips()
{
    const MappingRectangle* item = Find(onlySelected_);
    flipHorizontal_->setChecked(item && item->IsFlipped(FlipHorizontal));
    flipVertical_->setChecked(item && item->IsFlipped(FlipVertical));
    for (QAction* flip : FlipActions())
        flip->setEnabled(item);
}

std::vector<QPersistentModelIndex> WeftMapEditorScene::SelectedIndexes() const
{
    std::vector<QPersistentModelIndex> indexes;
    for (const std::int64_t id : selection_.Ids())
        indexes.emplace_back(manager_.GetMappedDeviceModel()->GetIndexOfUniqueID(id));
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
