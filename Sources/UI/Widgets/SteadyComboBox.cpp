// SPDX-License-Identifier: MIT
#include "UI/Widgets/SteadyComboBox.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <QWheelEvent>

SteadyComboBox::SteadyComboBox(QWidget* parent)
    : QComboBox(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    // The style's own delegate paints all entries in the colour of the box.
    setItemDelegate(new QStyledItemDelegate(this));
    view()->installEventFilter(this);
}

bool SteadyComboBox::IsOpen() const
{
    return view()->isVisible();
}

bool SteadyComboBox::eventFilter(QObject* watched, QEvent* event)
{
    // Queued: Qt hides the list before it emits the choice.
    if (watched == view() && event->type() == QEvent::Hide)
        QMetaObject::invokeMethod(this, &SteadyComboBox::closed, Qt::QueuedConnection);
    return QComboBox::eventFilter(watched, event);
}

void SteadyComboBox::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Space:
    case Qt::Key_F4:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        showPopup();
        break;
    default:
        event->ignore();
    }
}

void SteadyComboBox::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}
