// SPDX-License-Identifier: MIT
#include "UI/Widgets/SteadyComboBox.h"

#include <QAbstractItemView>
#include <QBrush>
#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <QWheelEvent>

#include "UI/Widgets/DeskLook.h"

namespace {

/// The Tone of an entry as a number. Its data is what it stands for.
constexpr int ToneRole = Qt::UserRole + 1;

} // namespace

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

void SteadyComboBox::SetTone(int row, Tone tone)
{
    setItemData(row, static_cast<int>(tone), ToneRole);
    Colour(row);
}

void SteadyComboBox::Colour(int row)
{
    const Look& look = CurrentLook();
    const auto tone = static_cast<Tone>(itemData(row, ToneRole).toInt());
    if (tone == Tone::Faded)
        setItemData(row, QBrush(look.listTextFaded), Qt::ForegroundRole);
    if (tone != Tone::Mixed)
        return;
    setItemData(row, QBrush(look.mixed), Qt::BackgroundRole);
    setItemData(row, QBrush(look.mixedText), Qt::ForegroundRole);
}

void SteadyComboBox::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::StyleChange) {
        for (int row = 0; row < count(); ++row)
            Colour(row);
    }
    QComboBox::changeEvent(event);
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
