// SPDX-License-Identifier: MIT
#pragma once

#include <QKeyEvent>

/// The keys that a field of the inspector leaves to the document.
namespace DocumentKeys {

/// Undo and redo are the document's while nothing is typed in the field.
inline bool IsUndoOrRedo(const QKeyEvent& key)
{
    return key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo);
}

/// A key with Ctrl that the field has no use for may be a command, such as Save, for which what was
/// typed must be in the document.
inline bool IsCommand(const QKeyEvent& key)
{
    return key.modifiers().testFlag(Qt::ControlModifier) && key.key() != Qt::Key_Control &&
           key.key() != Qt::Key_Shift && key.key() != Qt::Key_Alt;
}

} // namespace DocumentKeys
