// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

/// The keys that a field of the inspector leaves to the document.
namespace DocumentKeys {

/// Undo and redo are the document's while nothing is typed in the field.
inline bool IsUndoOrRedo(const QKeyEvent& key)
{
    return key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo);
}

/// A key with Ctrl that the field has no use for may be a command, such as Save, for which what was
/// typed must be in the document. Ctrl with Alt may be AltGr, which types characters.
inline bool IsCommand(const QKeyEvent& key)
{
    return key.modifiers().testFlag(Qt::ControlModifier) &&
           !key.modifiers().testFlag(Qt::AltModifier) && key.key() != Qt::Key_Control &&
           key.key() != Qt::Key_Shift && key.key() != Qt::Key_Alt;
}

/// Whether the field gives the focus to its own menu, in which case the typing goes on.
inline bool IsForOwnMenu(const QWidget& field)
{
    const QWidget* popup = QApplication::activePopupWidget();
    return popup && popup->parentWidget() &&
           (popup->parentWidget() == &field || field.isAncestorOf(popup->parentWidget()));
}

} // namespace DocumentKeys
