// SPDX-License-Identifier: MIT
#include "UI/Inspector/SharedSpinBox.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "Language/Language.h"
#include "UI/Inspector/DocumentKeys.h"

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
    InEachLanguage(this, [this] {
        if (mixed_)
            this->setSpecialValueText(MixedText());
    });
}

// ---- Showing -----------------------------------------------------------------------------------

template <class Box>
void SharedBox<Box>::Show(const Shared<Value>& value)
{
    const bool same = value.mixed == mixed_ && (mixed_ || value.value == shown_);
    // Qt paints a box that is set, also to the value that it has. Its range may have cut the value.
    if (same && (edited_ || this->value() == set_))
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

template <class Box>
void SharedBox<Box>::PutBack()
{
    const QSignalBlocker blocker(this);
    edited_ = false;
    const QString before = this->lineEdit()->text();
    if (mixed_ == this->specialValueText().isEmpty()) {
        this->setSpecialValueText(mixed_ ? MixedText() : QString());
        Box::setSingleStep(mixed_ ? Value(0) : step_);
    }
    this->setValue(mixed_ ? this->minimum() : shown_);
    set_ = this->value();
    if (this->hasFocus() && this->lineEdit()->text() != before)
        this->selectAll();
}

template <class Box>
void SharedBox<Box>::SetStep(Value step)
{
    step_ = step;
    Box::setSingleStep(mixed_ ? Value(0) : step_);
}

// ---- Typing ------------------------------------------------------------------------------------

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
        PutBack();
        TellStepped(steps);
        return;
    }
    const Value before = this->value();
    Value wanted = before;
    {
        const QSignalBlocker blocker(this);
        Box::stepBy(steps);
        wanted = this->value();
    }
    // The model may refuse the step; if not, it brings the new value.
    PutBack();
    if (wanted != before)
        TellTyped(wanted);
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
    if (event->type() != QEvent::ShortcutOverride)
        return Box::event(event);
    auto& key = static_cast<QKeyEvent&>(*event);
    if (!edited_ && DocumentKeys::IsUndoOrRedo(key)) {
        event->ignore();
        return false;
    }
    const bool handled = Box::event(event);
    if (!event->isAccepted() && DocumentKeys::IsCommand(key))
        Commit();
    return handled;
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
    if (DocumentKeys::IsForOwnMenu(*this)) {
        Box::focusOutEvent(event);
        return;
    }
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

void SharedDoubleSpinBox::SetPrecision(int decimals, double step)
{
    Commit();
    const QSignalBlocker blocker(this);
    SetStep(step);
    setDecimals(decimals);
    PutBack();
}
