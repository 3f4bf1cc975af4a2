// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include <QEvent>
#include <QObject>
#include <QPointer>

class FrameLoop;

/// Keeps the work of the windows from taking the time of the output, which shares their thread.
/// Installed on the application, it watches what comes in from the window system and what is to be
/// painted:
/// - a tick that is due runs first; the event loop alone would do all work that waits before it
///   looks at its timers;
/// - between two ticks the mouse moves once: of further moves the newest waits;
/// - moves, turns of the wheel and repaints that would not be done by the next tick wait for it,
///   going by how long the last ones of their kind took. What is done within a few milliseconds
///   never waits.
/// What waits comes behind the next tick, in its order and as far as the time until the following
/// tick goes, but one piece in any case, however long it takes. Other input lets go what waits
/// before it: input keeps its order.
class EventPace final : public QObject
{
    Q_OBJECT

public:
    /// `frameLoop` outlives the object.
    explicit EventPace(const FrameLoop& frameLoop);

    bool eventFilter(QObject* watched, QEvent* event) override;
    /// A tick has ended: what waits for it comes next.
    void TickEnded();

signals:
    /// Answered by a tick.
    void tickIsDue();

private:
    /// An event that waits.
    struct Work
    {
        QPointer<QObject> receiver;
        std::unique_ptr<QEvent> event;
    };
    struct Duration
    {
        QPointer<QObject> receiver;
        QEvent::Type type = QEvent::None;
        std::int64_t last = 0; ///< nanoseconds
    };

    void RunDueTick();
    [[nodiscard]] bool MayGo(QObject& receiver, const QEvent& event);
    void Wait(QObject& receiver, const QEvent& event);
    [[nodiscard]] bool InputWaits() const;
    void LetInputGo();
    void GoOn();
    void Take(const std::deque<Work>::iterator& place);
    void Deliver(QObject& receiver, QEvent& event);
    [[nodiscard]] static bool IsInput(const Work& work);
    [[nodiscard]] bool Fits(QObject& receiver, QEvent::Type type);
    [[nodiscard]] bool Fits(const Work& work);
    [[nodiscard]] std::int64_t& DurationOf(QObject& receiver, QEvent::Type type);

    const FrameLoop& frameLoop_;
    const QEvent* delivered_ = nullptr; ///< by this object itself
    bool moved_ = false;                ///< since the last tick
    std::deque<Work> waiting_;
    std::vector<Duration> durations_;
};
