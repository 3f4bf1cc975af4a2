// SPDX-License-Identifier: MIT
// The scene's events of mouse, keys and drags. Gestures are in SceneGestures, changes of the model
// in the commands.
#include "UI/Editor/WeftMapEditorScene.h"

#include <QAction>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneDragDropEvent>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QUndoStack>
#include <QUrl>

#include "Log/Log.h"
#include "Model/DeviceManager.h"
#include "Model/DeviceModel.h"
#include "Model/ElementGeometry.h"
#include "UI/Commands/PlacementCommands.h"
#include "UI/Editor/GraphCornerGrabber.h"

namespace {

/// A fixture from the library, by its number in decimal.
const QLatin1String FixtureFormat("application/zentriledfixture");
const QLatin1String FileListFormat("text/uri-list");

bool IsItemList(const QString& format)
{
    return format == QLatin1String("application/x-qabstractitemmodeldatalist") ||
           format == QLatin1String("application/x-qstandarditemmodeldatalist");
}

std::int64_t FixtureId(const QMimeData& data)
{
    return data.data(FixtureFormat).toLongLong();
}

/// The mapping document that is dropped; empty when it is anything else.
QString DroppedDocument(const QMimeData& data)
{
    if (data.urls().isEmpty())
        return {};
    const QUrl url = data.urls().first();
    const QString text = url.toString();
    const bool isDocument = text.startsWith(QLatin1String("file:///")) &&
                            text.endsWith(QLatin1String(".wfm"), Qt::CaseInsensitive);
    return isDocument ? url.toLocalFile() : QString();
}

QPointF DirectionOf(int arrowKey)
{
    switch (arrowKey) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    default:
        return {0, 1};
    }
}

void Accept(QGraphicsSceneDragDropEvent& event)
{
    event.acceptProposedAction(); // Sets the action alone.
    event.accept();
}

} // namespace

// ---- Mouse -------------------------------------------------------------------------------------

MappingRectangle* WeftMapEditorScene::ItemWithHandleAt(QPointF scenePoint) const
{
    if (MappingRectangle* frame = overlay_.GetFrame();
        frame && frame->IsRotationHandleAt(scenePoint))
        return frame;
    // The newest element stands on top.
    const ElementIds selected = SelectedIds();
    for (auto id = selected.rbegin(); id != selected.rend(); ++id) {
        MappingRectangle* item = Find(*id);
        if (item && (item->IsRotationHandleAt(scenePoint) ||
                     item->GrabberAt(scenePoint) != ElementGeometry::NoCorner))
            return item;
    }
    return nullptr;
}

Qt::CursorShape WeftMapEditorScene::CursorAt(QPointF scenePoint) const
{
    const MappingRectangle* item = ItemWithHandleAt(scenePoint);
    if (!item)
        return Qt::ArrowCursor;
    if (item->IsRotationHandleAt(scenePoint))
        return Qt::PointingHandCursor;
    return GraphCornerGrabber::Cursor(item->GrabberAt(scenePoint), item->rotation());
}

bool WeftMapEditorScene::TakeHandle(QGraphicsSceneMouseEvent& event)
{
    // Handles come before all items: small elements have theirs outside. Ctrl alone is a click that
    // takes an element from the selection, wherever on it.
    const QPointF at = event.scenePos();
    const bool mayTake =
        event.button() == Qt::LeftButton && event.modifiers() != Qt::ControlModifier;
    MappingRectangle* item = mayTake ? ItemWithHandleAt(at) : nullptr;
    if (!item)
        return false;
    rubberBand_ = false;
    if (item->IsRotationHandleAt(at))
        gestures_.TakeRotationHandle(*item, at);
    else
        gestures_.TakeGrabber(*item, item->GrabberAt(at), at);
    event.accept();
    return true;
}

MappingRectangle* WeftMapEditorScene::PressedRectangle() const
{
    return qgraphicsitem_cast<MappingRectangle*>(mouseGrabberItem());
}

void WeftMapEditorScene::TakeItem(MappingRectangle& item, QPointF pressed)
{
    if (SelectedCount() == 0)
        return;
    ZEN_LOG_DEBUG("mousePressEvent: oldPos_=(%f, %f)", item.pos().x(), item.pos().y());
    gestures_.TakeItem(item, pressed);
}

