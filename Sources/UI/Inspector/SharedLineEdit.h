// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include <QLineEdit>

#include "Model/ElementFields.h"

/// A text of many elements. When they differ it reads "(multiple items selected)"; getting the
/// focus clears that, leaving without typing puts it back. Escape takes back what was typed.
class SharedLineEdit final : public QLineEdit
{
    Q_OBJECT

public:
    explicit SharedLineEdit(QWidget* parent = nullptr);

    /// Shows what the elements have, without a signal. What is being typed stays as long as the
    /// elements still have what was shown before.
    void Show(const Shared<std::wstring>& text);
    /// Drops what is being typed, as when other elements are shown from now on.
    void Forget();

signals:
    /// The operator gave this text for all elements; once, with Return or when the field is left.
    void typed(const QString& text);

protected:
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Commit();
    void PutBack();

    Shared<std::wstring> shown_;
};
