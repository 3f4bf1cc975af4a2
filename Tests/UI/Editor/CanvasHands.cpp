// SPDX-License-Identifier: MIT
#include "CanvasHands.h"

#include <QtTest>
#include <QtWidgets>

QPoint CanvasHands::OnScreen(QPointF scenePoint) const
{
    return View().mapFromScene(scenePoint);
}

void CanvasHands::SendMouse(QEvent::Type type, QPointF at, Qt::MouseButton button,
                            Qt::MouseButtons buttons, Qt::KeyboardModifiers keys)
{
    const QPoint place = OnScreen(at);
    QMouseEvent event(type, place, View().viewport()->mapToGlobal(place), button, buttons, keys);
    QApplication::sendEvent(View().viewport(), &event);
}

void CanvasHands::Press(QPointF at, Qt::KeyboardModifiers keys, Qt::MouseButton button)
{
    SendMouse(QEvent::MouseButtonPress, at, button, button, keys);
}

void CanvasHands::MoveTo(QPointF to, Qt::KeyboardModifiers keys, Qt::MouseButton button)
{
    SendMouse(QEvent::MouseMove, to, Qt::NoButton, button, keys);
}

void CanvasHands::Hover(QPointF to)
{
    SendMouse(QEvent::MouseMove, to, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
}

void CanvasHands::Release(QPointF at, Qt::KeyboardModifiers keys, Qt::MouseButton button)
{
    SendMouse(QEvent::MouseButtonRelease, at, button, Qt::NoButton, keys);
}

void CanvasHands::Click(QPointF at, Qt::KeyboardModifiers keys)
{
    Press(at, keys);
    Release(at, keys);
}

void CanvasHands::Drag(QPointF from, QPointF to, Qt::KeyboardModifiers keys)
{
    constexpr int steps = 5;
    Press(from, keys);
    for (int step = 1; step <= steps; ++step)
        MoveTo(from + (to - from) * step / steps, keys);
    Release(to, keys);
}

void CanvasHands::QuickDrag(QPointF from, QPointF to)
{
    SendMouse(QEvent::MouseButtonDblClick, from, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    MoveTo((from + to) / 2);
    MoveTo(to);
    Release(to);
}

void CanvasHands::Wheel(QPointF at, int delta, Qt::KeyboardModifiers keys)
{
    const QPoint place = OnScreen(at);
    QWheelEvent event(place, View().viewport()->mapToGlobal(place), QPoint(), QPoint(0, delta),
                      Qt::NoButton, keys, Qt::NoScrollPhase, false);
    QApplication::sendEvent(View().viewport(), &event);
}

void CanvasHands::Key(Qt::Key key, Qt::KeyboardModifiers keys)
{
    QTest::keyClick(&View(), key, keys);
}

void CanvasHands::HoldKey(Qt::Key key, int times)
{
    for (int i = 0; i < times; ++i) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(), i > 0);
        QApplication::sendEvent(&View(), &press);
    }
    QTest::keyRelease(&View(), key);
}

void CanvasHands::DropData(const QString& format, const QByteArray& data, QPointF at)
{
    QMimeData mime;
    mime.setData(format, data);
    const QPoint place = OnScreen(at);
    QDragEnterEvent enter(place, Qt::CopyAction | Qt::MoveAction, &mime, Qt::LeftButton,
                          Qt::NoModifier);
    QApplication::sendEvent(View().viewport(), &enter);
    QDragMoveEvent move(place, Qt::CopyAction | Qt::MoveAction, &mime, Qt::LeftButton,
                        Qt::NoModifier);
    QApplication::sendEvent(View().viewport(), &move);
    QDropEvent drop(place, Qt::CopyAction | Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(View().viewport(), &drop);
}

void CanvasHands::DropFixture(std::int64_t fixture, QPointF at)
{
    DropData(QStringLiteral("application/zentriledfixture"), QByteArray::number(qint64{fixture}),
             at);
}

void CanvasHands::DropFile(const QString& path, QPointF at)
{
    DropData(QStringLiteral("text/uri-list"), QUrl::fromLocalFile(path).toEncoded(), at);
}
