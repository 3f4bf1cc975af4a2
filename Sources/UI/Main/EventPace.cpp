// SPDX-License-Identifier: MIT
#include "UI/Main/EventPace.h"

#include <QCoreApplication>
#include <QScopedValueRollback>
#include <QWindow>

#include <algorithm>
#include <utility>

#include "Platform/Clock.h"
#include "UI/Main/FrameLoop.h"

namespace {

bool IsInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Leave:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::Resize:
    case QEvent::Expose:
        return true;
    default:
        return false;
    }
}

} // namespace

EventPace::EventPace(const FrameLoop& frameLoop)
    : frameLoop_(frameLoop)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool EventPace::eventFilter(QObject* watched, QEvent* event)
{
    if (event == passing_)
        return false;
    const bool isRepaint = event->type() == QEvent::UpdateRequest && watched->isWidgetType();
    // Windows get their input from the window system alone, between two pieces of work.
    const bool isInput = watched->isWindowType() && IsInput(event->type());
    if (!isRepaint && !isInput)
        return false;
    if (frameLoop_.TimeToTick() <= 0)
        emit tickIsDue();
    if (isRepaint) {
        auto& window = *static_cast<QWidget*>(watched);
        if (!HoldRepaint(window))
            DoRepaint(window, *event);
        return true;
    }
    if (event->type() == QEvent::MouseMove)
        return HoldMove(*static_cast<QWindow*>(watched), *static_cast<QMouseEvent*>(event));
    LetMoveGo();
    return false;
}

bool EventPace::HoldMove(QWindow& window, const QMouseEvent& move)
{
    const bool ticksRun = frameLoop_.TimeToTick() <= TickGrid::Interval;
    if (!ticksRun || !std::exchange(moved_, true))
        return false;
    if (moveWindow_ != &window)
        LetMoveGo();
    moveWindow_ = &window;
    move_ = std::make_unique<QMouseEvent>(move);
    return true;
}

void EventPace::LetMoveGo()
{
    const auto move = std::exchange(move_, nullptr);
    if (!move || !moveWindow_)
        return;
    moved_ = true;
    PassOn(*moveWindow_, *move);
}

void EventPace::PassOn(QObject& receiver, QEvent& event)
{
    const QScopedValueRollback<const QEvent*> passing(passing_, &event);
    QCoreApplication::sendEvent(&receiver, &event);
}

bool EventPace::HoldRepaint(QWidget& window)
{
    Repaint& repaint = RepaintOf(window);
    repaint.waits = repaint.duration > frameLoop_.TimeToTick();
    return repaint.waits;
}

void EventPace::DoRepaint(QWidget& window, QEvent& event)
{
    const QPointer<QWidget> stillThere = &window;
    const std::int64_t begin = Platform::MonotonicNanoseconds();
    PassOn(window, event);
    if (stillThere)
        RepaintOf(window).duration = Platform::MonotonicNanoseconds() - begin;
}

EventPace::Repaint& EventPace::RepaintOf(QWidget& window)
{
    std::erase_if(repaints_, [](const Repaint& repaint) { return repaint.window.isNull(); });
    const auto known = std::ranges::find_if(
        repaints_, [&window](const Repaint& repaint) { return repaint.window == &window; });
    return known == repaints_.end() ? repaints_.emplace_back(Repaint{&window}) : *known;
}

void EventPace::TickEnded()
{
    moved_ = false;
    // Not from within the tick's own timer: a drag that the move begins has an event loop, in which
    // the timer must run.
    if (move_ || std::ranges::any_of(repaints_, &Repaint::waits))
        QMetaObject::invokeMethod(this, &EventPace::GoOn, Qt::QueuedConnection);
}

void EventPace::GoOn()
{
    LetMoveGo();
    std::vector<QPointer<QWidget>> waiting;
    for (Repaint& repaint : repaints_) {
        if (std::exchange(repaint.waits, false))
            waiting.push_back(repaint.window);
    }
    for (const QPointer<QWidget>& window : waiting) {
        QEvent update(QEvent::UpdateRequest);
        if (window)
            DoRepaint(*window, update);
    }
}
