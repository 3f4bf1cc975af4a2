// SPDX-License-Identifier: MIT
#include "UI/Main/EventPace.h"

#include <QCoreApplication>
#include <QGraphicsScene>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

#include "LibTools/Qt5And6.h"
#include "Platform/Clock.h"
#include "UI/Main/FrameLoop.h"

namespace {

/// What takes less may come just before a tick: up to 5 ms late a tick is in time.
constexpr std::int64_t ShortWork = 3'000'000;
constexpr std::int64_t LongWork = 2 * TickGrid::Interval;
/// So many pieces of a kind later a third of what the longest took is still reckoned with. A
/// blinking lamp repaints the window five times a second, and must not hide what an undo of
/// everything takes.
constexpr std::int64_t Memory = 32;

enum class Kind
{
    Other,
    SceneUpdate, ///< what an edit of thousands of elements leaves to the event loop: never waits
    Prompt,      ///< what the window system, a shortcut or an input method wants an answer to
    SingleInput, ///< a click or a key: waits for nothing but the input before it
    FrequentInput,
    Repaint
};

/// Windows get their input from the window system alone, between two pieces of work.
Kind KindOf(const QObject& receiver, QEvent::Type type)
{
    if (type == QEvent::UpdateRequest)
        return receiver.isWidgetType() ? Kind::Repaint : Kind::Other;
    if (type == QEvent::MetaCall)
        return qobject_cast<const QGraphicsScene*>(&receiver) ? Kind::SceneUpdate : Kind::Other;
    if (type == QEvent::Shortcut)
        return Kind::Prompt;
    if (!receiver.isWindowType())
        return Kind::Other;
    switch (type) {
    case QEvent::MouseMove:
    case QEvent::Wheel:
        return Kind::FrequentInput;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return Kind::SingleInput;
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::Close:
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::Resize:
    case QEvent::Expose:
        return Kind::Prompt;
    default:
        return Kind::Other;
    }
}

template <typename Event>
std::unique_ptr<QEvent> CopyAs(const QEvent& event)
{
    return Qt5And6::CopyOf(static_cast<const Event&>(event));
}

/// Of input or a repaint, for later delivery.
std::unique_ptr<QEvent> Copy(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        return CopyAs<QMouseEvent>(event);
    case QEvent::Wheel:
        return CopyAs<QWheelEvent>(event);
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return CopyAs<QKeyEvent>(event);
    default:
        return Qt5And6::CopyOf(event);
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
    const Kind kind = KindOf(*watched, event->type());
    if (kind == Kind::Other || event == delivered_)
        return false;
    const QPointer<QObject> receiver = watched;
    RunDueTick();
    if (kind == Kind::Prompt)
        LetInputGo();
    if (!receiver)
        return true;
    if (kind == Kind::SceneUpdate || kind == Kind::Prompt ||
        (kind == Kind::SingleInput && !InputWaits()))
        return false;
    if (kind == Kind::SingleInput) {
        // In the queue, not from here: what comes before may bring an event loop of its own, which
        // must get this, too.
        Wait(*watched, *event);
        LetInputGo();
    } else if (MayGo(*watched, *event)) {
        Deliver(*watched, *event);
    } else {
        Wait(*watched, *event);
    }
    return true;
}

void EventPace::RunDueTick()
{
    if (frameLoop_.TimeToTick() <= 0)
        emit tickIsDue();
}

bool EventPace::MayGo(QObject& receiver, const QEvent& event)
{
    const bool ticksRun = frameLoop_.TimeToTick() <= TickGrid::Interval;
    if (!ticksRun)
        return true;
    if (event.type() != QEvent::UpdateRequest && InputWaits())
        return false;
    if (event.type() == QEvent::MouseMove && moved_)
        return false;
    return Fits(receiver, event.type());
}

void EventPace::Wait(QObject& receiver, const QEvent& event)
{
    // One repaint of a window covers all others of it; of moves in a row the last one counts.
    const auto isSame = [&](const Work& work) {
        return work.receiver == &receiver && work.event->type() == event.type();
    };
    if (event.type() == QEvent::UpdateRequest && std::ranges::any_of(waiting_, isSame))
        return;
    const auto last = std::find_if(waiting_.rbegin(), waiting_.rend(), &IsInput);
    if (event.type() == QEvent::MouseMove && last != waiting_.rend() && isSame(*last))
        last->event = Copy(event);
    else
        waiting_.push_back({&receiver, Copy(event)});
}

bool EventPace::IsInput(const Work& work)
{
    return work.event->type() != QEvent::UpdateRequest;
}

bool EventPace::Fits(QObject& receiver, QEvent::Type type)
{
    const std::int64_t duration = DurationOf(receiver, type);
    return duration <= ShortWork || duration <= frameLoop_.TimeToTick();
}

bool EventPace::Fits(const Work& work)
{
    return !work.receiver || Fits(*work.receiver, work.event->type());
}

bool EventPace::InputWaits() const
{
    return std::ranges::any_of(waiting_, &IsInput);
}

void EventPace::LetInputGo()
{
    while (InputWaits())
        Take(std::ranges::find_if(waiting_, &IsInput));
}

void EventPace::TickEnded()
{
    moved_ = false;
    // Not from within the tick's own timer: a drag that a move begins has an event loop, in which
    // the timer must run.
    if (!waiting_.empty())
        QMetaObject::invokeMethod(this, &EventPace::GoOn, Qt::QueuedConnection);
}

void EventPace::GoOn()
{
    for (bool first = true; !waiting_.empty() && (first || Fits(waiting_.front())); first = false)
        Take(waiting_.begin());
}

void EventPace::Take(const std::deque<Work>::iterator& place)
{
    // It may bring an event loop of its own, in which others are taken.
    const Work work = std::move(*place);
    waiting_.erase(place);
    RunDueTick();
    if (work.receiver)
        Deliver(*work.receiver, *work.event);
}

void EventPace::Deliver(QObject& receiver, QEvent& event)
{
    const QEvent::Type type = event.type();
    const QPointer<QObject> stillThere = &receiver;
    moved_ = moved_ || type == QEvent::MouseMove;
    const std::int64_t begin = Platform::MonotonicNanoseconds();
    {
        const QScopedValueRollback<const QEvent*> delivering(delivered_, &event);
        // Not sendEvent, after which the event would no longer count as one from outside the
        // program: a wheel's goes on to a parent only then.
        QCoreApplication::instance()->notify(&receiver, &event);
    }
    if (!stillThere)
        return;
    // One that took long is reckoned with for a while, since work of a kind varies, and one that
    // brought a dialog no longer than any other.
    std::int64_t& duration = DurationOf(receiver, type);
    const std::int64_t last = std::min(Platform::MonotonicNanoseconds() - begin, LongWork);
    duration = std::max(last, duration - duration / Memory);
}

std::int64_t& EventPace::DurationOf(QObject& receiver, QEvent::Type type)
{
    std::erase_if(durations_, [](const Duration& known) { return known.receiver.isNull(); });
    const auto known = std::ranges::find_if(durations_, [&](const Duration& duration) {
        return duration.receiver == &receiver && duration.type == type;
    });
    return known == durations_.end() ? durations_.emplace_back(Duration{&receiver, type}).last
                                     : known->last;
}
