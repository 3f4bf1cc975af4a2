// SPDX-License-Identifier: MIT
#include "UI/Inspector/SharedSpinBox.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>

namespace {

QString MixedText()
{
    return QCoreApplication::translate("Inspector", "Mixed");
}

} // namespace

template <class Box>
SharedBox<Box>::SharedBox(QWidget* parent)
    : Box(parent)
{
    this->setKeyboardTracking(false);
    this->setFocusPolicy(Qt::StrongFocus); // not by the wheel
    QObject::connect(this->lineEdit(), &QLineEdit::textEdited, this, [this] { edited_ = true; });
}

// ---- Showing -----------------------------------------------------------------------------------

template <class Box>
void SharedBox<Box>::Show(const Shared<Value>& value)
{
    const bool same = value.mixed == mixed_ && (mixed_ || value.value == shown_);
    if (edited_ && same)
        return;
    mixed_ = value.mixed;
    shown_ = value.value;
    PutBack();
}

template <class Box>
void SharedBox<Box>::Forget()
{
    if (edited_)
        PutBack();
}

/// Shows what the elements have, whatever the box shows now.
template <class Box>
void SharedBox<Box>::PutBack()
{
    const QSignalBlocker blocker(this);
    edited_ = false;
    this->setSpecialValueText(mixed_ ? MixedText() : QString());
    Box::setSingleStep(mixed_ ? Value(0) : step_);
    this->setValue(mixed_ ? this->minimum() : shown_);
    if (this->hasFocus())
        this->selectAll();
}

template <class Box>
void SharedBox<Box>::SetStep(double step)
{
    step_ = static_cast<Value>(step);
    Box::setSingleStep(mixed_ ? Value(0) : step_);
}

// ---- Typing ------------------------------------------------------------------------------------

/// Tells what was typed, if anything was and it is a value of the box.
template <class Box>
void SharedBox<Box>::Commit()
{
    if (!edited_)
        return;
    const bool acceptable = this->hasAcceptableInput();
    const Value typed = acceptable ? this->valueFromText(this->lineEdit()->text()) : shown_;
    // The elements may already have the value, and no signal would put the text back then.
    PutBack();
    if (acceptable)
        TellTyped(typed);
}

template <class Box>
void SharedBox<Box>::stepBy(int steps)
{
    Commit();
    if (mixed_) {
        TellStepped(steps);
        this->selectAll();
        return;
    }
    const QSignalBlocker blocker(this);
    const Value before = this->value();
    Box::stepBy(steps);
    if (const Value after = this->value(); after != before)
        TellTyped(after);
}

template <class Box>
QAbstractSpinBox::StepEnabled SharedBox<Box>::stepEnabled() const
{
    return mixed_ ? QAbstractSpinBox::StepUpEnabled | QAbstractSpinBox::StepDownEnabled
                  : Box::stepEnabled();
}

// ---- Events ------------------------------------------------------------------------------------

template <class Box>
bool SharedBox<Box>::event(QEvent* event)
{
    // Undo and redo are the document's while nothing is typed here.
    if (event->type() == QEvent::ShortcutOverride && !edited_) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)) {
            event->ignore();
            return false;
        }
    }
    return Box::event(event);
}

template <class Box>
void SharedBox<Box>::focusInEvent(QFocusEvent* event)
{
    Box::focusInEvent(event);
    if (mixed_ && !edited_)
        this->lineEdit()->clear();
}

template <class Box>
void SharedBox<Box>::focusOutEvent(QFocusEvent* event)
{
    Commit();
    Box::focusOutEvent(event);
    if (!edited_)
        PutBack();
}

template <class Box>
void SharedBox<Box>::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Commit();
        this->selectAll();
        return;
    case Qt::Key_Escape:
        if (!edited_)
            break;
        PutBack();
        return;
    default:
        break;
    }
    Box::keyPressEvent(event);
}

template <class Box>
void SharedBox<Box>::wheelEvent(QWheelEvent* event)
{
    if (this->hasFocus())
        Box::wheelEvent(event);
    else
        event->ignore();
}

template class SharedBox<QSpinBox>;
template class SharedBox<QDoubleSpinBox>;

SharedSpinBox::SharedSpinBox(QWidget* parent)
    : SharedBox(parent)
{}

SharedDoubleSpinBox::SharedDoubleSpinBox(QWidget* parent)
    : SharedBox(parent)
{}
