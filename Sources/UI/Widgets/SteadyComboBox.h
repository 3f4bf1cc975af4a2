// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

/// A list whose choice takes effect on the output at once, so only a deliberate choice counts: the
/// wheel and other keys change nothing. Arrows, Space and Return open the list; Return in it
/// chooses.
class SteadyComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit SteadyComboBox(QWidget* parent = nullptr);

    /// While the list is open its entries must not change.
    [[nodiscard]] bool IsOpen() const;

signals:
    /// The list is closed, after the signal of what was chosen in it.
    void closed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};
