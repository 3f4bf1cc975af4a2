// SPDX-License-Identifier: MIT
#include "UI/Inspector/SharedLineEdit.h"

#include <QKeyEvent>
#include <QSignalBlocker>

#include "Language/Language.h"
#include "UI/Inspector/DocumentKeys.h"
#include "UI/Inspector/MultipleItems.h"

SharedLineEdit::SharedLineEdit(QWidget* parent)
    : QLineEdit(parent)
{
    InEachLanguage(this, [this] {
        if (!isModified())
            PutBack();
    });
}

void SharedLineEdit::Show(const Shared<std::wstring>& text)
{
    const bool same = text.mixed == shown_.mixed && (text.mixed || text.value == shown_.value);
    if (same && (isModified() || hasFocus()))
        return;
    shown_ = text;
    PutBack();
}

void SharedLineEdit::Forget()
{
    if (isModified())
        PutBack();
}

void SharedLineEdit::PutBack()
{
    const QSignalBlocker blocker(this);
    setText(shown_.mixed && hasFocus() ? QString() : SharedText(shown_));
    setCursorPosition(0); // a long text shows its beginning
    if (hasFocus())
        selectAll();
}

void SharedLineEdit::Commit()
{
    if (!isModified())
        return;
    const QString typedText = text();
    PutBack();
    // Emptying a field that stood for no text is not yet a text.
    if (!(shown_.mixed && typedText.isEmpty()))
        emit typed(typedText);
}

bool SharedLineEdit::event(QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride)
        return QLineEdit::event(event);
    auto& key = static_cast<QKeyEvent&>(*event);
    if (!isModified() && DocumentKeys::IsUndoOrRedo(key)) {
        event->ignore();
        return false;
    }
    const bool handled = QLineEdit::event(event);
    if (!event->isAccepted() && DocumentKeys::IsCommand(key))
        Commit();
    return handled;
}

void SharedLineEdit::focusInEvent(QFocusEvent* event)
{
    if (shown_.mixed && !isModified()) {
        const QSignalBlocker blocker(this);
        setText(QString()); // clear() would count as an edit.
    }
    QLineEdit::focusInEvent(event);
}

void SharedLineEdit::focusOutEvent(QFocusEvent* event)
{
    if (DocumentKeys::IsForOwnMenu(*this)) {
        QLineEdit::focusOutEvent(event);
        return;
    }
    Commit();
    QLineEdit::focusOutEvent(event);
    if (!isModified())
        PutBack();
}

void SharedLineEdit::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && isModified()) {
        PutBack();
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Commit();
        selectAll();
        return;
    }
    QLineEdit::keyPressEvent(event);
}
