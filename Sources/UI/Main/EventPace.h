// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <QMouseEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>

class FrameLoop;
class QWindow;

/// Keeps the work of the windows from taking the time of the output, which shares their thread.
/// Installed on the application, it watches what comes in from the window system and what is to be
/// painted:
/// - a tick that is due runs first; the event loop alone would do all work that waits before it
///   looks at its timers;
/// - between two ticks the mouse moves once: of further moves the newest waits for the end of the
///   next tick, or for the next input of another kind;
/// - a repaint that would not be done by the next tick waits for it, going by how long the last one
///   of that window took. It comes behind that tick, however long it takes.
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
    struct Repaint
    {
        QPointer<QWidget> window;
        std::int64_t duration = 0; ///< of the last one, in nanoseconds
        bool waits = false;
    };

    [[nodiscard]] bool HoldMove(QWindow& window, const QMouseEvent& move);
    void LetMoveGo();
    void PassOn(QObject& receiver, QEvent& event);
    void GoOn();
    [[nodiscard]] bool HoldRepaint(QWidget& window);
    void DoRepaint(QWidget& window, QEvent& event);
    [[nodiscard]] Repaint& RepaintOf(QWidget& window);

    const FrameLoop& frameLoop_;
    const QEvent* passing_ = nullptr; ///< what this object itself delivers
    bool moved_ = false;              ///< since the last tick
    QPointer<QWindow> moveWindow_;
    std::unique_ptr<QMouseEvent> move_; ///< the one that waits, null for none
    std::vector<Repaint> repaints_;
};
