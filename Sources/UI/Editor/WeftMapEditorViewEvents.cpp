// SPDX-License-Identifier: MIT
// The view's events of mouse, wheel and keys: what moves the view, and what goes on to the scene.
#include "UI/Editor/WeftMapEditorView.h"

#include <memory>
#include <optional>
#include <utility>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include "LibTools/Qt5And6.h"
#include "UI/Editor/EditorDisplayState.h"
#include "UI/Editor/WeftMapEditorScene.h"

namespace {

constexpr int WheelStep = 30; ///< of the wheel's delta, before the zoom takes a step

/// A rubber band changes the selection of many elements with each move of the mouse: one event
/// each.
class BatchOf
{
public:
    explicit BatchOf(QGraphicsScene* scene)
    {
        if (auto* editor = qobject_cast<WeftMapEditorScene*>(scene))
            batch_.emplace(*editor);
    }

private:
    std::optional<WeftMapEditorScene::SelectionBatch> batch_;
};

/// Qt's view adds to the selection with Ctrl, which pans here: Shift does it too.
std::unique_ptr<QMouseEvent> WithAddingKey(const QMouseEvent& event)
{
    auto copy = Qt5And6::CopyOf(event);
    if (event.modifiers().testFlag(Qt::ShiftModifier))
        copy->setModifiers(event.modifiers() | Qt::ControlModifier);
    return copy;
}

} // namespace

// ---- The mouse ---------------------------------------------------------------------------------

bool WeftMapEditorView::BeginPan(const QMouseEvent& event)
{
    if (event.buttons() != event.button())
        return false; // the other button drags something already
    const bool isLeft = event.button() == Qt::LeftButton;
    const bool withControl = isLeft && event.modifiers() == Qt::ControlModifier;
    if (!withControl && !(isLeft && spaceIsDown_) && event.button() != Qt::MiddleButton)
        return false;
    pan_ = Pan{event.button(), event.pos(), withControl && !spaceIsDown_};
    viewport()->setCursor(Qt::ClosedHandCursor);
    return true;
}

void WeftMapEditorView::GoOnPanning(const QMouseEvent& event)
{
    const QPoint way = pan_->at - event.pos();
    if (pan_->mayBeClick && way.manhattanLength() < QApplication::startDragDistance())
        return;
    pan_->mayBeClick = false;
    pan_->at = event.pos();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + way.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + way.y());
}

void WeftMapEditorView::EndPan()
{
    pan_.reset();
    viewport()->setCursor(spaceIsDown_ ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

/// The press that might have begun a pan, and its release.
void WeftMapEditorView::ClickWithControl(const QMouseEvent& release)
{
    const BatchOf batch(scene());
    const QPointF at = Qt5And6::PositionOf(release);
    const QPointF onScreen = Qt5And6::GlobalPositionOf(release);
    QMouseEvent press(QEvent::MouseButtonPress, at, onScreen, Qt::LeftButton, Qt::LeftButton,
                      Qt::ControlModifier);
    QGraphicsView::mousePressEvent(&press);
    QMouseEvent end(QEvent::MouseButtonRelease, at, onScreen, Qt::LeftButton, Qt::NoButton,
                    Qt::ControlModifier);
    QGraphicsView::mouseReleaseEvent(&end);
}

void WeftMapEditorView::mousePressEvent(QMouseEvent* event)
{
    if (pan_ || BeginPan(*event))
        return;
    const BatchOf batch(scene());
    QGraphicsView::mousePressEvent(WithAddingKey(*event).get());
}

void WeftMapEditorView::mouseDoubleClickEvent(QMouseEvent* event)
{
    // Of two quick presses the second arrives only as this event.
    if (pan_ || BeginPan(*event))
        return;
    QGraphicsView::mouseDoubleClickEvent(WithAddingKey(*event).get());
}

void WeftMapEditorView::mouseMoveEvent(QMouseEvent* event)
{
    if (pan_ && !event->buttons().testFlag(pan_->button))
        EndPan(); // Its release went to another window.
    if (pan_)
        return GoOnPanning(*event);
    if (spaceIsDown_ && event->buttons() == Qt::NoButton)
        return; // The scene has other cursors.
    const BatchOf batch(scene());
    QGraphicsView::mouseMoveEvent(event);
}

void WeftMapEditorView::mouseReleaseEvent(QMouseEvent* event)
{
    if (!pan_) {
        QGraphicsView::mouseReleaseEvent(WithAddingKey(*event).get());
        return;
    }
    if (event->button() != pan_->button)
        return;
    const bool isClick = pan_->mayBeClick;
    EndPan();
    if (isClick)
        ClickWithControl(*event);
}

void WeftMapEditorView::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers() != Qt::ControlModifier || !display_) {
        QGraphicsView::wheelEvent(event);
        return;
    }
    event->accept();
    wheelAccumulator_ += event->angleDelta().y();
    if (wheelAccumulator_ >= -WheelStep && wheelAccumulator_ <= WheelStep)
        return;
    if (wheelAccumulator_ > WheelStep)
        display_->ZoomIn();
    else
        display_->ZoomOut();
    wheelAccumulator_ = 0;
    UpdateMatrix();
    emit updateZoomWidgets();
}

// ---- Keys --------------------------------------------------------------------------------------

void WeftMapEditorView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Space)
        return QGraphicsView::keyPressEvent(event);
    event->accept();
    if (event->isAutoRepeat())
        return;
    spaceIsDown_ = true;
    if (!pan_)
        viewport()->setCursor(Qt::OpenHandCursor);
}

void WeftMapEditorView::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Space)
        return QGraphicsView::keyReleaseEvent(event);
    event->accept();
    if (!event->isAutoRepeat())
        LetGoOfSpace();
}

void WeftMapEditorView::focusOutEvent(QFocusEvent* event)
{
    LetGoOfSpace(); // Its release goes to another widget.
    QGraphicsView::focusOutEvent(event);
}

void WeftMapEditorView::LetGoOfSpace()
{
    if (!std::exchange(spaceIsDown_, false) || pan_)
        return;
    viewport()->setCursor(Qt::ArrowCursor);
}