void WeftMapEditorScene::mousePressEvent(QGraphicsSceneMouseEvent* event)
{
    const SelectionBatch batch(*this);
    if (event->button() == Qt::LeftButton)
        gestures_.Release(); // Of a drag whose end went to another window.
    waitsForDrag_ = false;
    if (TakeHandle(*event))
        return;
    QGraphicsScene::mousePressEvent(event);
    MappingRectangle* item = PressedRectangle();
    rubberBand_ = mouseGrabberItem() == nullptr;
    if (!item || event->button() != Qt::LeftButton)
        return;
    // A click with Control selects or deselects: only a drag moves an element that isn't selected.
    waitsForDrag_ = item->IsElement() && !item->isSelected();
    if (!waitsForDrag_)
        TakeItem(*item, event->scenePos());
}

void WeftMapEditorScene::mouseMoveEvent(QGraphicsSceneMouseEvent* event)
{
    const SelectionBatch batch(*this);
    const bool leftIsDown = event->buttons().testFlag(Qt::LeftButton);
    if (!leftIsDown)
        gestures_.Release();
    // Qt's own moving of items would bypass the model.
    if (MappingRectangle* item = PressedRectangle(); leftIsDown && item && waitsForDrag_) {
        waitsForDrag_ = false;
        item->setSelected(true);
        TakeItem(*item, event->buttonDownScenePos(Qt::LeftButton));
    }
    if (leftIsDown && (gestures_.IsDragging() || PressedRectangle())) {
        gestures_.DragTo(event->scenePos());
        event->accept();
        return;
    }
    QGraphicsScene::mouseMoveEvent(event);
    if (event->buttons() == Qt::NoButton && event->widget()) {
        const Qt::CursorShape shape = CursorAt(event->scenePos());
        if (event->widget()->cursor().shape() != shape)
            event->widget()->setCursor(shape);
    }
}

void WeftMapEditorScene::mouseReleaseEvent(QGraphicsSceneMouseEvent* event)
{
    {
        const SelectionBatch batch(*this);
        QGraphicsScene::mouseReleaseEvent(event);
    }
    if (event->button() == Qt::LeftButton)
        gestures_.Release();
    if (SelectedCount() < 2)
        overlay_.Remove();
    if (rubberBand_ || event->modifiers().testFlag(Qt::ControlModifier))
        emit selectionEnded(SelectedCount());
    rubberBand_ = false;
    emit sceneClick();
}

void WeftMapEditorScene::mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event)
{
    std::int64_t clicked = MappingRectangle::OverlayId;
    {
        const SelectionBatch batch(*this);
        // The second of two quick presses arrives only as this event, also on a handle.
        if (TakeHandle(*event))
            return;
        QGraphicsScene::mouseDoubleClickEvent(event);
        MappingRectangle* item = PressedRectangle();
        if (!item || event->button() != Qt::LeftButton)
            return;
        ZEN_LOG_DEBUG("mouseDoubleClickEvent: oldPos_=(%f, %f)", item->pos().x(), item->pos().y());
        if (!item->IsElement() || item->isSelected())
            TakeItem(*item, event->scenePos());
        clicked = item->GetId();
    }
    emit RectangleDoubleClicked(clicked);
}

void WeftMapEditorScene::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        RemoveSelectedRectangle();
        break;
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_Right:
    case Qt::Key_Down:
        Nudge(*event); // Without a selection, too, the keys don't scroll.
        break;
    default:
        QGraphicsScene::keyPressEvent(event);
    }
}

void WeftMapEditorScene::Nudge(const QKeyEvent& key)
{
    constexpr double far = 10;
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    if (modifiers != Qt::NoModifier && modifiers != Qt::ShiftModifier)
        return;
    const double pixels = modifiers == Qt::ShiftModifier ? far : 1;
    gestures_.Nudge(DirectionOf(key.key()) * pixels, key.isAutoRepeat());
}

// ---- Context menu ------------------------------------------------------------------------------

/// The menu is about what the mouse is on: of several elements, all; of any other, that alone.
void WeftMapEditorScene::SelectAt(QPointF scenePoint)
{
    const MappingRectangle* item = ElementAt(scenePoint);
    if (!item || item->isSelected())
        return;
    const std::int64_t id = item->GetId();
    const SelectionBatch batch(*this);
    UnSelectAll();
    SetSelected(id, true);
}

