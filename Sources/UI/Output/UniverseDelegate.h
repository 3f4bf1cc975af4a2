// SPDX-License-Identifier: MIT
#pragma once

#include "UI/Widgets/TroubleDelegate.h"

/// Paints the list of universes: how many channels are used as a bar with the figure, the rest as
/// the other lists.
class UniverseDelegate final : public TroubleDelegate
{
    Q_OBJECT

public:
    explicit UniverseDelegate(QObject* parent);

    /// A frame round the row that a block would be dropped on; -1 for none.
    void SetDropRow(int row) { dropRow_ = row; }
    [[nodiscard]] int DropRow() const { return dropRow_; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    int dropRow_ = -1;
};
