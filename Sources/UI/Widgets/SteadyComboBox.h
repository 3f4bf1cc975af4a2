// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

/// A list whose choice reaches the stage at once, so only a choice that is meant counts: the wheel
/// and keys that pass by change nothing. Arrows, Space and Return open the list; Return in it
/// chooses.
class SteadyComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit SteadyComboBox(QWidget* parent = nullptr);

    /// The operator is at the list: what it says must not move.
    [[nodiscard]] bool IsOpen() const;

signals:
    /// The list is closed, and what was chosen in it was told.
    void closed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};