void WeftMapEditorScene::contextMenuEvent(QGraphicsSceneContextMenuEvent* event)
{
    gestures_.Release(); // The menu keeps the mouse to itself,
    if (QGraphicsItem* pressed = mouseGrabberItem())
        pressed->ungrabMouse(); // and the release, without which the item would get the next press.
    if (event->reason() == QGraphicsSceneContextMenuEvent::Mouse)
        SelectAt(event->scenePos());
    QMenu menu(event->widget());
    menu.setObjectName(QStringLiteral("canvasMenu"));
    const auto add = [&menu](QAction* action) {
        if (action)
            menu.addAction(action);
    };
    if (SelectedCount() == 0) {
        add(actions_.canvasSize);
        menu.addSeparator();
        add(actions_.paste);
    } else {
        add(flipHorizontal_);
        add(flipVertical_);
        menu.addSeparator();
        add(actions_.copy);
        add(actions_.paste);
        menu.addSeparator();
        add(actions_.duplicate);
        add(actions_.repatch);
        menu.addSeparator();
        if (actions_.align)
            menu.addMenu(actions_.align);
        if (actions_.rotate)
            menu.addMenu(actions_.rotate);
        menu.addSeparator();
        add(actions_.remove);
    }
    event->accept();
    if (!menu.isEmpty())
        menu.exec(event->screenPos());
}

// ---- Drag and drop -----------------------------------------------------------------------------

void WeftMapEditorScene::ShowDragPreview(std::int64_t fixtureID, QPointF at)
{
    int width = 0;
    int height = 0;
    if (fixtureID <= 0 || !manager_.GetDeviceSize(fixtureID, width, height))
        return;
    if (!dragPreview_) {
        dragPreview_ = std::make_unique<MappingRectangle>(
            display_, MappingRectangle::Variant::DragPreview, QSizeF(width, height));
        dragPreview_->setZValue(1);
        addItem(dragPreview_.get());
    }
    const QSizeF size(width, height);
    dragPreview_->SetPlacement({ElementGeometry::SnappedCentre(at, size), size});
}

void WeftMapEditorScene::dragEnterEvent(QGraphicsSceneDragDropEvent* event)
{
    event->ignore();
    for (const QString& format : event->mimeData()->formats()) {
        if (format == FixtureFormat) {
            ShowDragPreview(FixtureId(*event->mimeData()), event->scenePos());
            Accept(*event);
            return;
        }
        if (IsItemList(format) || format == FileListFormat)
            Accept(*event);
    }
}

void WeftMapEditorScene::dragMoveEvent(QGraphicsSceneDragDropEvent* event)
{
    event->accept();
    if (!dragPreview_)
        return;
    dragPreview_->setPos(
        ElementGeometry::SnappedCentre(event->scenePos(), dragPreview_->GetSize()));
}

void WeftMapEditorScene::dragLeaveEvent(QGraphicsSceneDragDropEvent*)
{
    dragPreview_.reset();
}

void WeftMapEditorScene::dropEvent(QGraphicsSceneDragDropEvent* event)
{
    const QPointF place = event->scenePos();
    const QMimeData& data = *event->mimeData();
    std::int64_t fixtureID = 0;
    QString document;
    event->ignore();
    for (const QString& format : data.formats()) {
        if (format == FileListFormat)
            document = DroppedDocument(data);
        if (format == FileListFormat || format == FixtureFormat || IsItemList(format))
            Accept(*event);
        if (format == FixtureFormat)
            fixtureID = FixtureId(data);
        if (format == FixtureFormat || IsItemList(format))
            break;
    }
    dragPreview_.reset();
    if (!document.isEmpty())
        emit importRequested(document);
    if (fixtureID > 0)
        DropFixture(fixtureID, place);
}

void WeftMapEditorScene::DropFixture(std::int64_t fixtureID, QPointF place)
{
    int width = 0;
    int height = 0;
    if (!manager_.GetDeviceSize(fixtureID, width, height))
        return; // It left the library on the way; the log has a line.
    gestures_.Release();
    const PatchAddress patch = NextFreePatch(fixtureID);
    RemoveOverlays();
    MappedObjectParams params;
    params.ipconf = QStringLiteral("Auto");
    const QPointF centre = ElementGeometry::SnappedCentre(place, QSizeF(width, height));
    params.posX = static_cast<float>(centre.x());
    params.posY = static_cast<float>(centre.y());
    params.width = static_cast<float>(width);
    params.height = static_cast<float>(height);
    params.fixtureID = fixtureID;
    params.subnet = patch.subnet;
    params.universe = patch.universe;
    params.channel = patch.channel;
    undoStack_.push(new CreateNewMappingCommand(manager_, params));
    // The next key is meant for what was dropped, not for the list that it came from.
    for (QGraphicsView* view : views())
        view->setFocus();
}
