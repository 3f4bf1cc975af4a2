// SPDX-License-Identifier: MIT
#pragma once

#include <type_traits>

#include <QDoubleSpinBox>
#include <QSpinBox>

#include "Model/ElementFields.h"

/// What both boxes below do, on top of `Box`, which is QSpinBox or QDoubleSpinBox.
///
/// The box shows one value of many elements. When they differ it reads "Mixed": it is at its
/// minimum then and still stands for no value. Getting the focus clears the word, so that a value
/// can be typed; leaving without typing puts it back. Escape takes back what was typed. The wheel
/// counts only in a box that has the focus; else it is left to what lies behind the box.
template <class Box>
class SharedBox : public Box
{
public:
    using Value = std::conditional_t<std::is_same_v<Box, QSpinBox>, int, double>;

    /// Shows what the elements have, without a signal. What is being typed stays as long as the
    /// elements still have what the box showed before.
    void Show(const Shared<Value>& value);
    /// Drops what is being typed, as when other elements are shown from now on.
    void Forget();

    /// The step of the arrows for a common value. A mixed box tells its steps by stepped().
    void SetStep(Value step);
    [[nodiscard]] bool IsMixed() const { return mixed_; }

    void stepBy(int steps) override;

protected:
    explicit SharedBox(QWidget* parent);

    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    [[nodiscard]] QAbstractSpinBox::StepEnabled stepEnabled() const override;

    virtual void TellTyped(Value value) = 0;
    virtual void TellStepped(int steps) = 0;
    /// Shows what the elements have, whatever the box shows now.
    void PutBack();
    /// Tells what was typed, if anything was and it is a value of the box.
    void Commit();

private:
    Value step_ = 1;
    Value shown_ = 0; ///< what the elements have, when it is common
    Value set_ = 0;   ///< what the box made of it
    bool mixed_ = false;
    bool edited_ = false; ///< by keys, since it was last shown or told
};

/// A whole number that many elements share.
class SharedSpinBox final : public SharedBox<QSpinBox>
{
    Q_OBJECT

public:
    explicit SharedSpinBox(QWidget* parent = nullptr);

signals:
    /// The operator gave this value for all elements: typed it, which may be the value that some or
    /// all have already, or stepped to it. Comes once for each, with Return or when the box is
    /// left. valueChanged() alone would miss what is typed into a mixed box and is the minimum.
    void typed(int value);
    /// The operator stepped a mixed box: each element changes by as much.
    void stepped(int steps);

protected:
    void TellTyped(int value) override { emit typed(value); }
    void TellStepped(int steps) override { emit stepped(steps); }
};

/// The same for a number with decimals.
class SharedDoubleSpinBox final : public SharedBox<QDoubleSpinBox>
{
    Q_OBJECT

public:
    explicit SharedDoubleSpinBox(QWidget* parent = nullptr);

    /// Shows the same value with so many decimals, and steps by this.
    void SetPrecision(int decimals, double step);

signals:
    void typed(double value);
    void stepped(int steps);

protected:
    void TellTyped(double value) override { emit typed(value); }
    void TellStepped(int steps) override { emit stepped(steps); }
};
