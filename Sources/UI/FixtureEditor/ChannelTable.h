// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QTableWidget>

#include "FixtureModel/FixtureLayout.h"

/// What each channel of a fixture carries, a row a channel. The operator can set constants in it;
/// itemChanged() tells of them.
class ChannelTable : public QTableWidget
{
    Q_OBJECT

public:
    static constexpr int ChannelColumn = 0;
    static constexpr int ValueColumn = 1;
    /// In the user role of the value column is a constant from 0 to 255, -1 for an undefined
    /// channel, or for a channel of a pixel this and more.
    static constexpr int FirstPixelValue = 256;

    explicit ChannelTable(QWidget* parent = nullptr);

    /// Brings the table to this layout, and touches only the rows that differ, without signals.
    void Show(const FixtureLayout& layout);

    using QTableWidget::edit;

protected:
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    void ChangeRows(int count);
    void ShowUse(int row, const FixtureLayout::ChannelUse& use, PixelMapType type);

    std::vector<FixtureLayout::ChannelUse> shown_;
};
