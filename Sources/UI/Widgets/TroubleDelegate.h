// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <QStyledItemDelegate>

/// The mark of a caution (1), a triangle, or of a fault (2), a disc, for a screen of this ratio, in
/// the current look.
[[nodiscard]] QPixmap TroubleMark(int level, qreal ratio);

/// Paints the rows of a list by how well they are: a healthy one in the list's own colour, others
/// orange or red, with a triangle or a disc in one of their columns, for eyes and screens that do
/// not tell these colours apart.
class TroubleDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// A row says under `role` how well it is: 0 for healthy, 1 for a caution, 2 for a fault. The
    /// marks stand in `markColumn`, which has room for one in every top-level row.
    TroubleDelegate(int role, int markColumn, QObject* parent);

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    const int role_;
    const int markColumn_;
};
