// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include <QEvent>
#include <QPoint>
#include <QPointF>

class QByteArray;
class QGraphicsView;
class QString;

/// Acts on a canvas as a person does: by events of mouse, keys and drags. Points are those of the
/// scene.
class CanvasHands
{
public:
    virtual ~CanvasHands() = default;

    [[nodiscard]] QPoint OnScreen(QPointF scenePoint) const;
    void Press(QPointF at, Qt::KeyboardModifiers keys = Qt::NoModifier,
               Qt::MouseButton button = Qt::LeftButton);
    void MoveTo(QPointF to, Qt::KeyboardModifiers keys = Qt::NoModifier,
                Qt::MouseButton button = Qt::LeftButton);
    /// Moves without a button.
    void Hover(QPointF to);
    void Release(QPointF at, Qt::KeyboardModifiers keys = Qt::NoModifier,
                 Qt::MouseButton button = Qt::LeftButton);
    void Click(QPointF at, Qt::KeyboardModifiers keys = Qt::NoModifier);
    /// Press, some moves in between, release.
    void Drag(QPointF from, QPointF to, Qt::KeyboardModifiers keys = Qt::NoModifier);
    /// The same, so soon after the last press that the system takes it for a double click.
    void QuickDrag(QPointF from, QPointF to);
    void Wheel(QPointF at, int delta, Qt::KeyboardModifiers keys = Qt::ControlModifier);
    void Key(Qt::Key key, Qt::KeyboardModifiers keys = Qt::NoModifier);
    /// A key that is held until it has come this often.
    void HoldKey(Qt::Key key, int times);
    void DropData(const QString& format, const QByteArray& data, QPointF at);
    void DropFixture(std::int64_t fixture, QPointF at);
    void DropFile(const QString& path, QPointF at);

protected:
    [[nodiscard]] virtual QGraphicsView& View() const = 0;

private:
    void SendMouse(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons buttons,
                   Qt::KeyboardModifiers keys);
};
